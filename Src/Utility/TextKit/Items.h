#ifndef UTILITY_TEXTKIT_ITEMS_H
#define UTILITY_TEXTKIT_ITEMS_H

/** @file
 * Items: single values out of XML and JSON text, for a look into a document that is not worth a parser. The first match
 * in the order of the text counts, at any depth. Functions of UTF-8 text; one pass, no recursion, without state, safe
 * from any thread. In malformed text they find what they can and end early. */

#include <optional>
#include <string>
#include <string_view>

#include "../UtilityExport.h"

namespace textkit {

/** The content of the first element `name`, markup and all, as a view into `xml`; empty for "<name/>", none where there
 * is no such element or its end is missing. Elements of the same name inside it are followed. Comments, CDATA sections
 * and instructions are no elements. Names are compared exactly, prefixes included. DecodeReferences makes text of it.
 *
 *     textkit::XmlItem("<r><!-- <a>0</a> --><a id='1'>x<a>y</a></a></r>", "a");  // "x<a>y</a>" */
UTILITY_API std::optional<std::string_view> XmlItem(std::string_view xml, std::string_view name);

/** The value of `attribute` in the first element `name` that has it, between its quotes, as a view into `xml`.
 *
 *     textkit::XmlAttribute("<e pid=\"7\" id = '8'/>", "e", "id");  // "8" */
UTILITY_API std::optional<std::string_view> XmlAttribute(std::string_view xml, std::string_view name,
                                                         std::string_view attribute);

/** The value of the first member named `key`. A string comes decoded, its escapes undone (half a surrogate pair is
 * U+FFFD); numbers, true, false, null, arrays and objects come as they are written, so that a call can look into an
 * object that another gave.
 *
 *     textkit::JsonItem(R"({"text": "n", "n" : 5, "s": "\u4e2d\"文"})", "n");  // "5"
 *     textkit::JsonItem(R"({"text": "n", "n" : 5, "s": "\u4e2d\"文"})", "s");  // "中\"文" */
UTILITY_API std::optional<std::string> JsonItem(std::string_view json, std::string_view key);

}  // namespace textkit

#endif
