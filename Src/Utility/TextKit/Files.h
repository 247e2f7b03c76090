#ifndef UTILITY_TEXTKIT_FILES_H
#define UTILITY_TEXTKIT_FILES_H

/** @file
 * Files: whole ones, read and written.
 *
 * Each function sets `error` to the system's reason where it fails, else to none, as those of std::filesystem do. Paths
 * are bytes as the system takes them; one that holds a NUL is refused. Interrupted calls go on. Safe from any
 * thread. */

#include <string>
#include <string_view>
#include <system_error>

#include "../UtilityExport.h"
#include "Encodings.h"

namespace textkit {

/** The bytes of a file, from its beginning to its end, NUL bytes included; empty where it fails. The size that the
 * system states is not relied on: pipes, and files of the system that have no size, are read to their end as well.
 *
 *     std::error_code error;
 *     std::string bytes = textkit::ReadFile("page.html", error);
 *     if (error) std::cerr << error.message(); */
UTILITY_API std::string ReadFile(const std::string& path, std::error_code& error);
/** The rest of an open file, pipe or socket. The descriptor stays open.
 *
 *     std::string bytes = textkit::ReadFile(STDIN_FILENO, error); */
UTILITY_API std::string ReadFile(int descriptor, std::error_code& error);

/** The text of a file whatever its encoding, as DetectPage tells it and Decode makes UTF-8 of it.
 *
 *     textkit::Decoded text = textkit::ReadTextFile("notes.txt", error);  // text.text, text.replaced */
UTILITY_API Decoded ReadTextFile(const std::string& path, std::error_code& error, const CodeMaps& maps = {});

/** Makes `bytes` the content of a file, all or nothing: whatever happens, a crash of the machine included, the path
 * leads to the whole old or the whole new content. Returns whether it succeeded.
 *
 * A new file beside the old one takes the bytes, is written out to the disk and renamed; where that fails it is removed
 * and the old one stays. After success the folder is written out as well; an error of that alone is reported although
 * the new content is in place. The new file has the permissions of the old one, and its owner and group where the
 * process may give them; without an old one it has those of any new file. Symbolic links to the file stay and lead to
 * the new content; further hard links keep the old one. The folder must be writable, and a name of 40 bytes must be
 * possible there. What is no regular file (a device, a pipe) is written to directly.
 *
 *     if (!textkit::WriteFile("notes.txt", text, error)) std::cerr << error.message(); */
UTILITY_API bool WriteFile(const std::string& path, std::string_view bytes, std::error_code& error);

}  // namespace textkit

#endif
