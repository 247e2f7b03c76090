#ifndef PAGETEXT_MARKUP_H
#define PAGETEXT_MARKUP_H

// From HTML to plain text, both UTF-8.

#include <string>
#include <string_view>

namespace pagetext {

// Text of a page: markup, comments, scripts and styles gone, references decoded, block elements on lines of their own,
// runs of blanks squeezed, blank lines at most one in a row. NUL becomes U+FFFD. Linear in the length of the page.
//
// The library's vHtmlToText does the stripping. It is made for pages of its own time, so what it would garble is settled
// before it sees the page: scripts and styles with attributes, tags longer than 500 bytes or with ">" in an attribute,
// references other than "&lt;" and "&gt;", percent signs (it decodes percent escapes anywhere), NUL bytes and a bare
// "nbsp;".
std::string MarkupToText(std::string_view html);

}  // namespace pagetext

#endif
