#ifndef UTILITY_UTILITY_H
#define UTILITY_UTILITY_H

/** @file
 * Everything of the unit Utility: this header only gathers the topic headers. */

// clang-format off
// Runtime
#include "Global.h"
#include "Runtime/BufferManager.h"
#include "Runtime/LogWriter.h"
// Chinese text
// String toolkit
// Files
#include "Files/FileReader.h"
// Dates
#include "DateTime/DateFormatting.h"
#include "DateTime/DateParsing.h"
// clang-format on

#endif
