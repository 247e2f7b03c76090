#include "Utility/StringToolkit/Trimming.h"

#include <cstddef>
#include <string_view>

#include "Internal/ByteSet.h"

using utility::internal::ByteSet;

namespace {

constexpr ByteSet kBlanks(" \t\r\n");

constexpr bool IsDoubleByteSpace(std::string_view pair) {
    return pair == "\xA1\xA1" || pair == "\xA3\xA0";
}

}  // namespace

void trim(std::string& text, char byte) {
    text.erase(text.find_last_not_of(byte) + 1);
    text.erase(0, text.find_first_not_of(byte));
}

bool gfn_bTrimWord(std::string& text) {
    if (text.empty()) return false;
    std::string_view rest(text);
    for (std::size_t blank_bytes = 1; blank_bytes != 0 && !rest.empty(); rest.remove_prefix(blank_bytes)) {
        blank_bytes = kBlanks.Contains(rest.front()) ? 1 : IsDoubleByteSpace(rest.substr(0, 2)) ? 2 : 0;
    }
    const std::size_t front_bytes = text.size() - rest.size();
    for (std::size_t blank_bytes = 1; blank_bytes != 0 && !rest.empty(); rest.remove_suffix(blank_bytes)) {
        const std::string_view last_pair = rest.size() < 2 ? rest : rest.substr(rest.size() - 2);
        blank_bytes = kBlanks.Contains(rest.back()) ? 1 : IsDoubleByteSpace(last_pair) ? 2 : 0;
    }
    const std::size_t kept_bytes = rest.size();
    text.erase(front_bytes + kept_bytes);
    text.erase(0, front_bytes);
    return true;
}
