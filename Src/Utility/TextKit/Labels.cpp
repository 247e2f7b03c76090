#include <algorithm>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Utility/TextKit/Encodings.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr ByteSet kLabelBlanks("\t\n\f\r ");

// The first of each encoding is its name.
constexpr struct {
    std::string_view label;
    Encoding encoding;
} kLabels[] = {
    {"utf-8", Encoding::kUtf8},
    {"utf8", Encoding::kUtf8},
    {"unicode-1-1-utf-8", Encoding::kUtf8},
    {"unicode11utf8", Encoding::kUtf8},
    {"unicode20utf8", Encoding::kUtf8},
    {"x-unicode20utf8", Encoding::kUtf8},
    {"gbk", Encoding::kGbk},
    {"gb2312", Encoding::kGbk},
    {"gb18030", Encoding::kGbk},
    {"gb_2312", Encoding::kGbk},
    {"gb_2312-80", Encoding::kGbk},
    {"chinese", Encoding::kGbk},
    {"csgb2312", Encoding::kGbk},
    {"csiso58gb231280", Encoding::kGbk},
    {"iso-ir-58", Encoding::kGbk},
    {"x-gbk", Encoding::kGbk},
    {"cp936", Encoding::kGbk},
    {"ms936", Encoding::kGbk},
    {"windows-936", Encoding::kGbk},
    {"big5", Encoding::kBig5},
    {"big5-hkscs", Encoding::kBig5},
    {"cn-big5", Encoding::kBig5},
    {"csbig5", Encoding::kBig5},
    {"x-x-big5", Encoding::kBig5},
    {"cp950", Encoding::kBig5},
    {"ms950", Encoding::kBig5},
    {"windows-950", Encoding::kBig5},
    {"utf-16le", Encoding::kUtf16Le},
    {"utf-16", Encoding::kUtf16Le},
    {"csunicode", Encoding::kUtf16Le},
    {"iso-10646-ucs-2", Encoding::kUtf16Le},
    {"ucs-2", Encoding::kUtf16Le},
    {"unicode", Encoding::kUtf16Le},
    {"unicodefeff", Encoding::kUtf16Le},
    {"utf-16be", Encoding::kUtf16Be},
    {"unicodefffe", Encoding::kUtf16Be},
};

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualsIgnoringAsciiCase(text.substr(text.size() - end.size()), end);
}

// What the first known label behind "charset" or "encoding" and "=" names, near the beginning, where documents have it.
Encoding DeclaredEncoding(std::string_view bytes) {
    constexpr std::size_t kDeclarationBytes = 4096;
    const std::string_view head = bytes.substr(0, kDeclarationBytes);
    for (std::size_t equals = head.find('='); equals != head.npos; equals = head.find('=', equals + 1)) {
        std::string_view key = head.substr(0, equals);
        key = key.substr(0, key.find_last_not_of(' ') + 1);
        if (!EndsWith(key, "charset") && !EndsWith(key, "encoding")) continue;
        std::string_view label = head.substr(equals + 1);
        label.remove_prefix(std::min(label.find_first_not_of("\"' "), label.size()));
        const Encoding encoding = EncodingFromLabel(label.substr(0, label.find_first_of("\"' />;?\r\n")));
        if (encoding == Encoding::kUtf16Le || encoding == Encoding::kUtf16Be) return Encoding::kUtf8;
        if (encoding != Encoding::kUnknown) return encoding;
    }
    return Encoding::kUnknown;
}

}  // namespace

Encoding EncodingFromLabel(std::string_view label) noexcept {
    while (!label.empty() && kLabelBlanks.Contains(label.front())) label.remove_prefix(1);
    while (!label.empty() && kLabelBlanks.Contains(label.back())) label.remove_suffix(1);
    for (const auto& known : kLabels)
        if (EqualsIgnoringAsciiCase(label, known.label)) return known.encoding;
    return Encoding::kUnknown;
}

std::string_view EncodingName(Encoding encoding) noexcept {
    for (const auto& known : kLabels)
        if (known.encoding == encoding) return known.label;
    return "unknown";
}

Detection DetectPage(std::string_view bytes, const CodeMaps& maps) {
    constexpr double kHalfSure = 0.5;
    const Detection detected = Detect(bytes, maps);
    if (detected.confidence == 1) return detected;
    const Encoding declared = DeclaredEncoding(bytes);
    if (declared == Encoding::kUtf8 && IsValidUtf8(bytes)) return {Encoding::kUtf8, 1};
    return declared == Encoding::kUnknown || detected.confidence >= kHalfSure ? detected
                                                                              : Detection{declared, kHalfSure};
}

}  // namespace textkit
