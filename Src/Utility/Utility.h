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
// Files
#include "Files/FileReader.h"
// clang-format on

#endif
