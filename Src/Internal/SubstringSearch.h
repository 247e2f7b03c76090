#ifndef UTILITY_INTERNAL_SUBSTRINGSEARCH_H
#define UTILITY_INTERNAL_SUBSTRINGSEARCH_H

// Searches that stay linear where text and pattern are made of the same bytes. The members of std::string
// compare the pattern anew at every place that begins like it: "aaa…ab" in a megabyte of "a" costs them the
// product of both lengths.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace utility::internal {

// Follows a text byte by byte and knows the longest beginning of the pattern that ends at the byte taken last
// (the automaton of Knuth, Morris and Pratt).
class PrefixMatcher {
public:
    // `pattern` is not empty.
    explicit PrefixMatcher(std::string pattern) : pattern_(std::move(pattern)), borders_(pattern_.size()) {
        for (std::size_t i = 1; i < pattern_.size(); ++i) {
            matched_ = borders_[i - 1];
            Take(pattern_[i]);
            borders_[i] = matched_;
        }
        matched_ = 0;
    }

    // Whether `byte` completes the pattern; then nothing more may be taken.
    bool Take(char byte) {
        while (matched_ > 0 && pattern_[matched_] != byte) matched_ = borders_[matched_ - 1];
        if (pattern_[matched_] == byte) ++matched_;
        return matched_ == pattern_.size();
    }

    std::size_t matched() const { return matched_; }

private:
    std::string pattern_;
    // Of each beginning of the pattern: how long the longest shorter one is that it also ends with.
    std::vector<std::size_t> borders_;
    std::size_t matched_ = 0;
};

// Where the first occurrence of `pattern` that starts at or after `from` starts, or npos. The empty pattern
// occurs at every position up to the end of the text. This is the whole of FindFirst where there is no SSE2.
inline std::size_t FindFirstPlain(std::string_view text, std::string_view pattern, std::size_t from) {
    if (from > text.size()) return std::string_view::npos;
    if (pattern.empty()) return from;
    if (text.size() - from < pattern.size()) return std::string_view::npos;
    const char* const rest = text.data() + from;
    const std::size_t bytes = text.size() - from;
    const void* const found = pattern.size() == 1 ? std::memchr(rest, pattern[0], bytes)
                                                  : memmem(rest, bytes, pattern.data(), pattern.size());
    if (found == nullptr) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

#ifdef __SSE2__

// Looks at 16 starts at a time: at those where the pattern's first byte stands, and its last one as far behind it as in the
// pattern, the rest is compared. In Chinese text few places pass, whereas every third byte or so is a lead byte that a
// search for the first byte alone would stop at. A pattern of two bytes or more.
class SearchByEnds {
public:
    SearchByEnds(std::string_view text, std::string_view pattern)
        : text_(text),
          pattern_(pattern),
          first_(_mm_set1_epi8(pattern.front())),
          last_(_mm_set1_epi8(pattern.back())) {}

    std::size_t Find(std::size_t pos) const {
        if (text_.size() < pattern_.size() || text_.size() - pattern_.size() < pos) return std::string_view::npos;
        const std::size_t starts_end = text_.size() - pattern_.size() + 1;
        if (starts_end < kStarts) return FindFirstPlain(text_, pattern_, pos);
        // Comparisons in vain cost the pattern's length each; text and pattern made of the same bytes would make them many.
        std::size_t most_in_vain = 16 + (starts_end - pos) / pattern_.size();
        for (;; pos = SkipHopeless(pos + kStarts, starts_end)) {
            // The last step goes back, over starts that were looked at already, so as not to read behind the text.
            const std::size_t begin = std::min(pos, starts_end - kStarts);
            unsigned candidates = Candidates(begin) >> (pos - begin) << (pos - begin);
            for (; candidates != 0; candidates &= candidates - 1) {
                const std::size_t start = begin + static_cast<unsigned>(__builtin_ctz(candidates));
                if (std::memcmp(text_.data() + start + 1, pattern_.data() + 1, pattern_.size() - 2) == 0) return start;
                if (most_in_vain-- == 0) return FindFirstPlain(text_, pattern_, start + 1);
            }
            if (begin + kStarts == starts_end) return std::string_view::npos;
        }
    }

private:
    static constexpr std::size_t kStarts = 16;

    // Steps over 64 starts at a time while none of them is a candidate.
    std::size_t SkipHopeless(std::size_t pos, std::size_t starts_end) const {
        for (; starts_end - pos >= 4 * kStarts; pos += 4 * kStarts) {
            const __m128i front = _mm_or_si128(Matches(pos), Matches(pos + kStarts));
            const __m128i back = _mm_or_si128(Matches(pos + 2 * kStarts), Matches(pos + 3 * kStarts));
            if (_mm_movemask_epi8(_mm_or_si128(front, back)) != 0) break;
        }
        return pos;
    }
    // A bit for each of the 16 starts from `begin` on.
    unsigned Candidates(std::size_t begin) const { return static_cast<unsigned>(_mm_movemask_epi8(Matches(begin))); }
    __m128i Matches(std::size_t begin) const {
        const char* const start = text_.data() + begin;
        return _mm_and_si128(_mm_cmpeq_epi8(Load(start), first_),
                             _mm_cmpeq_epi8(Load(start + pattern_.size() - 1), last_));
    }
    static __m128i Load(const char* bytes) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)); }

    std::string_view text_, pattern_;
    __m128i first_, last_;
};

inline std::size_t FindFirst(std::string_view text, std::string_view pattern, std::size_t from) {
    return pattern.size() < 2 ? FindFirstPlain(text, pattern, from) : SearchByEnds(text, pattern).Find(from);
}

#else

inline std::size_t FindFirst(std::string_view text, std::string_view pattern, std::size_t from) {
    return FindFirstPlain(text, pattern, from);
}

#endif

// Where the last occurrence of `pattern` that starts at or before `from` starts, or npos.
inline std::size_t FindLast(std::string_view text, std::string_view pattern, std::size_t from) {
    constexpr std::size_t kCheapToRepeat = 16;
    if (pattern.size() <= kCheapToRepeat) return text.rfind(pattern, from);
    if (pattern.size() > text.size()) return std::string_view::npos;
    PrefixMatcher backwards(std::string(pattern.rbegin(), pattern.rend()));
    std::size_t pos = std::min(from, text.size() - pattern.size()) + pattern.size();
    while (pos > 0) {
        if (backwards.Take(text[--pos])) return pos;
    }
    return std::string_view::npos;
}

}  // namespace utility::internal

#endif
