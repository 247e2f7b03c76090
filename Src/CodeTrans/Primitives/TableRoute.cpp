#include "CodeTrans/Primitives/TableRoute.h"

#include "CodeTrans/Tables/CodeTable.h"
#include "Internal/Bytes.h"

namespace {

using utility::internal::IsUtf8Continuation;
using utility::internal::LoadUcs2;
using utility::internal::StoreUcs2;
using utility::internal::ToByte;
using utility::internal::ToChar;

// What stands at one position of UTF-8 text.
struct Utf8Step {
    unsigned byte_count;
    bool has_unit;
    unsigned unit;
};

constexpr Utf8Step kSkipOneByte = {1, false, 0};

// Reads NUL-terminated text at a byte that is not its NUL. Each further byte is looked at only when the one
// before it is not the NUL. A four-byte sequence needs no case of its own: it is skipped byte by byte.
inline Utf8Step ReadUtf8(const char* utf8) {
    const unsigned lead = ToByte(utf8[0]);
    if (lead < 0x80) return {1, true, lead};
    if (lead < 0xC0 || lead > 0xEF || !IsUtf8Continuation(ToByte(utf8[1]))) return kSkipOneByte;
    const unsigned second = ToByte(utf8[1]) & 0x3Fu;
    if (lead < 0xE0) return {2, true, (lead & 0x1F) << 6 | second};
    if (!IsUtf8Continuation(ToByte(utf8[2]))) return kSkipOneByte;
    return {3, true, (lead & 0x0F) << 12 | second << 6 | (ToByte(utf8[2]) & 0x3Fu)};
}

// Writes one unit as GBK and returns the end of what it wrote.
inline char* WriteGbk(unsigned unit, char* gbk) {
    constexpr unsigned kIdeographicSpace = 0xA1A1;
    if (unit < 0x80) {
        *gbk++ = ToChar(unit);
        return gbk;
    }
    const unsigned code = CodeTable[unit] != 0 ? CodeTable[unit] : kIdeographicSpace;
    *gbk++ = ToChar(code >> 8);
    *gbk++ = ToChar(code & 0xFF);
    return gbk;
}

void WriteTwoZeroBytes(char* end) {
    end[0] = '\0';
    end[1] = '\0';
}

}  // namespace

std::size_t utf8tou(char* utf8, char* ucs2) {
    char* out = ucs2;
    while (*utf8 != '\0') {
        const Utf8Step step = ReadUtf8(utf8);
        utf8 += step.byte_count;
        if (!step.has_unit) continue;
        StoreUcs2(step.unit, out);
        out += 2;
    }
    *out = '\0';
    return static_cast<std::size_t>(out - ucs2) / 2;
}

// In place, the GBK bytes never overtake the units, nor below the UTF-8 bytes: no character grows.
void utoGbk(const char* ucs2, char* gbk, unsigned long count) {
    for (std::size_t i = 0; i < count; ++i) gbk = WriteGbk(LoadUcs2(ucs2 + 2 * i), gbk);
    WriteTwoZeroBytes(gbk);
}

void utf8toGbk(char* utf8, char* gbk) {
    while (*utf8 != '\0') {
        const Utf8Step step = ReadUtf8(utf8);
        utf8 += step.byte_count;
        if (step.has_unit) gbk = WriteGbk(step.unit, gbk);
    }
    WriteTwoZeroBytes(gbk);
}
