#ifndef UTILITY_TEXTKIT_REFERENCES_H
#define UTILITY_TEXTKIT_REFERENCES_H

// One character reference of HTML: "&amp;", "&#20013;", "&#x4E2D;".

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace utility::internal {

struct Reference {
    std::size_t length = 0;  // in bytes of the text, 0 where there is no reference
    char text[8];            // what it stands for, UTF-8
    std::size_t text_length = 0;
    std::string_view Text() const { return {text, text_length}; }
};

// Reads the reference at the start of `text`, which starts with '&'. Names are read in bounded time, numbers to their
// end.
Reference ReadReference(std::string_view text);

// The character that a reference to a number stands for: 128 to 159 are the characters of Windows-1252, and what is no
// character is U+FFFD.
std::uint32_t CodePointOfNumber(std::uint32_t number);

}  // namespace utility::internal

#endif
