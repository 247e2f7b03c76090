#include "CodeTrans/Primitives/TableRoute.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "CodeTrans/Tables/CodeTableData.h"
#include "Internal/Bytes.h"
#include "Internal/Utf8Runs.h"
#include "Internal/Words.h"

namespace {

using namespace utility::internal;

// The two bytes of GBK for each unit from 80 up, lead byte lowest, as a word of text holds them; the ideographic space
// for what GBK lacks. A table of its own saves a third of the time that CodeTable would take.
constexpr std::array<std::uint16_t, 65536> MakeGbkBytes() {
    std::array<std::uint16_t, 65536> bytes{};
    constexpr unsigned kIdeographicSpace = 0xA1A1;
    for (std::size_t unit = 0; unit < bytes.size(); ++unit) {
        const unsigned code = kUnicodeToGbk[unit] != 0 ? kUnicodeToGbk[unit] : kIdeographicSpace;
        bytes[unit] = static_cast<std::uint16_t>(code << 8 | code >> 8);
    }
    return bytes;
}
constexpr std::array<std::uint16_t, 65536> kGbkBytes = MakeGbkBytes();

// Writes one unit as GBK and returns the end of what it wrote.
inline char* WriteGbk(unsigned unit, char* gbk) {
    if (unit < 0x80) {
        *gbk++ = ToChar(unit);
        return gbk;
    }
    StoreWord(kGbkBytes[unit], gbk);
    return gbk + 2;
}

struct GbkWriter {
    char* out;

    unsigned Four(CodePoints4 code_points) {
        std::uint32_t units[4];
        std::memcpy(units, &code_points, sizeof units);
        for (unsigned i = 0; i < 4; ++i) StoreWord(kGbkBytes[units[i]], out + 2 * i);
        return 4;
    }
    void Took(unsigned count) { out += 2 * count; }
    void Ascii8(const char* bytes) { StoreWord(LoadWord<std::uint64_t>(bytes), out); }
    void TookAscii(unsigned count) { out += count; }
    void One(unsigned unit) { out = WriteGbk(unit, out); }
};

struct Ucs2Writer {
    char* out;

    unsigned Four(CodePoints4 code_points) {
        using Units4 = std::uint16_t __attribute__((vector_size(8)));
        Units4 units = __builtin_convertvector(code_points, Units4);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        units = units << 8 | units >> 8;
#endif
        std::memcpy(out, &units, sizeof units);
        return 4;
    }
    void Took(unsigned count) {
        out += 2 * count;
    }
    void Ascii8(const char* bytes) {
        Widen8ToUcs2(bytes, out);
    }
    void TookAscii(unsigned count) {
        out += 2 * count;
    }
    void One(unsigned unit) {
        StoreUcs2(unit, out);
        out += 2;
    }
};

// Writes the unit of one sequence, or nothing for a byte that starts none, of the bytes that end at `end`. A four-byte
// sequence needs no case of its own: it is skipped byte by byte.
template <typename Writer>
[[gnu::always_inline]] inline void ConvertOne(const char*& text, const char* end, Writer& writer) {
    const unsigned lead = ToByte(text[0]);
    const auto follows = [&](std::ptrdiff_t place) {
        return end - text > place && IsUtf8Continuation(ToByte(text[place]));
    };
    if (lead < 0x80) {
        writer.One(lead);
        text += 1;
    } else if (lead < 0xC0 || lead > 0xEF || !follows(1)) {
        text += 1;
    } else if (lead < 0xE0) {
        writer.One((lead & 0x1F) << 6 | (ToByte(text[1]) & 0x3Fu));
        text += 2;
    } else if (!follows(2)) {
        text += 1;
    } else {
        writer.One((lead & 0x0F) << 12 | (ToByte(text[1]) & 0x3Fu) << 6 | (ToByte(text[2]) & 0x3Fu));
        text += 3;
    }
}

// `in_place`: what is written takes the place of what was read.
template <typename Writer>
char* ConvertUtf8(const char* utf8, char* output, bool in_place) {
    const char* const end = utf8 + std::strlen(utf8);
    Writer writer{output};
    const auto convert_one = [&](const char*& text) { ConvertOne(text, end, writer); };
    constexpr auto kRule = ThreeBytes::kByAll;
    if (!in_place && HasFullTail(utf8, end)) utf8 = ReadUtf8Runs<kRule>(utf8, end - kTail, writer, convert_one);
    utf8 = ReadUtf8RunsExactly<kRule>(utf8, end, writer, convert_one);
    while (utf8 != end) convert_one(utf8);
    return writer.out;
}

void WriteTwoZeroBytes(char* end) {
    end[0] = '\0';
    end[1] = '\0';
}

}  // namespace

std::size_t utf8tou(char* utf8, char* ucs2) {
    char* const end = ConvertUtf8<Ucs2Writer>(utf8, ucs2, false);
    *end = '\0';
    return static_cast<std::size_t>(end - ucs2) / 2;
}

// In place, the GBK bytes never overtake the units, nor below the UTF-8 bytes: no character grows.
void utoGbk(const char* ucs2, char* gbk, unsigned long count) {
    for (std::size_t i = 0; i < count; ++i) gbk = WriteGbk(LoadUcs2(ucs2 + 2 * i), gbk);
    WriteTwoZeroBytes(gbk);
}

void utf8toGbk(char* utf8, char* gbk) {
    WriteTwoZeroBytes(ConvertUtf8<GbkWriter>(utf8, gbk, utf8 == gbk));
}
