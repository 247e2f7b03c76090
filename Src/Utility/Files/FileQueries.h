#ifndef UTILITY_FILES_FILEQUERIES_H
#define UTILITY_FILES_FILEQUERIES_H

/** @file
 * Small questions about files: how many lines, how many bytes, English or not. */

#include <cstddef>
#include <cstdio>

#include "../UtilityExport.h"

/** Number of lines from the beginning of the open, readable `stream`, which is left at its beginning again.
 *
 * A last line without a line feed counts, an empty stream has 0 lines. **A line of more than 999 bytes, its line feed
 * included, counts once for every 999 bytes begun.** Ends at the end of the file or at a read error, after which
 * `ferror(stream)` is true. A stream that cannot be positioned is counted from where it stands. */
UTILITY_API std::size_t GetFileLinesCount(std::FILE* stream);

/** Size in bytes of the file `path`, or -1 if it cannot be queried. Not only of regular files: a directory has the size
 * that the file system tells. */
UTILITY_API long get_file_size(char const* path);

/** Whether the content of the file `path` is English, as `IsEnglishText` judges the text up to its first NUL.
 *
 * Reads the file whole. False if it cannot be opened (which is noted in the log), cannot be read or is empty. */
UTILITY_API bool IsEnglishTextFile(char const* path);

#endif
