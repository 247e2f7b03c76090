#ifndef PAGETEXT_REFERENCES_H
#define PAGETEXT_REFERENCES_H

// Character references of HTML: "&amp;", "&#20013;", "&#x4E2D;".

#include <cstddef>
#include <string>
#include <string_view>

namespace pagetext {

// Reads the reference at the start of `text` (which starts with '&') and appends what it stands for, in UTF-8, to `out`.
// Returns the length in bytes of the reference, 0 where there is none (nothing is appended then). Follows the HTML
// Standard: names may lack their semicolon where they always could, the numbers 128 to 159 stand for the characters of
// Windows-1252, and NUL, surrogates and numbers beyond U+10FFFF become U+FFFD.
std::size_t AppendReference(std::string_view text, std::string& out);

}  // namespace pagetext

#endif
