#ifndef UTILITY_TEXTKIT_MAIL_H
#define UTILITY_TEXTKIT_MAIL_H

/** @file
 * Mail: addresses with their display names, and the encoded words of header lines. Functions of UTF-8 text; linear,
 * without state, safe from any thread. */

#include <string>
#include <string_view>
#include <vector>

#include "../UtilityExport.h"
#include "Encodings.h"

namespace textkit {

/** One address and who it belongs to. */
struct EmailAddress {
    std::string address; /**< "user@domain", the domain in lower case */
    std::string name;    /**< display name, decoded, unquoted, blanks and line ends squeezed; may be empty */
};

/** The e-mail addresses of header lines or of running text, in text order; repeated ones stay.
 *
 * The user part is made of ASCII letters, digits and "._%+-'", and neither starts nor ends with a dot or an apostrophe.
 * The domain is two or more labels of ASCII letters, digits and "-" between single dots, the last without digits only;
 * within "<…>" one label is enough. What does not fit is no address.
 *
 * An address within "<…>" has a name where one stands in front: a quoted string, with its escapes undone, or all that
 * follows the address before, a line end without a blank behind it, or one of ",;:" and "，；：。、". An address without
 * "<…>" takes the comment "(…)" that follows. Encoded words are decoded as by DecodeWords.
 *
 *     textkit::EmailAddresses("收件人：张三 <zs@Example.com>, \"Li, Lei\" <li.lei@example.org>");
 *     // {"zs@example.com", "张三"}, {"li.lei@example.org", "Li, Lei"} */
UTILITY_API std::vector<EmailAddress> EmailAddresses(std::string_view text, const CodeMaps& maps = {});

/** A header line with its encoded words ("=?gb2312?B?1tC5+g==?=", RFC 2047) decoded to UTF-8; all else stays.
 *
 * Labels are those of EncodingFromLabel, "us-ascii", "iso-8859-1" and "windows-1252" (all three read as Windows-1252),
 * a language behind "*" ignored. Neighbours of the same label are decoded together, so that a character cut in two is
 * whole again; the blanks and line ends between two decoded words go. A word with another label, or that is none, stays
 * as it is. Malformed bytes become U+FFFD.
 *
 *     textkit::DecodeWords("Re: =?GB2312?B?1tA=?= =?gb2312?Q?=B9=FA?=");  // "Re: 中国" */
UTILITY_API std::string DecodeWords(std::string_view header, const CodeMaps& maps = {});

}  // namespace textkit

#endif
