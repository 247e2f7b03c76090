#ifndef UTILITY_FILES_FILEWRITING_H
#define UTILITY_FILES_FILEWRITING_H

/** @file
 * Writing a text to a file, byte for byte and as far as its first NUL.
 *
 * Both functions return false if `path` is null or empty or the file cannot be opened (errno says why).
 * **Otherwise they return true, even if the disk is full**: whoever needs to know looks at the file.
 * Nothing is logged; the file is closed in any case. */

#include <string>

#include "../UtilityExport.h"

/** Replaces the content of the file by `text`, or creates the file. */
UTILITY_API bool gfn_bWriteFile(char const* path, const std::string& text);

/** Appends `text` to the file, or creates the file. */
UTILITY_API bool gfn_bAddFile(char const* path, const std::string& text);

#endif
