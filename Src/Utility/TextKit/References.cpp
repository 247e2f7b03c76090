#include "Utility/TextKit/References.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "Internal/Utf8Sequences.h"

namespace utility::internal {

namespace {

struct NamedReference {
    std::string_view name;  // without the '&', with its semicolon where it needs one
    std::string_view text;
};

constexpr NamedReference kNamedReferences[] = {
#include "NamedReferences.inc"
};

// Where the names that begin with each ASCII byte start; the next entry is where they end.
constexpr auto kFirstNames = [] {
    std::array<std::uint16_t, 129> starts{};
    std::size_t index = 0;
    for (std::size_t byte = 0; byte < starts.size(); ++byte) {
        while (index < std::size(kNamedReferences) && ToByte(kNamedReferences[index].name[0]) < byte) ++index;
        starts[byte] = static_cast<std::uint16_t>(index);
    }
    return starts;
}();
static_assert(std::size(kNamedReferences) == 2231 && kFirstNames[128] == 2231);

// Windows-1252 in the range where Latin-1 has control characters; 0 keeps the control character.
constexpr std::uint16_t kWindows1252[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                            0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// Value of a digit in the base, or the base itself.
unsigned DigitValue(char c, unsigned base) {
    const unsigned char byte = ToByte(c);
    if (IsAsciiDigit(byte)) return byte - unsigned{'0'};
    const unsigned letter = (byte | 0x20u) - 'a';
    return base == 16 && letter < 6 ? letter + 10 : base;
}

Reference ReadNumber(std::string_view text) {
    const bool hexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
    const unsigned base = hexadecimal ? 16 : 10;
    const std::size_t first_digit = hexadecimal ? 3 : 2;
    std::size_t pos = first_digit;
    std::uint32_t number = 0;
    for (unsigned digit; pos < text.size() && (digit = DigitValue(text[pos], base)) < base; ++pos)
        number = std::min<std::uint32_t>(number * base + digit, 0x110000);
    Reference reference;
    if (pos == first_digit) return reference;
    reference.length = pos + (pos < text.size() && text[pos] == ';' ? 1 : 0);
    reference.text_length =
        static_cast<std::size_t>(WriteUtf8(CodePointOfNumber(number), reference.text) - reference.text);
    return reference;
}

// The longest name that the text starts with: "&notin;" before "&not". Each byte of the text narrows the range of names
// that begin like it, so that the search ends as soon as none does.
Reference ReadName(std::string_view text) {
    Reference reference;
    if (text.size() < 2 || !IsAsciiLetter(ToByte(text[1]))) return reference;
    const NamedReference* first = kNamedReferences + kFirstNames[ToByte(text[1])];
    const NamedReference* last = kNamedReferences + kFirstNames[ToByte(text[1]) + 1u];
    const NamedReference* longest = nullptr;
    for (std::size_t length = 1; length + 1 < text.size() && first != last; ++length) {
        const char next = text[length + 1];
        // Names that end here stand in front of those that go on.
        if (first->name.size() == length) ++first;
        first =
            std::partition_point(first, last, [=](const NamedReference& entry) { return entry.name[length] < next; });
        last =
            std::partition_point(first, last, [=](const NamedReference& entry) { return entry.name[length] == next; });
        if (first != last && first->name.size() == length + 1) longest = first;
    }
    if (longest == nullptr) return reference;
    reference.length = 1 + longest->name.size();
    reference.text_length = longest->text.size();
    std::memcpy(reference.text, longest->text.data(), reference.text_length);
    return reference;
}

}  // namespace

std::uint32_t CodePointOfNumber(std::uint32_t number) {
    if (number >= 0x80 && number < 0xA0 && kWindows1252[number - 0x80] != 0) return kWindows1252[number - 0x80];
    const bool none = number == 0 || number > 0x10FFFF || (number >= 0xD800 && number < 0xE000);
    return none ? 0xFFFD : number;
}

Reference ReadReference(std::string_view text) {
    return text.size() > 1 && text[1] == '#' ? ReadNumber(text) : ReadName(text);
}

}  // namespace utility::internal
