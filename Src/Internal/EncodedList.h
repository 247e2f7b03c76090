#ifndef UTILITY_INTERNAL_ENCODEDLIST_H
#define UTILITY_INTERNAL_ENCODEDLIST_H

// Character lists written in their characters and turned into the bytes of a stated encoding by the compiler:
//
//     constexpr auto kHanDigits = Gbk("零一二三");
//     static_assert(kHanDigits.size() == 8);
//
// A character that GBK lacks, or source text that is not UTF-8, does not compile. User-defined GBK codes, which have
// no character, are written as byte escapes and joined with Join().

#include <array>
#include <cstddef>
#include <string_view>

#include "CodeTrans/Tables/CodeTableData.h"
#include "Internal/Bytes.h"

namespace utility::internal {

// Up to `Capacity` bytes and the NUL behind them.
template <std::size_t Capacity>
class EncodedList {
public:
    constexpr std::size_t size() const { return size_; }
    constexpr const char* c_str() const { return bytes_.data(); }
    constexpr std::string_view view() const { return {bytes_.data(), size_}; }
    constexpr char operator[](std::size_t index) const { return bytes_[index]; }
    constexpr void Append(unsigned byte) { bytes_[size_++] = ToChar(byte); }

private:
    std::array<char, Capacity + 1> bytes_{};
    std::size_t size_ = 0;
};

// Decodes the character at `text[pos]`, steps over it; for the compiler only, so malformed text is an error.
constexpr unsigned long DecodeSourceCharacter(const char* text, std::size_t& pos) {
    const unsigned char lead = ToByte(text[pos++]);
    if (IsAscii(lead)) return lead;
    const std::size_t following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) throw "the list is not UTF-8";
    unsigned long code_point = lead & (0x3Fu >> following);
    for (std::size_t i = 0; i < following; ++i) {
        const unsigned char next = ToByte(text[pos++]);
        if (!IsUtf8Continuation(next)) throw "the list is not UTF-8";
        code_point = code_point << 6 | (next & 0x3Fu);
    }
    return code_point;
}

// The list stored as GBK (code page 936).
template <std::size_t N>
constexpr EncodedList<N> Gbk(const char (&characters)[N]) {
    EncodedList<N> list;
    for (std::size_t pos = 0; pos + 1 < N;) {
        const unsigned long code_point = DecodeSourceCharacter(characters, pos);
        const unsigned code = code_point < 0x10000 ? kUnicodeToGbk[code_point] : 0;
        if (code == 0) throw "GBK has no such character";
        if (code > 0xFF) list.Append(code >> 8);
        list.Append(code & 0xFF);
    }
    return list;
}

// The list stored as UTF-8, byte for byte as written.
template <std::size_t N>
constexpr EncodedList<N> Utf8(const char (&characters)[N]) {
    EncodedList<N> list;
    for (std::size_t pos = 0; pos + 1 < N; ++pos) list.Append(ToByte(characters[pos]));
    return list;
}

// The bytes as written: for codes that have no character.
template <std::size_t N>
constexpr EncodedList<N> RawBytes(const char (&bytes)[N]) {
    return Utf8(bytes);
}

template <std::size_t A, std::size_t B>
constexpr EncodedList<A + B> Join(const EncodedList<A>& first, const EncodedList<B>& second) {
    EncodedList<A + B> list;
    for (std::size_t i = 0; i < first.size(); ++i) list.Append(ToByte(first[i]));
    for (std::size_t i = 0; i < second.size(); ++i) list.Append(ToByte(second[i]));
    return list;
}

}  // namespace utility::internal

#endif
