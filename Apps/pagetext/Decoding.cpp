#include "Decoding.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace pagetext {

namespace {

unsigned char ByteAt(std::string_view bytes, std::size_t pos) {
    return pos < bytes.size() ? static_cast<unsigned char>(bytes[pos]) : 0;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Big-endian UTF-16 shows itself by a NUL before every ASCII character, with which markup begins.
bool LooksLikeUtf16Be(std::string_view bytes) {
    constexpr std::size_t kProbe = 64;
    const std::size_t pairs = std::min(bytes.size(), kProbe) / 2;
    std::size_t ascii_pairs = 0;
    for (std::size_t i = 0; i < pairs; ++i) ascii_pairs += bytes[2 * i] == '\0' && ByteAt(bytes, 2 * i + 1) - 1u < 0x7F;
    return pairs >= 2 && ascii_pairs * 4 >= pairs * 3;
}

// What the library does not decode, and so does not detect.
Encoding FromForeignMark(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (StartsWith(bytes, "\xFF\xFE\0\0"sv) || StartsWith(bytes, "\0\0\xFE\xFF"sv)) return Encoding::kUtf32;
    if (StartsWith(bytes, "\xFE\xFF"sv) || LooksLikeUtf16Be(bytes)) return Encoding::kUtf16Be;
    return Encoding::kUnknown;
}

// What the library detects and decodes.
constexpr struct {
    Encoding page;
    textkit::Encoding text;
} kSupported[] = {{Encoding::kUtf8, textkit::Encoding::kUtf8},
                  {Encoding::kGbk, textkit::Encoding::kGbk},
                  {Encoding::kBig5, textkit::Encoding::kBig5},
                  {Encoding::kUtf16Le, textkit::Encoding::kUtf16Le}};

Encoding FromLabel(std::string_view label) {
    struct Label {
        std::string_view name;
        Encoding encoding;
    };
    constexpr Label kLabels[] = {
        {"utf-8", Encoding::kUtf8},       {"utf8", Encoding::kUtf8},       {"gbk", Encoding::kGbk},
        {"gb2312", Encoding::kGbk},       {"gb_2312-80", Encoding::kGbk},  {"x-gbk", Encoding::kGbk},
        {"cp936", Encoding::kGbk},        {"gb18030", Encoding::kGbk},     {"big5", Encoding::kBig5},
        {"big5-hkscs", Encoding::kBig5},  {"x-x-big5", Encoding::kBig5},   {"cp950", Encoding::kBig5},
        {"utf-16le", Encoding::kUtf16Le}, {"utf-16be", Encoding::kUtf16Be}};
    for (const Label& known : kLabels) {
        if (label == known.name) return known.encoding;
    }
    return Encoding::kUnknown;
}

// The first known name behind "charset" or "encoding" and "=" among the first bytes of a page, where documents declare it.
Encoding FromDeclaration(std::string_view bytes) {
    constexpr std::size_t kDeclarationBytes = 4096;
    std::string head(bytes.substr(0, kDeclarationBytes));
    for (char& c : head) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (std::size_t pos = head.find('='); pos != std::string::npos; pos = head.find('=', pos + 1)) {
        const std::size_t key_end = head.find_last_not_of(' ', pos - 1) + 1;
        const std::string_view before(head.data(), pos == 0 ? 0 : key_end);
        const auto ends_with = [&](std::string_view key) {
            return before.size() >= key.size() && before.substr(before.size() - key.size()) == key;
        };
        if (!ends_with("charset") && !ends_with("encoding")) continue;
        const std::size_t start = std::min(head.find_first_not_of("\"' ", pos + 1), head.size());
        const std::size_t end = std::min(head.find_first_of("\"' />;\r\n", start), head.size());
        const Encoding encoding = FromLabel(std::string_view(head).substr(start, end - start));
        if (encoding != Encoding::kUnknown) return encoding;
    }
    return Encoding::kUnknown;
}

// What a verdict for UTF-16 without a mark is worth: the detector gives no weight to ASCII, so a single odd byte can make
// it of an English page; and it knows no big-endian text.
Encoding CheckUtf16(std::string_view bytes) {
    std::size_t pairs = 0, ascii_pairs = 0, high_first = 0, high_second = 0;
    const auto is_text = [](unsigned char byte) {
        return byte == '\t' || byte == '\r' || byte == '\n' || byte - 0x20u < 0x5F;
    };
    // The upper halves of most units of Chinese text and markup.
    const auto is_upper = [](unsigned char b) { return b == 0 || b == 0x30 || (b >= 0x4E && b <= 0x9F) || b == 0xFF; };
    for (std::size_t pos = 0; pos + 1 < bytes.size(); pos += 2, ++pairs) {
        const unsigned char first = ByteAt(bytes, pos), second = ByteAt(bytes, pos + 1);
        ascii_pairs += is_text(first) && is_text(second);
        high_first += is_upper(first);
        high_second += is_upper(second);
    }
    if (ascii_pairs * 2 > pairs) return Encoding::kUnknown;
    return high_first > high_second + pairs / 4 ? Encoding::kUtf16Be : Encoding::kUtf16Le;
}

Encoding FromDetector(std::string_view bytes, const textkit::CodeMaps& maps) {
    const textkit::Detection detected = textkit::Detect(bytes, maps);
    if (detected.encoding == textkit::Encoding::kUtf16Le && detected.confidence < 1) return CheckUtf16(bytes);
    for (const auto& [page, text] : kSupported)
        if (text == detected.encoding) return page;
    return Encoding::kUnknown;
}

}  // namespace

const char* NameOf(Encoding encoding) {
    switch (encoding) {
        case Encoding::kAscii:
            return "ascii";
        case Encoding::kUtf8:
            return "utf-8";
        case Encoding::kGbk:
            return "gbk";
        case Encoding::kBig5:
            return "big5";
        case Encoding::kUtf16Le:
            return "utf-16le";
        case Encoding::kUtf16Be:
            return "utf-16be";
        case Encoding::kUtf32:
            return "utf-32";
        case Encoding::kUnknown:
            break;
    }
    return "unknown";
}

bool IsSupported(Encoding encoding) {
    return encoding != Encoding::kUtf16Be && encoding != Encoding::kUtf32;
}

Encoding DetectEncoding(std::string_view bytes, const textkit::CodeMaps& maps) {
    const Encoding foreign = FromForeignMark(bytes);
    if (foreign != Encoding::kUnknown) return foreign;
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) > 0; });
    if (ascii) return Encoding::kAscii;
    const Encoding detected = FromDetector(bytes, maps);
    return detected != Encoding::kUnknown ? detected : FromDeclaration(bytes);
}

textkit::Decoded Decode(std::string_view bytes, Encoding encoding, const textkit::CodeMaps& maps) {
    for (const auto& [page, text] : kSupported)
        if (page == encoding) return textkit::Decode(bytes, text, maps);
    const bool utf8 = encoding == Encoding::kAscii || textkit::IsValidUtf8(bytes);
    return textkit::Decode(bytes, utf8 ? textkit::Encoding::kUtf8 : textkit::Encoding::kGbk, maps);
}

}  // namespace pagetext
