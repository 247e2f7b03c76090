#ifndef UTILITY_MEMORYEXT_H
#define UTILITY_MEMORYEXT_H

/** @file
 * The pools for many small lists and strings: this header only gathers the topic headers. */

#include "CompactStorage/StaticStr.h"
#include "IntegerSets/IntArray.h"

#endif
