#ifndef UTILITY_UTILITYEXPORT_H
#define UTILITY_UTILITYEXPORT_H

/** @file
 * The one macro that marks what the library exports. Everything else is compiled with hidden visibility.
 *
 * `UTILITY_STATIC` is defined by the build for users of the static library, whose names need no marking. Compilers that
 * do not define __GNUC__ are untested. */

#include "UtilityVersion.h"

/** Stands in front of every declaration that the library exports; hosts have no use for it. */
#if defined(UTILITY_STATIC) || !defined(__GNUC__)
#define UTILITY_API
#else
#define UTILITY_API __attribute__((visibility("default")))
#endif

#endif
