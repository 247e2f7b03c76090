#ifndef UTILITY_CODETRANS_LOCALEROUTE_H
#define UTILITY_CODETRANS_LOCALEROUTE_H

/** @file
 * Conversions between GBK, UTF-8 and wide strings (32-bit units, one code point each) by the C library's
 * locale "zh_CN.gbk".
 *
 * Every call sets that locale, for all categories (LC_ALL) and the whole process, and never puts the earlier
 * one back. So threads may only call these functions while nobody sets another locale.
 *
 * Where the locale works, the result is the C library's to the byte. It works when it can be set and then
 * converts GBK D6 D0 to U+4E2D (some C libraries accept any name, and a thread may have a locale of its own).
 * Where it does not, each call prints "Can't set the specified locale zh_CN.gbk! " to stdout and converts by
 * CodeTable and its inverse instead, with the same kinds of result; the locale in force then has no
 * influence. The table knows code page 936 and nothing else, and passes over the tag characters U+E0000 to
 * U+E007F, just as the GNU C library does; another C library's GBK may differ in a few codes.
 *
 * Pointers must not be null. The outputs may be the owners of the inputs: `UTF8ToANSI(s.c_str(), s)` is
 * right. */

#include <cstddef>
#include <string>

#include "../../Utility/UtilityExport.h"

/** Converts NUL-terminated GBK text to UTF-8 and returns the length of `utf8` in bytes.
 *
 * The conversion stops at the first sequence that is no GBK character (see ANSIToUnicode): `utf8` then holds
 * what came before it, and nothing else tells the caller. */
UTILITY_API std::size_t ANSIToUTF8(const char* gbk, std::string& utf8);

/** Converts GBK text, up to its first NUL, to a wide string and returns its length in characters.
 *
 * At a sequence that is no GBK character (an orphan lead byte too) the result is all bits set, `(size_t)-1`,
 * and `wide` holds the characters before it. */
UTILITY_API std::size_t ANSIToUnicode(const std::string& gbk, std::wstring& wide);

/** Converts a wide string, up to its first NUL, to GBK and returns its length in bytes.
 *
 * At a character that GBK lacks the result is all bits set, `(size_t)-1`, and `gbk` holds the bytes before
 * it. */
UTILITY_API std::size_t UnicodeToANSI(const std::wstring& wide, std::string& gbk);

/** Converts NUL-terminated UTF-8 text to GBK, without a leading byte-order mark; returns 1 always.
 *
 * UTF-8 is read by the lenient utf8_to_unicode, so characters above U+FFFF vanish; then UnicodeToANSI stops
 * at the first character that GBK lacks, and `gbk` holds what came before it. utf8toGbk goes on instead. */
UTILITY_API int UTF8ToANSI(const char* utf8, std::string& gbk);

#endif
