#include "Common/CharacterGrid.h"

#include <fstream>
#include <ostream>
#include <stdexcept>

#include "Internal/Utf8Sequences.h"

namespace tools {

namespace {

constexpr unsigned kCodesPerLine = 16;

void ReadGridLine(std::string_view line, CodeToUnicode& codes, unsigned plane) {
    std::size_t digits = 0;
    unsigned code = static_cast<unsigned>(std::stoul(std::string(line.substr(0, 4)), &digits, 16));
    if (digits != 4 || code % kCodesPerLine != 0 || line.size() < 6 || line[4] != ' ') {
        throw std::runtime_error("expected a code that ends in 0, a blank and 16 characters");
    }
    line.remove_prefix(5);
    for (unsigned i = 0; i < kCodesPerLine; ++i, ++code) {
        if (!line.empty() && line[0] == '.') {
            line.remove_prefix(1);
        } else {
            codes[code] = TakeUtf8(line, plane);
        }
    }
    if (!line.empty()) throw std::runtime_error("more than 16 characters");
}

}  // namespace

void AppendUtf8(std::string& text, char16_t code_point, unsigned plane) {
    char bytes[4];
    text.append(bytes, utility::internal::WriteUtf8(plane << 16 | code_point, bytes));
}

char16_t TakeUtf8(std::string_view& text, unsigned plane) {
    const unsigned char lead = text.empty() ? 0xFF : static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    if (length == 0 || text.size() < length) throw std::runtime_error("not UTF-8");
    unsigned code_point = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) throw std::runtime_error("not UTF-8");
        code_point = code_point << 6 | (next & 0x3Fu);
    }
    if (code_point >> 16 != plane) throw std::runtime_error("not a character of the plane");
    text.remove_prefix(length);
    return static_cast<char16_t>(code_point);
}

CodeToUnicode ReadGrid(const std::filesystem::path& path, unsigned plane) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be opened");
    CodeToUnicode codes;
    std::size_t line_number = 0;
    for (std::string line; std::getline(in, line);) {
        ++line_number;
        if (line.empty() || line[0] == '#') continue;
        try {
            ReadGridLine(line, codes, plane);
        } catch (const std::exception& error) {
            throw std::runtime_error(path.string() + ":" + std::to_string(line_number) + ": " + error.what());
        }
    }
    return codes;
}

void WriteGrid(std::ostream& out, std::string_view comment, const CodeToUnicode& codes, unsigned plane) {
    constexpr char kHex[] = "0123456789ABCDEF";
    out << comment;
    for (auto next = codes.begin(); next != codes.end();) {
        const unsigned first = next->first / kCodesPerLine * kCodesPerLine;
        std::string line;
        for (int shift = 12; shift >= 0; shift -= 4) line += kHex[first >> shift & 0xF];
        line += ' ';
        for (unsigned code = first; code < first + kCodesPerLine; ++code) {
            const bool assigned = next != codes.end() && next->first == code;
            if (assigned) AppendUtf8(line, next++->second, plane);
            if (!assigned) line += '.';
        }
        out << line << '\n';
    }
}

}  // namespace tools
