#ifndef UTILITY_INTERNAL_HEAPBLOCK_H
#define UTILITY_INTERNAL_HEAPBLOCK_H

// Reading into malloc blocks by a size that stands in the file itself.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace utility::internal {

// A block of the malloc family. Not freed by itself, since it goes to and comes from public fields.
struct HeapBlock {
    char* bytes = nullptr;
    std::size_t size = 0;
};

// False, and the block as it was, if memory runs out.
inline bool Resize(HeapBlock& block, std::size_t size) {
    void* const bytes = std::realloc(block.bytes, size);
    if (bytes == nullptr) return false;
    block = {static_cast<char*>(bytes), size};
    return true;
}

// Reads up to `count` bytes to the front of `block` and sets `arrived` to their number. A block that is
// shorter than `final_size` (`count` and at most 1 MiB more) is enlarged to it, keeping its content, but not
// ahead of the bytes: the file may be damaged, and a size of gigabytes in a file of twenty bytes must not be
// believed. False if the stream ended, or memory did, before the block had that size; it is then no larger
// than 1 MiB or twice what arrived (unless it was).
inline bool ReadGrowing(std::FILE* stream, std::size_t count, std::size_t final_size, HeapBlock& block,
                        std::size_t& arrived) {
    constexpr std::size_t kTrusted = std::size_t{1} << 20;
    arrived = 0;
    while (true) {
        const std::size_t size = std::min(final_size, std::max(kTrusted, 2 * arrived));
        if (block.size < size && !Resize(block, size)) return false;
        const std::size_t wanted = std::min(count, block.size) - arrived;
        const std::size_t got = wanted == 0 ? 0 : std::fread(block.bytes + arrived, 1, wanted, stream);
        arrived += got;
        if (got < wanted || block.size >= final_size) return block.size >= final_size;
    }
}

}  // namespace utility::internal

#endif
