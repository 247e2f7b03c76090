#include "References.h"

#include <algorithm>
#include <iterator>

#include "Decoding.h"

namespace pagetext {

namespace {

struct NamedReference {
    std::string_view name;  // without the '&', with its semicolon where it needs one
    std::string_view text;
};

constexpr NamedReference kNamedReferences[] = {
#include "NamedReferences.inc"
};

// Windows-1252 in the range where Latin-1 has control characters; 0 keeps the control character.
constexpr unsigned kWindows1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

int DigitValue(char c, int base) {
    const int value = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                             : base;
    return value < base ? value : -1;
}

std::size_t AppendNumeric(std::string_view text, std::string& out) {
    const bool hexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
    const int base = hexadecimal ? 16 : 10;
    const std::size_t first_digit = hexadecimal ? 3 : 2;
    std::size_t pos = first_digit;
    unsigned long code_point = 0;
    for (; pos < text.size() && DigitValue(text[pos], base) >= 0; ++pos) {
        code_point = std::min(
            code_point * static_cast<unsigned>(base) + static_cast<unsigned>(DigitValue(text[pos], base)),
            0x110000UL);
    }
    if (pos == first_digit) return 0;
    if (pos < text.size() && text[pos] == ';') ++pos;
    if (code_point >= 0x80 && code_point < 0xA0 && kWindows1252[code_point - 0x80] != 0) {
        code_point = kWindows1252[code_point - 0x80];
    }
    if (code_point == 0 || code_point > 0x10FFFF || (code_point >= 0xD800 && code_point < 0xE000)) {
        out += kReplacement;
    } else {
        AppendCodePoint(out, code_point);
    }
    return pos;
}

// The longest name that the text starts with: "&notin;" before "&not". Each byte of the text narrows the range of names
// that begin like it, so that the search ends as soon as none does.
std::size_t AppendNamed(std::string_view text, std::string& out) {
    const NamedReference* first = std::begin(kNamedReferences);
    const NamedReference* last = std::end(kNamedReferences);
    const NamedReference* longest = nullptr;
    for (std::size_t length = 0; length + 1 < text.size() && first != last; ++length) {
        const char next = text[length + 1];
        // Names that end here stand in front of those that go on.
        if (first->name.size() == length) ++first;
        first = std::partition_point(first, last,
                                     [=](const NamedReference& entry) { return entry.name[length] < next; });
        last = std::partition_point(first, last,
                                    [=](const NamedReference& entry) { return entry.name[length] == next; });
        if (first != last && first->name.size() == length + 1) longest = first;
    }
    if (longest == nullptr) return 0;
    out += longest->text;
    return 1 + longest->name.size();
}

}  // namespace

std::size_t AppendReference(std::string_view text, std::string& out) {
    if (text.size() > 1 && text[1] == '#') return AppendNumeric(text, out);
    return AppendNamed(text, out);
}

}  // namespace pagetext
