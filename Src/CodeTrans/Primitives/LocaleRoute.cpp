#include "CodeTrans/Primitives/LocaleRoute.h"

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

namespace {

using utility::internal::GbkToUnicode;
using utility::internal::IsAscii;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr std::size_t kConversionError = static_cast<std::size_t>(-1);

// Code page 936 has one character of a single byte beyond ASCII.
constexpr wchar_t kEuroSign = 0x20AC;
constexpr unsigned char kEuroByte = 0x80;

// Some C libraries set a locale of any name and then convert as they like.
bool ConvertsGbk() {
    wchar_t character = 0;
    return std::mbstowcs(&character, "\xD6\xD0", 1) == 1 && character == 0x4E2D;
}

// Sets the locale of the process; false, with the message, where its conversion cannot be used.
bool SetGbkLocale() {
    constexpr char kGbkLocale[] = "zh_CN.gbk";
    if (std::setlocale(LC_ALL, kGbkLocale) != nullptr && ConvertsGbk()) return true;
    std::printf("Can't set the specified locale %s! ", kGbkLocale);
    return false;
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

}  // namespace

std::size_t ANSIToUTF8(const char* gbk, std::string& utf8) {
    std::wstring wide;
    ANSIToUnicode(gbk, wide);
    utf8 = unicode_to_utf8(std::move(wide));
    return utf8.size();
}

// Both conversions write into a cleared string: its first zero ends what was converted, after an error too.
std::size_t ANSIToUnicode(const std::string& gbk, std::wstring& wide) {
    const bool locale_works = SetGbkLocale();
    wide.assign(gbk.size(), L'\0');
    const std::size_t characters = locale_works ? std::mbstowcs(wide.data(), gbk.c_str(), wide.size())
                                                : GbkToWideByTable(gbk.c_str(), wide.data());
    wide.resize(std::wcslen(wide.c_str()));
    return characters;
}

std::size_t UnicodeToANSI(const std::wstring& wide, std::string& gbk) {
    const bool locale_works = SetGbkLocale();
    constexpr std::size_t kMaxBytes = 6;  // of any character in any locale
    gbk.assign(wide.size() * (locale_works ? kMaxBytes : 2), '\0');
    const std::size_t bytes =
        locale_works ? std::wcstombs(gbk.data(), wide.c_str(), gbk.size()) : WideToGbkByTable(wide.c_str(), gbk.data());
    gbk.resize(std::strlen(gbk.c_str()));
    return bytes;
}

int UTF8ToANSI(const char* utf8, std::string& gbk) {
    UnicodeToANSI(UtfStr2Unicode(utf8), gbk);
    return 1;
}
