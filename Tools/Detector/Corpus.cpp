#include "Detector/Corpus.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace tools {

namespace {

std::u16string DecodeUtf8(std::string_view bytes) {
    std::u16string text;
    while (!bytes.empty()) {
        if (static_cast<unsigned char>(bytes[0]) >= 0xF0) {
            bytes.remove_prefix(std::min<std::size_t>(4, bytes.size()));
        } else {
            text += TakeUtf8(bytes);
        }
    }
    return text;
}

TextFile ReadFile(const std::filesystem::path& path, const std::string& name) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be opened");
    TextFile file;
    file.name = name;
    file.traditional = name.rfind("hant", 0) == 0;
    if (path.extension() != ".tsv") {
        file.text = DecodeUtf8(std::string(std::istreambuf_iterator<char>(in), {}));
        return file;
    }
    for (std::string line; std::getline(in, line);) {
        const std::size_t tab = line.find('\t');
        if (tab == std::string::npos) throw std::runtime_error(path.string() + ": a line without a tab");
        file.words.emplace_back(DecodeUtf8(line.substr(0, tab)), std::stoull(line.substr(tab + 1)));
    }
    return file;
}

// Of several Big5 codes of a character the one that is written: the lowest of the standard's own rows, ideographs
// before symbols; the extensions below A1 only where there is no other.
bool IsBetterBig5(unsigned code, unsigned other) {
    const auto rank = [](unsigned c) { return c < 0xA140 ? 2 : c < 0xA440 ? 1 : 0; };
    return other == 0 || rank(code) < rank(other);
}

}  // namespace

bool Selection::Takes(const std::string& name) const {
    const auto named = [&](const std::string& part) { return name.find(part) != std::string::npos; };
    return (only.empty() || std::any_of(only.begin(), only.end(), named)) &&
           std::none_of(without.begin(), without.end(), named);
}

std::vector<TextFile> ReadCorpus(const std::filesystem::path& folder, const Selection& selection) {
    std::vector<std::string> names;
    for (const char* script : {"hans", "hant"})
        for (const auto& entry : std::filesystem::directory_iterator(folder / script))
            names.push_back(script + ('/' + entry.path().filename().string()));
    std::sort(names.begin(), names.end());
    std::vector<TextFile> files;
    for (const std::string& name : names)
        if (selection.Takes(name)) files.push_back(ReadFile(folder / name, name));
    if (files.empty()) throw std::runtime_error(folder.string() + ": no file of that name");
    return files;
}

std::vector<std::string> SplitList(const std::string& list) {
    std::vector<std::string> items;
    for (std::size_t pos = 0; pos < list.size();) {
        const std::size_t comma = std::min(list.find(',', pos), list.size());
        items.push_back(list.substr(pos, comma - pos));
        pos = comma + 1;
    }
    return items;
}

bool IsHan(char16_t character) {
    return character >= 0x3400 && character <= 0x9FFF;
}

Encoder::Encoder(const CodeToUnicode& gbk, const CodeToUnicode& big5) {
    for (const auto& [code, character] : gbk) gbk_[character] = static_cast<std::uint16_t>(code);
    for (const auto& [code, character] : big5)
        if (IsBetterBig5(code, big5_[character])) big5_[character] = static_cast<std::uint16_t>(code);
}

bool Encoder::Append(Channel encoding, char16_t character, std::string& bytes) const {
    if (encoding == utility::internal::kUnicodeChannel) {
        bytes += {static_cast<char>(character & 0xFF), static_cast<char>(character >> 8)};
        return true;
    }
    if (encoding == utility::internal::kUtf8Channel) {
        AppendUtf8(bytes, character);
        return true;
    }
    if (character < 0x80) {
        bytes += static_cast<char>(character);
        return true;
    }
    const unsigned code = (encoding == utility::internal::kGbkChannel ? gbk_ : big5_)[character];
    if (code != 0) bytes += {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    return code != 0;
}

std::string Encoder::Encode(Channel encoding, const std::u16string& text) const {
    std::string bytes;
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        const bool pair =
            encoding == utility::internal::kUtf8Channel && text[pos] >> 10 == 0x36 && pos + 1 < text.size();
        if (!pair) {
            Append(encoding, text[pos], bytes);
            continue;
        }
        const unsigned code_point = 0x10000u + ((text[pos] & 0x3FFu) << 10 | (text[pos + 1] & 0x3FFu));
        AppendUtf8(bytes, static_cast<char16_t>(code_point), code_point >> 16);
        ++pos;
    }
    return bytes;
}

std::string Encoder::EncodeWindow(Channel encoding, const std::u16string& window) const {
    const auto chinese = std::count_if(window.begin(), window.end(), IsHan);
    if (static_cast<std::size_t>(chinese) * 2 < window.size()) return {};
    std::string bytes;
    for (const char16_t character : window)
        if (!Append(encoding, character, bytes)) return {};
    return bytes;
}

// The splitmix64 generator.
std::uint64_t Random::Next() {
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return z ^ z >> 31;
}

}  // namespace tools
