#ifndef UTILITY_STRINGTOOLKIT_JOINING_H
#define UTILITY_STRINGTOOLKIT_JOINING_H

/** @file
 * Joins a list of strings. */

#include <string>
#include <vector>

#include "../UtilityExport.h"

/** Sets `joined` to the items in order, with `separator` behind each item that is neither empty nor the last,
 * and returns `joined.c_str()`, valid until `joined` changes.
 *
 * An empty item adds nothing of its own, so {"a", "", "b"} joined with "," gives "a,b", but {"a", "b", ""}
 * gives "a,b,". An empty list gives the empty string. `separator` must not be null; neither it nor an item
 * may lie in `joined`. One allocation at most; thread-safe. */
UTILITY_API const char* Vector2Str(const std::vector<std::string>& items, const char* separator, std::string& joined);

#endif
