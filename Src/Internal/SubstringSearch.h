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
// occurs at every position up to the end of the text.
inline std::size_t FindFirst(std::string_view text, std::string_view pattern, std::size_t from) {
    if (from > text.size()) return std::string_view::npos;
    if (pattern.empty()) return from;
    const void* const found = memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
    if (found == nullptr) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

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
