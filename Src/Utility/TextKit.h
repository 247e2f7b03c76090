#ifndef UTILITY_TEXTKIT_H
#define UTILITY_TEXTKIT_H

/** @file
 * The interface for new hosts: UTF-8 in, UTF-8 out, nothing to size, nothing global.
 *
 * Texts come as views and go as owned strings or as views into what came. No function reads or writes process-wide
 * state or a locale; all are safe from any thread. Nothing throws but std::bad_alloc. */

// clang-format off
#include "TextKit/ChineseText.h"
#include "TextKit/Dates.h"
#include "TextKit/Dictionary.h"
#include "TextKit/Encodings.h"
#include "TextKit/Files.h"
#include "TextKit/Items.h"
#include "TextKit/Mail.h"
#include "TextKit/Names.h"
#include "TextKit/Numbers.h"
#include "TextKit/Pages.h"
#include "TextKit/Pieces.h"
// clang-format on

#endif
