#ifndef UTILITY_FILES_WORDREADER_H
#define UTILITY_FILES_WORDREADER_H

/** @file
 * Reading the first words of a text stream. */

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "../UtilityExport.h"

/** Appends up to `max_words` words of the open text `stream`, from where it stands, to `words`, and returns the
 * size of `words`, which includes those that it held before.
 *
 * Words are what blanks, tabs and line ends separate (see `GetStrVector`), bytes of any encoding. Lines are read
 * whole: the rest of the line of the last word is lost, and so is one line after it if there is one, which is read
 * before the number of words is looked at; a `max_words` of 0 or less thus takes no word and still reads a line. A line
 * of more than 10,239 bytes arrives in pieces of that size, and a word on the border is cut in two; what follows a NUL
 * in a piece is lost. Ends at the end of the file or at a read error.
 *
 *     ReadNWord(stream, 3, words)    // of "a b\tc d\ne f\ng\n": "a", "b", "c"; the next line is "g" */
UTILITY_API std::size_t ReadNWord(std::FILE* stream, int max_words, std::vector<std::string>& words);

#endif
