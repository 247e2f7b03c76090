#include "CodeTrans/CodeMaps/CodeMaps.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>
#include <new>
#include <utility>

#include "CodeTrans/CodeMaps/LoadedTables.h"

namespace utility::internal {

LoadedTables g_tables;

namespace {

enum LoadResult : int {
    kLoaded = 0,
    kNoFileOrShortGbkMap = -1,
    kShortBig5Map = -2,
    kNoRecordCount = -3,
    kShortRecords = -4,
    kNoMemory = -127,
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Reads `count` little-endian integers in one block and puts them into the machine's order. On a little-endian machine
// the compiler makes nothing of the loop.
template <typename Integer>
bool ReadBlock(std::FILE* file, Integer* integers, std::size_t count) {
    if (std::fread(integers, sizeof(Integer), count, file) != count) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(integers + i);
        std::uint32_t value = 0;
        for (std::size_t k = 0; k < sizeof(Integer); ++k) value |= std::uint32_t{bytes[k]} << (8 * k);
        integers[i] = static_cast<Integer>(value);
    }
    return true;
}

// The map's rows are those of the trail bytes from 40 up; the first of them serves the lower ones, too.
bool ReadMap(std::FILE* file, PairTable<std::uint16_t>& map) {
    static_assert(kMapColumns == kPairLeads);
    constexpr std::size_t kFirstEntry = kPairs - kMapEntries;
    if (!ReadBlock(file, map.data() + kFirstEntry, kMapEntries)) return false;
    for (std::size_t entry = 0; entry < kFirstEntry; ++entry) map[entry] = map[kFirstEntry + entry % kMapColumns];
    return true;
}

// Whether a file that can tell its size has `bytes` more.
bool MayHold(std::FILE* file, std::uint64_t bytes) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return true;
    const long position = std::ftell(file);
    if (position < 0) return true;
    return status.st_size >= position && static_cast<std::uint64_t>(status.st_size - position) >= bytes;
}

LoadResult ReadStates(std::FILE* file, LoadedTables& tables) {
    std::uint32_t count = 0;
    if (!ReadBlock(file, &count, 1)) return kNoRecordCount;
    if (!MayHold(file, kRecordBytes * std::uint64_t{count})) return kShortRecords;
    constexpr std::size_t kFields = kRecordBytes / sizeof(std::int32_t);
    tables.states.reset(new (std::nothrow) _tTrieNode[count]);
    if (!tables.states) return kNoMemory;
    if (!ReadBlock(file, reinterpret_cast<std::int32_t*>(tables.states.get()), kFields * count)) return kShortRecords;
    tables.state_count = count;
    return kLoaded;
}

LoadResult ReadTables(const char* path, LoadedTables& tables) {
    const File file(path != nullptr ? std::fopen(path, "rb") : nullptr);
    if (!file) return kNoFileOrShortGbkMap;
    tables.gbk_to_unicode.reset(new (std::nothrow) PairTable<std::uint16_t>);
    tables.big5_to_unicode.reset(new (std::nothrow) PairTable<std::uint16_t>);
    if (!tables.gbk_to_unicode || !tables.big5_to_unicode) return kNoMemory;
    if (!ReadMap(file.get(), *tables.gbk_to_unicode)) return kNoFileOrShortGbkMap;
    if (!ReadMap(file.get(), *tables.big5_to_unicode)) return kShortBig5Map;
    return ReadStates(file.get(), tables);
}

// Lets every failure link that leads out of the table or runs in a circle lead to the root, so that each chain ends
// there and detection need not look out for them. Each state is walked over once: a walk stops at states of earlier
// ones.
bool RepairFailureLinks(_tTrieNode* states, std::size_t count) {
    if (count == 0) return true;
    // The number of the walk that first met a state, from 1 on.
    const std::unique_ptr<std::uint32_t[]> walks(new (std::nothrow) std::uint32_t[count]());
    if (!walks) return false;
    for (std::size_t i = 0; i < count; ++i)
        if (states[i].nFail < 0 || static_cast<std::size_t>(states[i].nFail) >= count) states[i].nFail = 0;
    states[0].nFail = 0;  // never followed, so no part of a circle
    for (std::size_t start = 1; start < count; ++start) {
        const auto walk = static_cast<std::uint32_t>(start);
        std::size_t state = start;
        for (; state != 0 && walks[state] == 0; state = static_cast<std::size_t>(states[state].nFail))
            walks[state] = walk;
        if (state == 0 || walks[state] != walk) continue;
        // The walk ran into itself: from here on once around.
        while (states[state].nFail != 0) {
            const auto next = static_cast<std::size_t>(states[state].nFail);
            states[state].nFail = 0;
            state = next;
        }
    }
    return true;
}

}  // namespace

int LoadTables(const char* path, LoadedTables& tables) {
    const LoadResult result = ReadTables(path, tables);
    if (result != kLoaded) return result;
    if (!RepairFailureLinks(tables.states.get(), tables.state_count)) return kNoMemory;
    try {
        if (tables.state_count > 0 && tables.state_count <= ScanForm::kMostStates)
            tables.scan_form = std::make_unique<const ScanForm>(tables.states.get(), tables.state_count);
    } catch (const std::bad_alloc&) {
        return kNoMemory;
    }
    return kLoaded;
}

}  // namespace utility::internal

int CodeTrans_Initialize(const char* path) {
    using namespace utility::internal;
    CodeTrans_Destroy();
    LoadedTables tables;
    const int result = LoadTables(path, tables);
    if (result == kLoaded) g_tables = std::move(tables);
    return result;
}

void CodeTrans_Destroy() {
    utility::internal::g_tables = {};
}
