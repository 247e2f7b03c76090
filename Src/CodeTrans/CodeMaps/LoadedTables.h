#ifndef UTILITY_CODETRANS_LOADEDTABLES_H
#define UTILITY_CODETRANS_LOADEDTABLES_H

// The tables of a data file, and those of the file that CodeTrans_Initialize loaded last. Only CodeMaps.cpp writes the
// latter.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "CodeTrans/CodeMaps/DataFile.h"

namespace utility::internal {

// All null unless a file is loaded; then none is, even if the automaton has no record.
struct LoadedTables {
    std::unique_ptr<std::uint16_t[]> gbk_to_unicode;   // kMapEntries, in the order of MapIndex
    std::unique_ptr<std::uint16_t[]> big5_to_unicode;  // likewise
    std::unique_ptr<_tTrieNode[]> states;  // nFail leads to the root from each of them; nBase may lead anywhere
    std::size_t state_count = 0;
};
extern LoadedTables g_tables;

// Reads the file at `path` into `tables`. Returns 0 or one of the negative codes of CodeTrans_Initialize; `tables` may then
// be filled in part.
int LoadTables(const char* path, LoadedTables& tables);

}  // namespace utility::internal

#endif
