#include "CodeTrans/Primitives/LocaleRoute.h"

#include <langinfo.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <utility>

#include "CodeTrans/Primitives/Utf8.h"
#include "CodeTrans/Tables/CodeTable.h"
#include "CodeTrans/Tables/GbkToUnicode.h"
#include "CodeTrans/Tables/UnicodeToGbk.h"
#include "Internal/Bytes.h"
#include "Internal/DoubleByteBlocks.h"
#include "Internal/LenientUtf8.h"
#include "Internal/Utf8Blocks.h"
#include "Internal/Utf8Runs.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

using namespace utility::internal;

constexpr std::size_t kConversionError = static_cast<std::size_t>(-1);

// Code page 936 has one character of a single byte beyond ASCII.
constexpr wchar_t kEuroSign = 0x20AC;
constexpr unsigned char kEuroByte = 0x80;

// Whether the C library converts every two-byte code that our tables have, and ASCII, to the same characters and back.
// To be asked under its own GBK.
bool AgreesWithTables() {
    std::string gbk;
    std::wstring wide;
    const auto add = [&](unsigned code_point, unsigned code) {
        if (code > 0xFF) gbk += ToChar(code >> 8);
        gbk += ToChar(code & 0xFF);
        wide += static_cast<wchar_t>(code_point);
    };
    for (unsigned code_point = 1; code_point < 0x10000; ++code_point) {
        const unsigned code = CodeTable[code_point];
        if (code != 0 && code_point != kEuroSign) add(code_point, code);
    }
    std::wstring converted(wide.size() + 1, L'\0');
    std::string converted_back(gbk.size() + 1, '\0');
    return std::mbstowcs(converted.data(), gbk.c_str(), converted.size()) == wide.size() &&
           converted.compare(0, wide.size(), wide) == 0 &&
           std::wcstombs(converted_back.data(), wide.c_str(), converted_back.size()) == gbk.size() &&
           converted_back.compare(0, gbk.size(), gbk) == 0;
}

// Some C libraries set a locale of any name and then convert as they like.
bool ConvertsGbk() {
    wchar_t character = 0;
    return std::mbstowcs(&character, "\xD6\xD0", 1) == 1 && character == 0x4E2D;
}

// Who converts.
struct Route {
    // The C library does, and so what the tables do not know is for it to judge.
    bool library;
    // The tables do, as far as they go, and give what the C library gives.
    bool tables;
};

// Sets the locale of the process, with the message where its conversion cannot be used. The C library's GBK is compared
// with the tables once, when it is first met. After that the name of the encoding in force tells whether it is that
// one: it is another if the thread has a locale of its own, or the process found another locale under the name.
Route SetGbkLocale() {
    constexpr char kGbkLocale[] = "zh_CN.gbk";
    if (std::setlocale(LC_ALL, kGbkLocale) != nullptr) {
        if (std::strcmp(nl_langinfo(CODESET), "GBK") == 0) {
            static const bool agrees = AgreesWithTables();
            if (agrees) return {true, true};
        }
        if (ConvertsGbk()) return {true, false};
    }
    std::printf("Can't set the specified locale %s! ", kGbkLocale);
    return {false, true};
}

// Both are for ReadDoubleByteBlocks; Character says whether the tables know what it took.
struct WideGbkWriter {
    static constexpr std::size_t kMostInATurn = 64;
    wchar_t* out;
    const wchar_t* limit;

    bool HasRoom() const { return out < limit; }
    void Ascii64(const char* bytes) {
        for (unsigned i = 0; i < 64; i += 8) Widen8ToWide(bytes + i, out + i);
    }
    void TookAscii(unsigned bytes) { out += bytes; }
    bool Character(const char* bytes) {
        const unsigned character = kCharacterAtGbk[LoadWord<std::uint16_t>(bytes)];
        *out++ = static_cast<wchar_t>(character);
        return character != 0;
    }
};
struct Utf8GbkWriter {
    static constexpr std::size_t kMostInATurn = 64 / 2 * 3 + 4;
    char* out;
    const char* limit;

    bool HasRoom() const { return out < limit; }
    void Ascii64(const char* bytes) { std::memcpy(out, bytes, 64); }
    void TookAscii(unsigned bytes) { out += bytes; }
    bool Character(const char* bytes) {
        const std::uint32_t entry = kUtf8AtGbk[LoadWord<std::uint16_t>(bytes)];
        StoreWord(entry, out);
        out += entry >> 24;
        return entry != 0;
    }
};

// Converts what the tables know of NUL-terminated text and appends it to `output`, by way of a block; returns the place
// where that ended.
template <typename Writer, typename Unit>
const char* ConvertKnown(const char* gbk, const char* end, std::basic_string<Unit>& output) {
    constexpr std::size_t kBlock = 1024;
    Unit block[kBlock + Writer::kMostInATurn];
    for (bool more = true; more;) {
        Writer writer{block, block + kBlock};
        gbk = ReadDoubleByteBlocks(gbk, end, writer);
        more = !writer.HasRoom();
        // Up to a character that they do not know, which is in this block.
        while (!more && gbk != end) {
            Writer trial = writer;
            if (!trial.Character(gbk)) break;
            writer = trial;
            gbk += IsAscii(ToByte(*gbk)) ? 1 : 2;
        }
        output.append(block, writer.out);
    }
    return gbk;
}

// The stand-in for mbstowcs: converts up to the NUL, stops at the first sequence that is no character.
std::size_t GbkToWideByTable(const char* gbk, wchar_t* wide) {
    wchar_t* out = wide;
    while (*gbk != '\0') {
        const unsigned char lead = ToByte(gbk[0]);
        if (IsAscii(lead) || lead == kEuroByte) {
            *out++ = IsAscii(lead) ? static_cast<wchar_t>(lead) : kEuroSign;
            gbk += 1;
            continue;
        }
        const unsigned code_point = GbkToUnicode(lead, ToByte(gbk[1]));
        if (code_point == 0) return kConversionError;
        *out++ = static_cast<wchar_t>(code_point);
        gbk += 2;
    }
    return static_cast<std::size_t>(out - wide);
}

// The language tags of plane 14, which the GNU C library passes over in silence.
bool IsTagCharacter(std::uint32_t code_point) {
    return code_point >= 0xE0000 && code_point <= 0xE007F;
}

// The stand-in for wcstombs: at most two bytes a character.
std::size_t WideToGbkByTable(const wchar_t* wide, char* gbk) {
    char* out = gbk;
    for (; *wide != L'\0'; ++wide) {
        const auto code_point = static_cast<std::uint32_t>(*wide);
        if (IsTagCharacter(code_point)) continue;
        const unsigned code = code_point < 0x10000 ? CodeTable[code_point] : 0;
        if (code == 0) return kConversionError;
        if (code > 0xFF) *out++ = ToChar(code >> 8);
        *out++ = ToChar(code & 0xFF);
    }
    return static_cast<std::size_t>(out - gbk);
}

// Both convert what stands from a place on that the tables do not know, and say whether all of it was converted; the
// output gets what comes before the first sequence or character that cannot be.
bool ConvertRest(const Route& route, const char* gbk, const char* end, std::wstring& wide) {
    // A cleared block: its first zero ends what was converted, after an error, too.
    std::wstring rest(static_cast<std::size_t>(end - gbk), L'\0');
    const std::size_t characters =
        route.library ? std::mbstowcs(rest.data(), gbk, rest.size()) : GbkToWideByTable(gbk, rest.data());
    wide.append(rest.c_str());
    return characters != kConversionError;
}
bool ConvertRest(const Route& route, const wchar_t* wide, const wchar_t* end, std::string& gbk) {
    constexpr std::size_t kMaxBytes = 6;  // of any character in any locale
    std::string rest(static_cast<std::size_t>(end - wide) * (route.library ? kMaxBytes : 2), '\0');
    const std::size_t bytes =
        route.library ? std::wcstombs(rest.data(), wide, rest.size()) : WideToGbkByTable(wide, rest.data());
    gbk.append(rest.c_str());
    return bytes != kConversionError;
}

// Copies 16 characters unless one of them is not ASCII.
bool Narrow16(const wchar_t* wide, char* gbk) {
#ifdef __SSE2__
    const auto load = [](const wchar_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
    const __m128i a = load(wide), b = load(wide + 4), c = load(wide + 8), d = load(wide + 12);
    const __m128i all = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
    const __m128i ascii = _mm_cmpeq_epi32(_mm_and_si128(all, _mm_set1_epi32(-0x80)), _mm_setzero_si128());
    if (_mm_movemask_epi8(ascii) != 0xFFFF) return false;
    const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(gbk), bytes);
#else
    std::uint32_t all = 0;
    for (unsigned i = 0; i < 16; ++i) all |= static_cast<std::uint32_t>(wide[i]);
    if (all >= 0x80) return false;
    for (unsigned i = 0; i < 16; ++i) gbk[i] = static_cast<char>(wide[i]);
#endif
    return true;
}

// Writes two bytes, of which the character takes one or both, without a branch that text of several scripts would make
// the processor guess wrong; false, with one byte written in vain, for a character that the tables do not know.
[[gnu::always_inline]] inline bool ConvertOne(wchar_t character, char*& gbk) {
    const auto code_point = static_cast<std::uint32_t>(character);
    const std::uint16_t bytes = code_point < 0x10000 ? kGbkOfCharacter[code_point] : std::uint16_t{0};
    StoreWord(bytes, gbk);
    gbk += 1 + (bytes >> 7 & 1);
    return bytes != 0;
}

// The same for the other direction, as far as `limit`. Not inlined, so that a caller's buffer of known size costs no
// checks of each store.
[[gnu::noinline]] const wchar_t* ConvertKnown(const wchar_t* wide, const wchar_t* limit, char*& gbk) {
    constexpr std::ptrdiff_t kTurn = 16;
    bool all_ascii = true;
    while (limit - wide >= kTurn) {
        if (all_ascii && Narrow16(wide, gbk)) {
            gbk += kTurn;
        } else {
            char* out = gbk;
            unsigned unknown = 0;
#pragma GCC unroll 4
            for (std::ptrdiff_t i = 0; i < kTurn; ++i) unknown += ConvertOne(wide[i], out) ? 0 : 1;
            if (unknown != 0) break;
            all_ascii = out - gbk == kTurn;
            gbk = out;
        }
        wide += kTurn;
    }
    for (char* out = gbk; wide != limit && ConvertOne(*wide, out); gbk = out) ++wide;
    return wide;
}

struct GbkWriter {
    char* out;

    unsigned Four(CodePoints4 code_points) {
        const auto bytes = [&](unsigned i) { return std::uint64_t{kGbkOfCharacter[code_points[i]]}; };
        const std::uint64_t words = bytes(0) | bytes(1) << 16 | bytes(2) << 32 | bytes(3) << 48;
        StoreWord(words, out);
        const std::uint64_t others = ~words & 0x0080008000800080u;
        return others == 0 ? 4 : LowestBit(others) / 16;
    }
    void Took(unsigned count) { out += 2 * count; }
    void Ascii8(const char* bytes) { std::memcpy(out, bytes, 8); }
    void TookAscii(unsigned count) { out += count; }
};

// Appends what the tables know of NUL-terminated UTF-8, as utf8_to_unicode reads it; returns the place where that
// ended. The text grows nowhere.
class Utf8ToGbk {
public:
    explicit Utf8ToGbk(const char* end) : end_(end) {}

    const char* Append(const char* utf8, std::string& gbk) {
        // Twice: what is left of a block may be read with the text's end, and characters may be written in vain.
        char block[kBlock + 2 * kUtf8Turn];
        while (utf8 != end_ && unknown_ == nullptr) {
            writer_.out = block;
            utf8 = ConvertBlock(utf8, utf8 + std::min(kBlock, end_ - utf8));
            gbk.append(block, writer_.out);
        }
        return unknown_ != nullptr ? unknown_ : end_;
    }

private:
    static constexpr std::ptrdiff_t kBlock = 1024;

    [[gnu::noinline]] const char* ConvertBlock(const char* utf8, const char* block_end) {
        constexpr auto kRule = ThreeBytes::kByLead;
        const auto convert_one = [&](const char*& text) { ConvertOneOf(text); };
#ifdef __SSE2__
        while (block_end - utf8 >= kUtf8Turn + 64) {
            if (ConvertMixed(utf8)) continue;
            utf8 = ReadUtf8Runs<kRule>(utf8, utf8 + 64 + kUtf8Turn, writer_, convert_one);
        }
#endif
        utf8 = ReadUtf8Runs<kRule>(utf8, block_end, writer_, convert_one);
        while (end_ - utf8 < kUtf8Turn && utf8 != end_) ConvertOneOf(utf8);
        return utf8;
    }

#ifdef __SSE2__
    // Takes 64 bytes of characters that are ASCII or take three bytes each, unless none is ASCII: for those the loop
    // over runs is the faster one.
    bool ConvertMixed(const char*& utf8) {
        const Utf8Block block(utf8);
        if (block.IsAscii()) {
            std::memcpy(writer_.out, utf8, 64);
            writer_.out += 64;
            utf8 += 64;
            return true;
        }
        if (block.HasNoAscii() || !block.IsPlain()) return false;
        std::uint16_t units[64];
        block.Decode(units);
        char* out = writer_.out;
        unsigned unknown = 0;
        for (std::uint64_t starts = block.Starts(); starts != 0; starts &= starts - 1)
            unknown += ConvertOne(units[LowestBit(starts)], out) ? 0 : 1;
        if (unknown != 0) return false;
        writer_.out = out;
        utf8 += block.Length();
        return true;
    }
#endif

    // At an unknown character `text` becomes the end, which stops all loops.
    void ConvertOneOf(const char*& text) {
        wchar_t character[1];
        wchar_t* decoded = character;
        const char* const start = text;
        DecodeOneLeniently(text, end_, decoded);
        if (decoded == character) return;
        char* out = writer_.out;
        if (ConvertOne(character[0], out)) {
            writer_.out = out;
        } else {
            unknown_ = start;
            text = end_;
        }
    }

    const char* end_;
    GbkWriter writer_{};
    const char* unknown_ = nullptr;
};

}  // namespace

std::size_t ANSIToUTF8(const char* gbk, std::string& utf8) {
    const Route route = SetGbkLocale();
    const char* const end = gbk + std::strlen(gbk);
    std::string converted;
    if (route.tables) {
        converted.reserve(static_cast<std::size_t>(end - gbk) / 2 * 3 + 1);
        gbk = ConvertKnown<Utf8GbkWriter>(gbk, end, converted);
    }
    if (gbk != end) {
        std::wstring wide;
        ConvertRest(route, gbk, end, wide);
        converted += unicode_to_utf8(std::move(wide));
    }
    utf8 = std::move(converted);
    return utf8.size();
}

std::size_t ANSIToUnicode(const std::string& gbk, std::wstring& wide) {
    const Route route = SetGbkLocale();
    const char* text = gbk.c_str();
    const char* const end = text + std::strlen(text);
    wide.clear();
    if (route.tables) {
        wide.reserve(static_cast<std::size_t>(end - text));
        text = ConvertKnown<WideGbkWriter>(text, end, wide);
    }
    return text == end || ConvertRest(route, text, end, wide) ? wide.size() : kConversionError;
}

std::size_t UnicodeToANSI(const std::wstring& wide, std::string& gbk) {
    const Route route = SetGbkLocale();
    const wchar_t* text = wide.c_str();
    const wchar_t* const end = text + std::wcslen(text);
    gbk.clear();
    if (route.tables) {
        gbk.reserve(2 * static_cast<std::size_t>(end - text));
        constexpr std::ptrdiff_t kBlock = 512;
        const wchar_t* block_end = text;
        while (text == block_end && text != end) {
            char block[2 * kBlock];
            char* out = block;
            block_end = text + std::min(kBlock, end - text);
            text = ConvertKnown(text, block_end, out);
            gbk.append(block, out);
        }
    }
    return text == end || ConvertRest(route, text, end, gbk) ? gbk.size() : kConversionError;
}

int UTF8ToANSI(const char* utf8, std::string& gbk) {
    const Route route = SetGbkLocale();
    utf8 = SkipByteOrderMark(utf8);
    std::string converted;
    if (route.tables) {
        const char* const end = utf8 + std::strlen(utf8);
        converted.reserve(static_cast<std::size_t>(end - utf8));
        utf8 = Utf8ToGbk(end).Append(utf8, converted);
    }
    if (*utf8 != '\0') {
        const std::wstring wide = utf8_to_unicode(utf8);
        ConvertRest(route, wide.data(), wide.data() + wide.size(), converted);
    }
    gbk = std::move(converted);
    return 1;
}
