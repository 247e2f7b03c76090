#ifndef UTILITY_CODETRANS_UTF8_H
#define UTILITY_CODETRANS_UTF8_H

/** @file
 * UTF-8 from and to wide strings of 32-bit `wchar_t` units, one code point each.
 *
 * All but `unicode_to_utf8_one` know the Basic Multilingual Plane only: characters above U+FFFF vanish.
 * Nothing fails on malformed text, which is skipped or read as each function says. All are stateless and
 * thread-safe, take one pass besides finding the end of the text, and use no locale. Pointers must not be
 * null unless stated. */

#include <cstddef>
#include <string>

#include "../../Utility/UtilityExport.h"

/** Encodes `count` wide characters into a new buffer whose address goes to `*utf8` and returns its length in
 * bytes.
 *
 * The buffer comes from malloc with 3 × `count` + 1 bytes, those behind the text all zero, so the text is
 * always NUL-terminated; the caller frees it with free(). The NUL is not counted. U+0000 within the count
 * becomes a zero byte, surrogates (U+D800 to U+DFFF) three bytes each; values below 0 or above U+FFFF are
 * dropped. `text` may be null when `count` is 0. When the memory cannot be had, `*utf8` is null and the
 * result 0. */
UTILITY_API std::size_t unicode_to_utf8(const wchar_t* text, unsigned long count, unsigned char** utf8);

/** The same encoding as an owned string that ends before the first U+0000 of `text`.
 *
 *     unicode_to_utf8(L"\x4E2D\x1F600") == "\xE4\xB8\xAD" */
UTILITY_API std::string unicode_to_utf8(std::wstring text);

/** Decodes the NUL-terminated `utf8` into `wide` and returns the number of bytes written, 4 a character.
 *
 * Two zero bytes follow the last character and are not counted: give `wide` 4 × the number of characters + 2
 * bytes (the length of `utf8` in bytes bounds the number of characters), and clear it beforehand where a
 * whole terminating unit is needed. It must be aligned for wchar_t and must not overlap `utf8`.
 *
 * The decoder is lenient. A two-byte lead takes the next byte and a three-byte lead the next two, whatever
 * they are, as long as they stand before the NUL: C3 28 is U+00E8, C0 80 is U+0000. Every other byte from 80
 * up (a lone continuation byte, a lead too close to the end, each byte of a four-byte sequence) is
 * skipped. */
UTILITY_API std::size_t utf8_to_unicode(unsigned char* utf8, wchar_t* wide);

/** The same decoding of the NUL-terminated `utf8` as an owned wide string that ends before the first U+0000
 * decoded.
 *
 * A byte-order mark is text like any other: it comes out as U+FEFF. */
UTILITY_API std::wstring utf8_to_unicode(const char* utf8);

/** utf8_to_unicode of the NUL-terminated `utf8` without a leading byte-order mark (EF BB BF). */
UTILITY_API std::wstring UtfStr2Unicode(const char* utf8);

/** Encodes one code point up to 7FFFFFFF in the one- to six-byte scheme of RFC 2279 and returns the number of
 * bytes.
 *
 * Nothing is written and 0 returned when `utf8` is null, when `size`, the size of the buffer in bytes, is
 * below 6 (even where fewer bytes would do) or when the code point is above 7FFFFFFF. No NUL is written.
 * Surrogates are encoded like any other value. */
UTILITY_API int unicode_to_utf8_one(unsigned long code_point, unsigned char* utf8, int size);

/** Decodes the first character of `length` bytes at `utf8` into `code_point` and returns the length of its
 * sequence.
 *
 * The length is what the lead byte announces, 1 to 6 bytes, even where it exceeds `length`; 1 for a
 * continuation byte, FE, FF and an empty range. `code_point` is U+FEFF for whatever is no complete sequence
 * of one to three bytes with proper continuation bytes (so a genuine U+FEFF looks the same). Overlong forms
 * are decoded: C1 81 is U+0041. `utf8` may be null when `length` is 0. */
UTILITY_API std::size_t UTF8Char_ToUnicode(const char* utf8, unsigned long length, wchar_t& code_point);

#endif
