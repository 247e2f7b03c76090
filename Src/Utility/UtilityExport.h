#ifndef UTILITY_UTILITYEXPORT_H
#define UTILITY_UTILITYEXPORT_H

/** @file
 * The one macro that marks what the library exports. Everything else is compiled with hidden visibility.
 *
 * `UTILITY_STATIC` is defined by the build for users of the static library, whose names need no marking. */

#if defined(UTILITY_STATIC) || !defined(__GNUC__)
#define UTILITY_API
#else
#define UTILITY_API __attribute__((visibility("default")))
#endif

#endif
