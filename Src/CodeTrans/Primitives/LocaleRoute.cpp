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
#include "Internal/Bytes.h"
#include "Internal/DoubleByteRuns.h"

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

class WidePairWriter {
public:
    WidePairWriter(wchar_t* out, const wchar_t* limit) : out_(out), limit_(limit) {}

    wchar_t* out() const { return out_; }
    bool HasRoom() const { return out_ < limit_; }
    unsigned Four(std::uint64_t indexes) {
        std::uint16_t code_points[4];
        LookUp(kGbkToUnicode, indexes, code_points);
        for (unsigned i = 0; i < 4; ++i) out_[i] = code_points[i];
        return UnknownOnes(code_points);
    }
    bool AllFour(std::uint64_t indexes) {
        const bool all_known = Four(indexes) == 0;
        Took(all_known ? 4 : 0);
        return all_known;
    }
    void Took(unsigned pairs) { out_ += pairs; }
    void Ascii8(const char* bytes) { Widen8ToWide(bytes, out_); }
    void TookAscii(unsigned bytes) { out_ += bytes; }
    void One(unsigned code_point) { *out_++ = static_cast<wchar_t>(code_point); }

private:
    wchar_t* out_;
    const wchar_t* limit_;
};

// Converts what the tables know and appends it to `output`, by way of a block; returns the place where that ended. The
// block's writer is made by `start(place, limit)` and takes single characters with One(code point).
template <typename Unit, typename Start>
const char* ConvertKnown(const char* gbk, const char* end, std::basic_string<Unit>& output, Start start) {
    constexpr std::size_t kBlock = 1024, kMostInATurn = 64;
    Unit block[kBlock + kMostInATurn];
    for (bool more = true; more;) {
        auto writer = start(block, block + kBlock);
        gbk = ReadDoubleByteRuns(gbk, end, writer, [](const char*) { return false; });
        more = !writer.HasRoom();
        while (!more && gbk != end) {
            const unsigned char lead = ToByte(gbk[0]);
            const unsigned code_point = IsAscii(lead) ? lead : GbkToUnicode(lead, ToByte(gbk[1]));
            if (code_point == 0 || end - gbk >= 24) break;
            writer.One(code_point);
            gbk += IsAscii(lead) ? 1 : 2;
        }
        output.append(block, writer.out());
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

bool AreAscii8(const wchar_t* wide) {
    std::uint64_t words[4];
    std::memcpy(words, wide, sizeof words);
    return ((words[0] | words[1] | words[2] | words[3]) & 0xFFFFFF80FFFFFF80u) == 0;
}

// Writes two bytes, of which the character takes one or both, without a branch that text of several scripts would make
// the processor guess wrong; false for a character that the tables do not know.
[[gnu::always_inline]] inline bool ConvertOne(wchar_t character, char*& gbk) {
    const auto code_point = static_cast<std::uint32_t>(character);
    const unsigned code = code_point < 0x10000 ? CodeTable[code_point] : 0;
    if (code == 0 || (code >= 0x80 && code <= 0xFF)) return false;
    const bool two = code > 0xFF;
    gbk[0] = ToChar(two ? code >> 8 : code);
    gbk[1] = ToChar(code & 0xFF);
    gbk += two ? 2 : 1;
    return true;
}

// The same for the other direction, as far as `limit`.
const wchar_t* ConvertKnown(const wchar_t* wide, const wchar_t* limit, char*& gbk) {
    char* out = gbk;
    bool known = true;
    while (known && limit - wide >= 8) {
        if (AreAscii8(wide)) {
            for (unsigned i = 0; i < 8; ++i) out[i] = static_cast<char>(wide[i]);
            out += 8;
            wide += 8;
            continue;
        }
        for (unsigned left = 8; left > 0 && (known = ConvertOne(*wide, out)); --left) ++wide;
    }
    while (known && wide != limit && (known = ConvertOne(*wide, out))) ++wide;
    gbk = out;
    return wide;
}

}  // namespace

std::size_t ANSIToUTF8(const char* gbk, std::string& utf8) {
    const Route route = SetGbkLocale();
    const char* const end = gbk + std::strlen(gbk);
    std::string converted;
    if (route.tables) {
        converted.reserve(static_cast<std::size_t>(end - gbk) / 2 * 3 + 1);
        gbk = ConvertKnown(gbk, end, converted,
                           [](char* place, const char* limit) { return Utf8PairWriter(kGbkToUtf8, place, limit); });
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
        text = ConvertKnown(text, end, wide,
                            [](wchar_t* place, const wchar_t* limit) { return WidePairWriter(place, limit); });
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
    UnicodeToANSI(UtfStr2Unicode(utf8), gbk);
    return 1;
}
