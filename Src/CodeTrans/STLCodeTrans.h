#ifndef UTILITY_CODETRANS_STLCODETRANS_H
#define UTILITY_CODETRANS_STLCODETRANS_H

/** @file
 * Everything of the unit CodeTrans: this header only gathers the topic headers. */

// clang-format off
// Tables and primitives
#include "Tables/CodeTable.h"
#include "Primitives/Utf8.h"
#include "Primitives/TableRoute.h"
#include "Primitives/LocaleRoute.h"
#include "Primitives/Dump.h"
// Code maps, detection, conversion
#include "CodeMaps/EncodingCodes.h"
#include "CodeMaps/CodeMaps.h"
#include "CodeMaps/Detection.h"
#include "CodeMaps/Conversion.h"
// HTML
#include "Html/HtmlToText.h"
// Normalisation
#include "Normalisation/StringFolding.h"
#include "Normalisation/FileNames.h"
// Last error
#include "LastError/LastErrorMessage.h"
// clang-format on

#endif
