#include "Utility/ChineseText/Sentences.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/CharacterListIndex.h"
#include "Internal/CharacterStep.h"
#include "Internal/EncodedList.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::CharacterListIndex;
using utility::internal::DoubleByteStep;
using utility::internal::IsAscii;
using utility::internal::ToByte;
using utility::internal::Utf8;

constexpr ByteSet kAsciiSentenceEnds(".!;?\r\n\t");

// How far in front of a start position the end of the text is looked for. Looking all the way would make a loop over
// the sentences of a long text quadratic; this much finds every start that is off by a little, and costs next to
// nothing.
constexpr std::size_t kCheckedBytes = 1024;

// Stored as UTF-8 although it is searched for two-byte units.
constexpr auto kWideSentenceEnds = Utf8("。！？；");
static_assert(kWideSentenceEnds.size() == 12);
constexpr CharacterListIndex kSentenceEndUnits(kWideSentenceEnds);

bool IsSentenceEnd(const char* unit, std::size_t step) {
    if (step == 1) return kAsciiSentenceEnds.Contains(*unit);
    return kSentenceEndUnits.FindPair(ToByte(unit[0]), ToByte(unit[1])) >= 0;
}

// Whether the line has more than three bytes and ends with one of the marks, three bytes each.
bool EndsWithWideMark(std::string_view line, std::initializer_list<std::string_view> marks) {
    if (line.size() <= 3) return false;
    for (const std::string_view mark : marks) {
        if (line.substr(line.size() - 3) == mark) return true;
    }
    return false;
}

}  // namespace

unsigned long FindSentenceEnd(const char* text, unsigned long start, unsigned long budget) {
    if (start > PTRDIFF_MAX) return std::strlen(text);  // no text reaches that far
    const std::size_t checked = start - std::min<std::size_t>(start, kCheckedBytes);
    const std::size_t end = checked + strnlen(text + checked, start - checked);
    if (end < start) return end;
    std::size_t pos = start;
    for (std::size_t used = 0; used < budget;) {
        const std::size_t step = DoubleByteStep(text + pos);
        if (step == 0) return pos;
        if (IsSentenceEnd(text + pos, step)) return pos + step;
        pos += step;
        used += step;
    }
    return pos + std::strlen(text + pos);
}

unsigned long FindSentenceStart(const char* text, unsigned long position, unsigned long budget) {
    if (position == 0) return 0;
    std::size_t last = position - 1;  // the last byte of the unit in question
    for (std::size_t used = 0; last > 0 && used < budget;) {
        const std::size_t step = !IsAscii(ToByte(text[last])) && last > 1 ? 2 : 1;
        if (IsSentenceEnd(text + last + 1 - step, step)) return last + 1;
        last -= step;
        used += step;
    }
    return 0;
}

bool IsValidTitle(const char* line) {
    const std::string_view title(line);
    if (title.empty()) return false;
    if (IsAscii(ToByte(title.back()))) return title.back() != ';';
    return !EndsWithWideMark(title, {"。", "！"});
}

bool IsValidSentence(const char* line) {
    constexpr ByteSet kSentenceClosers(";.:)");
    const std::string_view sentence(line);
    if (sentence.empty()) return false;
    if (IsAscii(ToByte(sentence.back()))) return kSentenceClosers.Contains(sentence.back());
    return EndsWithWideMark(sentence, {"。", "：", "！", "；", "）"});
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): taken by value since hosts call it so
int GetMaxIndex(std::vector<float> scores) {
    if (scores.empty()) return -1;
    std::size_t best = 0;
    for (std::size_t i = 1; i < scores.size(); ++i) {
        if (scores[i] > scores[best]) best = i;
    }
    return static_cast<int>(best);
}
