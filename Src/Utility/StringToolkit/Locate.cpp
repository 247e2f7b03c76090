#include "Utility/StringToolkit/Locate.h"

#include <cstddef>
#include <cstring>
#include <utility>

#include "Internal/ByteSet.h"
#include "Internal/SubstringSearch.h"

using utility::internal::ByteSet;

namespace {

constexpr ByteSet kBlanks(" \n\r");
constexpr ByteSet kBlanksAndTab(" \n\r\t");
constexpr int kMarkBytes = 15;  // the longest tag or mark that is passed over

const char* SkipBlanks(const char* text, const ByteSet& blanks) {
    while (blanks.Contains(*text)) ++text;
    return text;
}

// Behind `count` bytes that are not blank.
const char* StepForward(const char* text, std::size_t count) {
    for (; count > 0; ++text) count -= !kBlanks.Contains(*text);
    return text;
}
const char* StepBackward(const char* text, std::size_t count) {
    while (count > 0) count -= !kBlanks.Contains(*--text);
    return text;
}

// Behind the short tag or mark at `text`, or `text` where there is none.
const char* SkipMark(const char* text, char opening, char closing) {
    if (*text != opening) return text;
    for (int i = 1; i < kMarkBytes && text[i] != '\0'; ++i) {
        if (text[i] == closing) return text + i + 1;
    }
    return text;
}

}  // namespace

int StrLocate(const char* text, const char* pattern, unsigned long& start, unsigned long& end, int& offset) {
    if (offset < 0) offset = 0;
    start = end = 0;
    std::string wanted;
    for (const char* at = pattern; *at != '\0'; ++at) {
        if (!kBlanks.Contains(*at)) wanted += *at;
    }
    if (wanted.empty()) return -1;

    const char first = wanted[0];
    utility::internal::PrefixMatcher matcher(std::move(wanted));
    const char* at = text + offset;
    for (bool found = false; !found && *at != '\0'; ++at) {
        if (matcher.matched() == 0 && (at = std::strchr(at, first)) == nullptr) return -1;
        found = !kBlanks.Contains(*at) && matcher.Take(*at);
    }
    if (matcher.matched() == 0) return -1;
    start = static_cast<unsigned long>(StepBackward(at, matcher.matched()) - text);
    end = static_cast<unsigned long>(at - text);
    const char* rest = StepForward(pattern, matcher.matched());
    // The pattern's blanks are passed on the way to the next byte of the text, even to one that is a blank.
    if (*at != '\0' || kBlanks.Contains(at[-1])) rest = SkipBlanks(rest, kBlanks);
    if (*rest == '\0') return 0;
    offset = static_cast<int>(offset - static_cast<long>(end));
    return static_cast<int>(rest - pattern);
}

namespace {

// Whether `b` holds the whole of `a`, or ends with `maximum` bytes of it: at `position`, which else stays.
bool LocatesElsewhere(const char* b, const char* a, unsigned long& position, int maximum) {
    if (strnlen(a, 3) <= 2) return false;
    unsigned long start = 0, end = 0;
    int offset = 0;
    const int result = StrLocate(b, a, start, end, offset);
    if (result != 0 && (maximum <= 0 || result < maximum)) return false;
    position = start;
    return true;
}

}  // namespace

bool StrMatch(const char* a, const char* b, unsigned long& position, int maximum) {
    position = 0;
    const char* in_a = a;
    const char* in_b = b;
    long matched = 0;
    long matched_ascii = 0;
    while (*in_a != '\0' && *in_b != '\0' && (maximum == -1 || matched < maximum)) {
        in_a = SkipBlanks(in_a, kBlanksAndTab);
        const char* const behind_tag = SkipMark(in_a, '<', '>');
        if (behind_tag != in_a) {
            in_a = behind_tag;
            continue;
        }
        in_b = SkipBlanks(in_b, kBlanksAndTab);
        const char* const behind_mark = SkipMark(in_b, '[', ']');
        if (behind_mark != in_b) {
            in_b = behind_mark;
            continue;
        }
        if (*in_a == '\0' || *in_b == '\0') break;
        if (*in_a != *in_b) {
            return LocatesElsewhere(b, a, position, maximum) || matched_ascii > 3;
        }
        ++matched;
        matched_ascii += utility::internal::IsAscii(utility::internal::ToByte(*in_a));
        ++in_a;
        ++in_b;
    }
    return matched > 0;
}

unsigned int prefixMatch(const char* a, const char* b, std::string& common) {
    common.clear();
    for (;; ++a, ++b) {
        a = SkipBlanks(a, kBlanks);
        b = SkipBlanks(b, kBlanks);
        if (*a == '\0' || *a != *b) break;
        common += *a;
    }
    return static_cast<unsigned int>(common.size());
}
