#include "Utility/StringToolkit/Splitting.h"

#include <cstring>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/TokenBlanks.h"

using utility::internal::ByteSet;

namespace {

constexpr std::size_t kMaxSplitOrBytes = 10000;
constexpr std::string_view kLineBreaks = "\r\n";

// The next token of `rest`: bytes of `skipped` in front of it are dropped, the first byte of `delimiters`
// ends it. Empty when none is left.
std::string_view TakeToken(std::string_view& rest, const ByteSet& skipped, const ByteSet& delimiters) {
    std::size_t begin = 0;
    while (begin < rest.size() && skipped.Contains(rest[begin])) ++begin;
    std::size_t end = begin;
    while (end < rest.size() && !delimiters.Contains(rest[end])) ++end;
    const std::string_view token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

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
    const ByteSet set(delimiters == nullptr ? "" : delimiters);
    std::string_view rest(text, strnlen(text, kMaxSplitOrBytes));
    for (auto token = TakeToken(rest, set, set); !token.empty(); token = TakeToken(rest, set, set)) {
        pieces.emplace_back(token);
    }
    return true;
}

std::size_t GetStrVector(const char* text, const char* delimiters, std::vector<std::string>& pieces) {
    pieces.clear();
    const ByteSet set(delimiters);
    const ByteSet skipped = utility::internal::WithTokenBlanks(set);
    std::string_view rest(text);
    for (auto token = TakeToken(rest, skipped, set); !token.empty(); token = TakeToken(rest, skipped, set)) {
        token = token.substr(0, token.find_last_not_of(kLineBreaks) + 1);
        if (!token.empty()) pieces.emplace_back(token);
    }
    return pieces.size();
}
