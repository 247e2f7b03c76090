#ifndef UTILITY_CODETRANS_FILENAMES_H
#define UTILITY_CODETRANS_FILENAMES_H

/** @file
 * File names whose encoding, UTF-8 or GBK, is settled by what the file system holds. */

#include <string>

#include "../../Utility/UtilityExport.h"

/** Finds the form of a file name under which a file or directory exists: `name` as it is, or its GBK form.
 *
 * False, with `found` the unchanged name, when `name` exists or neither form does. True, with `found` the
 * name converted from UTF-8 to GBK (UTF8ToANSI: cut at the first character that GBK lacks), when only that
 * exists; with `skip_check` true the GBK form is not looked for but taken.
 *
 * `name` is NUL-terminated, not null, and may be the text of `found` itself. When `name` does not exist, the
 * call sets the process-wide locale to "zh_CN.gbk", with all that UTF8ToANSI says about that; so threads may
 * call it only while nobody sets another locale. What exists may change as soon as the call returns. */
UTILITY_API bool GetAnsiFilename(const char* name, std::string& found, bool skip_check);

/** Fixes the default directory `g_sDefaultDir` and returns its text, valid until the setting next changes.
 *
 * A `path` that is neither null nor empty becomes the setting in the form that GetAnsiFilename finds, the GBK
 * form only if that exists. Otherwise the working directory becomes the setting; it is the empty string when
 * it cannot be read or its path is longer than 999 bytes. `path` may be the text of the setting itself. The
 * setting is written without a lock: not for concurrent use. */
UTILITY_API const char* GetDefaultPath(const char* path);

#endif
