#ifndef UTILITY_UTILITYVERSION_H
#define UTILITY_UTILITYVERSION_H

/** @file
 * The version of the library, for the preprocessor. This is the one place that states it: the build, the packages and
 * the documentation read it here.
 *
 * Versions are semantic. The first number is that of the shared library (libutility.so.1) and moves when a host has to
 * be compiled anew; a changed output for an input that used to give another moves the second. */

/** Moves when hosts have to be compiled, or changed, for the new version. */
#define UTILITY_VERSION_MAJOR 1
/** Moves when functions are added or an output changes. */
#define UTILITY_VERSION_MINOR 0
/** Moves with corrections. */
#define UTILITY_VERSION_PATCH 0

/** The three as one number to compare: major × 1,000,000 + minor × 1,000 + patch.
 *
 *     static_assert(UTILITY_VERSION_NUMBER >= 1002000, "needs 1.2.0 or later"); */
#define UTILITY_VERSION_NUMBER (UTILITY_VERSION_MAJOR * 1000000 + UTILITY_VERSION_MINOR * 1000 + UTILITY_VERSION_PATCH)

#endif
