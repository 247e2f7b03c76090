#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/ChineseText.h"

namespace textkit {

namespace {

using namespace utility::internal;

struct ClassRow {
    std::uint32_t first, last;
    CharacterClass kind;
};

constexpr CharacterClass kControl = CharacterClass::kControl, kSpace = CharacterClass::kSpace,
                         kHan = CharacterClass::kHan, kLetter = CharacterClass::kLetter,
                         kDigit = CharacterClass::kDigit, kNumber = CharacterClass::kNumber,
                         kPunctuation = CharacterClass::kPunctuation, kSymbol = CharacterClass::kSymbol;

constexpr ClassRow kClassRows[] = {
#include "CharacterClassRows.inc"
};

// The classes of the Basic Multilingual Plane, one by one: 64 KiB, of which a text touches little.
constexpr auto kBmpClasses = [] {
    std::array<CharacterClass, 0x10000> classes{};
    for (const ClassRow& row : kClassRows)
        for (std::uint32_t code_point = row.first; code_point <= row.last && code_point < classes.size(); ++code_point)
            classes[code_point] = row.kind;
    return classes;
}();
static_assert(CharacterClass{} == CharacterClass::kOther);

CharacterClass FindClass(char32_t code_point) {
    const ClassRow* const row =
        std::lower_bound(std::begin(kClassRows), std::end(kClassRows), code_point,
                         [](const ClassRow& candidate, char32_t wanted) { return candidate.last < wanted; });
    return row != std::end(kClassRows) && row->first <= code_point ? row->kind : CharacterClass::kOther;
}

}  // namespace

bool CharacterCursor::AdvanceBeyondAscii() {
    const Utf8Sequence sequence = ReadUtf8Sequence(rest.data(), rest.size());
    item.code_point = sequence.valid ? Utf8CodePoint(rest.data(), sequence.length) : kReplacementCodePoint;
    item.bytes = rest.substr(0, sequence.length);
    rest.remove_prefix(sequence.length);
    return true;
}

CharacterClass ClassOf(char32_t code_point) {
    constexpr char32_t kFirstCommonHan = 0x4E00, kLastCommonHan = 0x9FFF;
    if (code_point >= kFirstCommonHan && code_point <= kLastCommonHan) return kHan;
    return code_point < kBmpClasses.size() ? kBmpClasses[code_point] : FindClass(code_point);
}

ClassCounts CountClasses(std::string_view text) {
    ClassCounts counts;
    for (const Character& character : Characters(text))
        ++counts.counts[static_cast<std::size_t>(ClassOf(character.code_point))];
    return counts;
}

}  // namespace textkit
