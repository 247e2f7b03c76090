#ifndef UTILITY_CODETRANS_LOADEDTABLES_H
#define UTILITY_CODETRANS_LOADEDTABLES_H

// The tables of a data file, and those of the file that CodeTrans_Initialize loaded last. Only CodeMaps.cpp writes the
// latter.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "CodeTrans/CodeMaps/DataFile.h"
#include "CodeTrans/CodeMaps/ScanForm.h"
#include "CodeTrans/Tables/PairTable.h"

namespace utility::internal {

// All null unless a file is loaded; then none is, even if the automaton has no record.
struct LoadedTables {
    // The maps with a row for every trail byte, in the order of PairIndex; those below 40 are copies of the file's row
    // 0.
    std::unique_ptr<PairTable<std::uint16_t>> gbk_to_unicode, big5_to_unicode;
    std::unique_ptr<_tTrieNode[]> states;  // nFail leads to the root from each of them; nBase may lead anywhere
    std::size_t state_count = 0;
    std::unique_ptr<const ScanForm> scan_form;  // made of the states; null where there is none
};
extern LoadedTables g_tables;

// Reads the file at `path` into `tables`. Returns 0 or one of the negative codes of CodeTrans_Initialize; `tables` may
// then be filled in part.
int LoadTables(const char* path, LoadedTables& tables);

}  // namespace utility::internal

#endif
