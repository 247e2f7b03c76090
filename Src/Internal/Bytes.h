#ifndef UTILITY_INTERNAL_BYTES_H
#define UTILITY_INTERNAL_BYTES_H

// Byte predicates and two-byte helpers that every subsystem shares. All of them are free of the locale.

#include <climits>
#include <cstddef>
#include <string_view>

namespace utility::internal {

static_assert(CHAR_BIT == 8 && sizeof(wchar_t) == 4 && sizeof(long) == 8,
              "the library is written for 8-bit bytes, 32-bit wchar_t and 64-bit long");

constexpr unsigned char ToByte(char c) {
    return static_cast<unsigned char>(c);
}
constexpr char ToChar(unsigned value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

constexpr bool IsAscii(unsigned char byte) {
    return byte < 0x80;
}
constexpr bool IsAsciiDigit(unsigned char byte) {
    return byte >= '0' && byte <= '9';
}
constexpr bool IsAsciiUpper(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z';
}
constexpr bool IsAsciiLower(unsigned char byte) {
    return byte >= 'a' && byte <= 'z';
}
constexpr bool IsAsciiLetter(unsigned char byte) {
    return IsAsciiUpper(byte) || IsAsciiLower(byte);
}

constexpr bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Bytes 10xxxxxx, which follow the lead byte of a UTF-8 sequence.
constexpr bool IsUtf8Continuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// The two-byte code `lead` × 256 + `trail`.
constexpr unsigned TwoByteCode(unsigned char lead, unsigned char trail) {
    return static_cast<unsigned>(lead) << 8 | trail;
}

// One UCS-2 unit, low byte first, at `bytes`; no alignment needed.
constexpr unsigned LoadUcs2(const char* bytes) {
    return TwoByteCode(ToByte(bytes[1]), ToByte(bytes[0]));
}
inline void StoreUcs2(unsigned unit, char* bytes) {
    bytes[0] = ToChar(unit & 0xFF);
    bytes[1] = ToChar(unit >> 8);
}

}  // namespace utility::internal

#endif
