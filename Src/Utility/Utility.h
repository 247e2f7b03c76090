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
#include "ChineseText/CharacterClass.h"
#include "ChineseText/CharacterStepping.h"
#include "ChineseText/EnglishText.h"
#include "ChineseText/Gb2312Grid.h"
#include "ChineseText/Sentences.h"
#include "ChineseText/TextTidying.h"
// String toolkit
#include "StringToolkit/CharVector.h"
#include "StringToolkit/Joining.h"
#include "StringToolkit/Replacing.h"
#include "StringToolkit/Splitting.h"
#include "StringToolkit/StrLine.h"
#include "StringToolkit/StrToken.h"
#include "StringToolkit/TokenReader.h"
#include "StringToolkit/Trimming.h"
// Integer sets
#include "IntegerSets/MergeSelect.h"
#include "IntegerSets/SetOperations.h"
// Compact storage
#include "CompactStorage/FilterCells.h"
#include "CompactStorage/Serialisation.h"
// Files
#include "Files/DocumentStore.h"
#include "Files/FileCopying.h"
#include "Files/FileQueries.h"
#include "Files/FileReader.h"
#include "Files/FileWriting.h"
#include "Files/WordReader.h"
// Dates
#include "DateTime/DateFormatting.h"
#include "DateTime/DateParsing.h"
// clang-format on

#endif
