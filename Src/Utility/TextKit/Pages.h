#ifndef UTILITY_TEXTKIT_PAGES_H
#define UTILITY_TEXTKIT_PAGES_H

/** @file
 * Pages: the text of HTML. Functions of UTF-8 text, as Decode gives it; safe from any thread. */

#include <string>
#include <string_view>

#include "../UtilityExport.h"

namespace textkit {

/** The text of a page as a reader sees it.
 *
 * Markup, comments and the content of scripts and styles are gone, references decoded. A block element (paragraph,
 * heading, list item, table row, …) stands on lines of its own; "<br>" ends a line. Elements inside a sentence ("<b>",
 * "<a>") and comments leave nothing; any other, such as a table cell, a blank, and an image the text of its attribute
 * "alt" as well. Runs of blanks, line ends and U+00A0 are one blank, and none at the ends of a line; a line end between
 * two Chinese characters leaves nothing. Within "<pre>" and "<textarea>" blanks and line ends stay, and line ends also
 * in front of the first tag (a text without markup keeps its lines); within "<title>" and "<textarea>" tags are text.
 * At most one empty line in a row, none at the start or the end.
 *
 * Malformed UTF-8 becomes U+FFFD as in Decode, and so does NUL: the result is always well-formed. Malformed markup
 * loses no text: a "<" that starts no tag, and a comment, script or style that is never closed, stay. A quoted
 * attribute may hold ">"; a forgotten quote swallows nothing but its tag. Linear in the length of the page whatever it
 * holds.
 *
 *     textkit::PageText("<p>5 &lt; 6&nbsp;&nbsp;<b>x</b>y<p>z<script async>f()</script>");  // "5 < 6 xy\nz" */
UTILITY_API std::string PageText(std::string_view html);

/** `text` with its character references decoded and nothing else changed (attribute values and feeds need it).
 *
 * All named references of the HTML Standard, the longest name that fits, without a semicolon where the standard allows
 * that; decimal and hexadecimal numbers. As there, 128 to 159 are the characters of Windows-1252, and 0, surrogates and
 * numbers beyond 10FFFF become U+FFFD. What is no reference stays as it is. Bytes outside references are copied unseen.
 *
 *     textkit::DecodeReferences("&copy;2026 &#20013;&#x6587; AT&T &notin;");  // "©2026 中文 AT&T ∉" */
UTILITY_API std::string DecodeReferences(std::string_view text);

}  // namespace textkit

#endif
