#ifndef UTILITY_INTERNAL_TOKENSCAN_H
#define UTILITY_INTERNAL_TOKENSCAN_H

// What the tokenisers share.

#include <cstring>

namespace utility::internal {

// The blanks, which may stand in front of a token as its delimiters do, but do not end one.
constexpr bool IsTokenBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\r';
}

// Whether the NUL-terminated list `delimiters` holds the byte, which is not NUL. Where only one or two bytes a token are
// asked for, making a set for each token would cost more than it saves.
inline bool IsDelimiter(char byte, const char* delimiters) {
    if (delimiters[0] == byte) return true;
    return delimiters[0] != '\0' && delimiters[1] != '\0' && std::strchr(delimiters + 1, byte) != nullptr;
}

// The first byte from `pos` on that is one of the NUL-terminated `delimiters`, or the NUL. The C library looks at many
// bytes at a time, which saves the branch at the end of a loop over words, too, that no processor foresees.
inline const char* FindTokenEnd(const char* pos, const char* delimiters) {
    if (delimiters[0] == '\0' || delimiters[1] != '\0') return pos + std::strcspn(pos, delimiters);
    const char* const found = std::strchr(pos, delimiters[0]);
    return found != nullptr ? found : pos + std::strlen(pos);
}

}  // namespace utility::internal

#endif
