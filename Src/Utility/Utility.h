#ifndef UTILITY_UTILITY_H
#define UTILITY_UTILITY_H

/** @file
 * Everything of the unit Utility: this header only gathers the topic headers. */

// clang-format off
// Runtime
#include "Global.h"
#include "Runtime/BufferManager.h"
#include "Runtime/ByteHelpers.h"
#include "Runtime/CommandRunner.h"
#include "Runtime/LogWriter.h"
// Chinese text
#include "ChineseText/CharacterClass.h"
#include "ChineseText/CharacterLists.h"
#include "ChineseText/CharacterStepping.h"
#include "ChineseText/DateExpressions.h"
#include "ChineseText/DictionaryForms.h"
#include "ChineseText/EnglishText.h"
#include "ChineseText/ForeignNames.h"
#include "ChineseText/Gb2312Grid.h"
#include "ChineseText/NumberExpressions.h"
#include "ChineseText/PlaceSuffixes.h"
#include "ChineseText/Sentences.h"
#include "ChineseText/TextTidying.h"
#include "ChineseText/WordStandard.h"
// String toolkit
#include "StringToolkit/BinarySearch.h"
#include "StringToolkit/CharVector.h"
#include "StringToolkit/Hashes.h"
#include "StringToolkit/Joining.h"
#include "StringToolkit/Locate.h"
#include "StringToolkit/NumericOrder.h"
#include "StringToolkit/PrefixSearch.h"
#include "StringToolkit/Replacing.h"
#include "StringToolkit/Similarity.h"
#include "StringToolkit/Splitting.h"
#include "StringToolkit/StrLine.h"
#include "StringToolkit/StrToken.h"
#include "StringToolkit/TokenReader.h"
#include "StringToolkit/Trimming.h"
#include "StringToolkit/WordPosition.h"
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
// Paths
#include "Paths/PathNames.h"
// Dates
#include "DateTime/DateFormatting.h"
#include "DateTime/DateParsing.h"
// Extraction
#include "Extraction/EmailExtraction.h"
#include "Extraction/ItemLookup.h"
// clang-format on

#endif
