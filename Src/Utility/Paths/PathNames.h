#ifndef UTILITY_PATHS_PATHNAMES_H
#define UTILITY_PATHS_PATHNAMES_H

/** @file
 * Joining paths, taking them apart, and making the directories of one.
 *
 * Both "/" and "\" separate, and the last separator of a path is the one nearer to its end, of either kind.
 * Paths are NUL-terminated bytes of any encoding and are compared and cut byte by byte: in GBK, a character
 * whose trail byte is 5C counts as ending in a separator (none has the trail byte 2E or 2F). No path may be
 * null, unless it says so.
 *
 * Output buffers are the caller's and must hold what is written, the NUL included; each comment gives the
 * size. **A text of 4096 bytes or more is refused: the buffer is then the empty string.** So 4096 bytes
 * suffice for every buffer. Outputs must not overlap the inputs or each other, but GetFilename and
 * gfn_GetFilePath may work in place.
 *
 * Nothing reports an error. Only gfn_GetFilePath touches the file system, and GetRelevatePath asks for the
 * current directory; the others work on text alone, in one pass, and any thread may call them at any time. */

#include <string>
#include <vector>

#include "../UtilityExport.h"

/** Writes "directory/file_name" to `full_name`, or `file_name` alone where `directory` is null or empty.
 *
 * Always one separator is added, so a directory that ends in one gives two in a row. Needs
 * strlen(directory) + strlen(file_name) + 2 bytes. */
UTILITY_API void GetFullFileName(char* full_name, const char* directory, const char* file_name);

/** Writes "directory/file_name" to `path` and returns it. An empty directory gives "/file_name". Needs
 * strlen(directory) + strlen(file_name) + 2 bytes. */
UTILITY_API char* GetAbsolutePath(const char* directory, const char* file_name, char* path);

/** Splits `path` into `directory`, `file_name` and `extension`, without the separators and the dot between
 * them.
 *
 * The extension starts behind the last dot of the whole path, even where that stands in the name of a
 * directory: "a.b/c" gives ".", "a" and "b/c". Without a separator in front of the dot, the directory is ".";
 * separators in a row in front of the file name all go; so the directory of "/x.txt" is empty.
 *
 *     GetPathFile("/home/u/x.tar.gz", directory, file_name, extension)     // "/home/u", "x.tar", "gz" */
UTILITY_API void GetPathFile(const char* path, std::string& directory, std::string& file_name, std::string& extension);

/** Splits `path` at its last separator into `directory` and `file_name`, and returns the latter.
 *
 * Without a separator, the directory is the current one of the process, or empty if that takes more than 999
 * bytes. `directory` needs one byte for each byte in front of the separator and one more, or 1000 without a
 * separator; `file_name` one for each byte behind it and one more. Each is refused alone. */
UTILITY_API char* GetRelevatePath(const char* path, char* directory, char* file_name);

/** Writes what stands between the last separator of `path`, or its start, and the first dot behind that to
 * `name`, and returns it: "report" for "/p.q/report.final.txt". Needs one byte for each byte of that and one
 * more; `name` may be `path` itself. */
UTILITY_API char* GetFilename(const char* path, char* name);

/** `path` up to its last separator, which is included: "a/b/" for "a/b/c.txt". Empty if there is none. */
UTILITY_API std::string getFilePath(const char* path);

/** Whether `extension` starts with one of `extensions`, letter case aside (as strncasecmp sees it in the
 * current locale).
 *
 * So "htm" in the list accepts "html", and an empty entry accepts everything. With or without the dot, as
 * long as both sides do the same. */
UTILITY_API bool IsExtIncluded(const char* extension, const std::vector<std::string>& extensions);

/** Sets `full_path` to `base_directory` followed directly by `relative_path` (no separator is put in
 * between), makes the directories of `relative_path` below `base_directory`, and returns the characters of
 * `full_path`.
 *
 * **Changes the current directory** of the process: first to `base_directory`, then to each directory of the
 * relative path, what stands in front of its last separator, in turn. Each is made (mode 0777 less the umask)
 * if it is not there; empty ones are passed over, so a separator in front changes nothing. What cannot be
 * made or entered is passed over as well, and **the rest is then made where the process stands**. A caller
 * that needs the old directory goes back itself; meanwhile no other thread may use a relative path.
 *
 * Both paths may lie in `full_path`. The result is valid until that is changed. */
UTILITY_API const char* gfn_GetFilePath(const char* base_directory, const char* relative_path, std::string& full_path);

#endif
