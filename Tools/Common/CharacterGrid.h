#ifndef UTILITY_TOOLS_CHARACTERGRID_H
#define UTILITY_TOOLS_CHARACTERGRID_H

// The readable form of a double-byte code table, as kept in Data/, and its reader and writer.
//
// A line is a code in hexadecimal whose last digit is 0, a blank, and the characters of the 16 codes from there on in
// UTF-8, '.' where a code has none:
//
//     B0A0 .啊阿埃挨哎唉哀皑癌蔼矮艾碍爱隘
//
// Lines that start with '#' are comments; lines without any character are left out.

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>

namespace tools {

// Double-byte code (lead × 256 + trail) to code point within the Basic Multilingual Plane, or to the low 16 bits of one
// within another plane, which reader and writer are then told.
using CodeToUnicode = std::map<unsigned, char16_t>;

// Throws std::runtime_error with file name and line number on a line that is not of the form above.
CodeToUnicode ReadGrid(const std::filesystem::path& path, unsigned plane = 0);

// Writes `comment` (lines that start with '#', line end included) and the grid.
void WriteGrid(std::ostream& out, std::string_view comment, const CodeToUnicode& codes, unsigned plane = 0);

// Appends a code point of the plane to UTF-8 text.
void AppendUtf8(std::string& text, char16_t code_point, unsigned plane = 0);

// Takes one character off the front of UTF-8 text; throws std::runtime_error when there is none of the plane.
char16_t TakeUtf8(std::string_view& text, unsigned plane = 0);

}  // namespace tools

#endif
