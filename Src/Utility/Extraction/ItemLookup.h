#ifndef UTILITY_EXTRACTION_ITEMLOOKUP_H
#define UTILITY_EXTRACTION_ITEMLOOKUP_H

/** @file
 * Single values read out of XML and JSON text by name, without parsing it.
 *
 * Each lookup searches for one fixed run of bytes made of the name, takes its first occurrence, and gives the
 * bytes from there to the next closing delimiter as they stand: no entity, escape or character reference is
 * decoded, no blank is trimmed, nesting is not followed. Case counts, and a blank more or a single quote in
 * the text makes no match. Texts may be in any encoding that keeps ASCII, such as UTF-8; in GBK none of the
 * delimiters can be a trail byte.
 *
 * Texts and names are NUL-terminated. Names may have any length and hold any byte. No name may be null; a
 * null text is one in which nothing is found. Neither text nor name may lie in the output.
 *
 * Where nothing is found, the result is null, false or 0 and the value empty (a null text leaves a string as
 * it was). Where the closing delimiter is missing, the value is the rest of the text, **but the result is
 * null all the same**: only the pointer tells a whole value. Pointers lead into the caller's text, so that a
 * scan can go on behind the value.
 *
 * Linear in text and name, nothing is searched behind the closing delimiter, and memory is taken for the
 * value and for long names only. No state is kept, so any thread may call at any time. */

#include <string>

#include "../UtilityExport.h"

/** Sets `value` to that of the attribute `name`, what stands between `name="` and the next double quote, and
 * returns the position of that quote.
 *
 * Attributes that merely end in the name match too. A non-null `limit`, a position in the text, turns down an
 * occurrence that starts behind it, and nothing is searched beyond it.
 *
 *     GetXMLPropertyValue("<e pid=\"7\">", "id", value, nullptr)     // 7 */
UTILITY_API const char* GetXMLPropertyValue(const char* text, const char* name, std::string& value, const char* limit);

/** Sets `value` to the content of the element `name`, what stands between `<name>` and the next `</name>`,
 * and returns the position of that end tag.
 *
 * A start tag with attributes or blanks and an empty-element tag are not found. Inside an element of the same
 * name, the inner end tag ends the value.
 *
 *     GetXMLItemValue("<a><b>1</b></a>", "a", value)     // <b>1</b> */
UTILITY_API const char* GetXMLItemValue(const char* text, const char* name, std::string& value);

/** The same into `buffer`, with a NUL behind it. True if the start tag is found, **even if the end tag is
 * missing**.
 *
 * The buffer must hold the value and its NUL: strlen(text) - strlen(name) - 1 bytes always suffice where the
 * tag is found, and one byte where it is not (also for a null text). */
UTILITY_API bool GetXMLItemValue(const char* text, const char* name, char* buffer);

/** The number that the content of the element `name` starts with, read as by atoi; 0 if there is none.
 *
 *     GetXMLItemInt("<n> 42</n>", "n") == 42 */
UTILITY_API int GetXMLItemInt(const char* text, const char* name);

/** Sets `value` to what stands between the next two double quotes behind `"key":`, whatever lies in front of
 * them, and returns the position of the second one.
 *
 * So only string values are read: for any other the result is the next string in the text. A backslash does
 * not protect the quote behind it, and a blank in front of the colon makes no match.
 *
 *     GetJsonItemValue(R"({"n": 5, "m": "x"})", "m", value)     // x
 *     GetJsonItemValue(R"({"n": 5, "m": "x"})", "n", value)     // m */
UTILITY_API const char* GetJsonItemValue(const char* text, const char* key, std::string& value);

/** The number that the value of `key` starts with, read as by atoi; 0 if there is none. It must be written as
 * a string, in quotes.
 *
 *     GetJsonItemInt(R"({"n":"12"})", "n") == 12 */
UTILITY_API int GetJsonItemInt(const char* text, const char* key);

#endif
