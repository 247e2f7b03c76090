#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "Internal/HanRuns.h"
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

// A count for each class, all in one word: a counter in memory would cost each character the time from a store to the next
// load.
class ManyCounters {
public:
    static constexpr unsigned kMost = (1u << 7) - 1;  // Count() calls between two of MoveTo()

    void Count(CharacterClass kind) { word_ += std::uint64_t{1} << kBits * static_cast<unsigned>(kind); }
    void MoveTo(ClassCounts& counts) {
        for (std::size_t& count : counts.counts) {
            count += word_ & kMost;
            word_ >>= kBits;
        }
    }

private:
    static constexpr unsigned kBits = 7;
    static_assert(kBits * kCharacterClasses <= 64);
    std::uint64_t word_ = 0;
};

// Not inlined, as it would take the registers that counting ASCII is quick by.
[[gnu::noinline]] Utf8Character ReadRare(const char* pos, const char* end) {
    return ReadUtf8Character(pos, end);
}

}  // namespace

bool CharacterCursor::AdvanceBeyondAscii() {
    const Utf8Character character = ReadUtf8Character(rest.data(), rest.data() + rest.size());
    item = {character.code_point, rest.substr(0, character.length)};
    rest.remove_prefix(character.length);
    return true;
}

CharacterClass ClassOf(char32_t code_point) {
    constexpr char32_t kFirstCommonHan = 0x4E00, kLastCommonHan = 0x9FFF;
    if (code_point >= kFirstCommonHan && code_point <= kLastCommonHan) return kHan;
    return code_point < kBmpClasses.size() ? kBmpClasses[code_point] : FindClass(code_point);
}

ClassCounts CountClasses(std::string_view text) {
    ClassCounts counts;
    std::size_t& han = counts.counts[static_cast<std::size_t>(kHan)];
    ManyCounters counters;
    for (const char *pos = text.data(), *const end = pos + text.size(); pos != end;) {
        for (unsigned left = ManyCounters::kMost; left > 0 && pos != end; --left) {
            if (IsAscii(ToByte(*pos))) {
                counters.Count(kBmpClasses[ToByte(*pos++)]);
                continue;
            }
            const char* const run_end = SkipCommonHan(pos, end);
            han += static_cast<std::size_t>((run_end - pos) / kHanBytes);
            if (run_end == pos) {
                const Utf8Character character = ReadRare(pos, end);
                counters.Count(ClassOf(character.code_point));
                pos += character.length;
            } else {
                pos = run_end;
            }
        }
        counters.MoveTo(counts);
    }
    return counts;
}

}  // namespace textkit
