#include "Utility/StringToolkit/Splitting.h"

#include <cstring>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/TokenScan.h"

using utility::internal::ByteSet;
using utility::internal::ToByte;

namespace {

constexpr std::size_t kMaxSplitOrBytes = 10000;
constexpr std::string_view kLineBreaks = "\r\n";

// Walks over the tokens of a NUL-terminated text.
class Tokens {
public:
    // Bytes of `skipped` in front of a token are dropped, any of the list `delimiters` ends it.
    Tokens(const char* text, const char* delimiters, const ByteSet& skipped)
        : rest_(text), delimiters_(delimiters), skipped_(skipped) {}

    // The next token, empty when none is left.
    std::string_view Take() {
        while (skipped_.Contains(*rest_)) ++rest_;
        const char* const begin = rest_;
        rest_ = utility::internal::FindTokenEnd(begin, delimiters_);
        return {begin, static_cast<std::size_t>(rest_ - begin)};
    }

private:
    const char* rest_;
    const char* delimiters_;
    ByteSet skipped_;
};

}  // namespace

bool gfn_bSplit(const char* text, std::vector<std::string>& pieces, const char* separator) {
    pieces.clear();
    if (text == nullptr || *text == '\0') return false;
    if (separator == nullptr || *separator == '\0') {
        pieces.emplace_back(text);
        return true;
    }
    const std::size_t separator_bytes = std::strlen(separator);
    const char* piece = text;
    while (const char* const found = std::strstr(piece, separator)) {
        if (found != piece) pieces.emplace_back(piece, found);
        piece = found + separator_bytes;
    }
    if (*piece != '\0') pieces.emplace_back(piece);
    return true;
}

bool gfn_bSplitOR(const char* text, std::vector<std::string>& pieces, const char* delimiters) {
    pieces.clear();
    if (text == nullptr || *text == '\0') return false;
    if (delimiters == nullptr) delimiters = "";
    char beginning[kMaxSplitOrBytes + 1];
    const std::size_t bytes = strnlen(text, kMaxSplitOrBytes);
    if (bytes == kMaxSplitOrBytes) {
        std::memcpy(beginning, text, bytes);
        beginning[bytes] = '\0';
        text = beginning;
    }
    Tokens tokens(text, delimiters, ByteSet(delimiters));
    for (auto token = tokens.Take(); !token.empty(); token = tokens.Take()) pieces.emplace_back(token);
    return true;
}

std::size_t GetStrVector(const char* text, const char* delimiters, std::vector<std::string>& pieces) {
    pieces.clear();
    ByteSet skipped(delimiters);
    for (const char blank : {' ', '\t', '\r'}) skipped.Add(ToByte(blank));
    Tokens tokens(text, delimiters, skipped);
    for (auto token = tokens.Take(); !token.empty(); token = tokens.Take()) {
        token = token.substr(0, token.find_last_not_of(kLineBreaks) + 1);
        if (!token.empty()) pieces.emplace_back(token);
    }
    return pieces.size();
}
