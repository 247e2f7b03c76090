#ifndef UTILITY_FILES_DOCUMENTSTORE_H
#define UTILITY_FILES_DOCUMENTSTORE_H

/** @file
 * Documents that lie under a base directory by their identifiers. */

#include <string>

#include "../UtilityExport.h"

/** Reads the document `id` into `content` and returns its text, that is `content.c_str()`, or null if
 * there is none.
 *
 * The identifier is cut into groups of three bytes. The last one, of one to three, names the file and the
 * others the directories: below D, the document "1234567" is D/123/456/7.txt, or D/123/456/7.html if that
 * is missing or empty, and "123456" is D/123/456.txt. The content is read as by `ReadFile` into a string,
 * so without NULs and with no conversion.
 *
 * Without either file, or if both are empty, `content` is empty, and besides what `ReadFile` leaves in
 * the log and in the last-error message, "Read file by ID fail!" and the name of the ".html" file are
 * written to the error log as two lines. A null or empty `id` has no file: null, `content` empty, nothing
 * logged. **Nothing else in `id` is checked**, so ".." or "/" in it lead elsewhere. `base_directory` must
 * not be null. */
UTILITY_API char const* GetFileContentById(char const* id, char const* base_directory, std::string& content);

#endif
