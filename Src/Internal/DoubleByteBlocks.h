#ifndef UTILITY_INTERNAL_DOUBLEBYTEBLOCKS_H
#define UTILITY_INTERNAL_DOUBLEBYTEBLOCKS_H

// GBK or Big5 by blocks of 64 bytes, whose characters are told apart all at once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Internal/Blocks64.h"
#include "Internal/Words.h"

namespace utility::internal {

// Which of 64 bytes are lead bytes, given those with the top bit and that a character starts at the first. Behind an
// ASCII byte, and behind a trail byte without the top bit, the next byte that has it is a lead: so in each run of such
// bytes every other one is, from the first on. An addition carries through the runs that start at even places and marks
// them.
constexpr std::uint64_t LeadBytes(std::uint64_t top_bits) {
    constexpr std::uint64_t kEven = 0x5555555555555555u;
    const std::uint64_t run_starts = top_bits & ~(top_bits << 1);
    const std::uint64_t even_runs = top_bits & ~(top_bits + (run_starts & kEven));
    return (even_runs & kEven) | (top_bits & ~even_runs & ~kEven);
}

// Reads `text`, in which no byte is zero, until `end`, or the writer has no more room, or a block of up to 64 bytes
// holds a pair that it does not know; returns the place of the first byte not read.
//
// Text alternates between pairs and ASCII, and a wrong guess which of them comes next costs the processor as much as
// five characters. So here only the number of characters in a block is for it to guess.
//
// The writer has Character(bytes), which takes the one at the start of two bytes and returns whether it is known, and
// Ascii64(bytes), of which TookAscii(n) keeps the first n. A copy of the writer takes each block, so that nothing of
// one with an unknown pair is kept. Not inlined, so that a caller's buffer of known size costs no checks of each store.
template <typename Writer>
[[gnu::noinline]] const char* ReadDoubleByteBlocks(const char* text, const char* end, Writer& writer) {
    constexpr std::uint64_t kAllPairs = 0x5555555555555555u;
    Writer trial = writer;
    while (text != end && trial.HasRoom()) {
        const auto length = static_cast<unsigned>(std::min(end - text, std::ptrdiff_t{64}));
        char last[64 + 1];  // a copy with zeros behind it, so that no more than the text is read
        const char* block = text;
        if (end - text <= 64) {
            std::memset(last, 0, sizeof last);
            std::memcpy(last, text, length);
            block = last;
        }
        const std::uint64_t top_bits = TopBits64(block);
        if (top_bits == 0) {
            trial.Ascii64(block);
            trial.TookAscii(length);
            text += length;
            writer = trial;
            continue;
        }
        const std::uint64_t leads = LeadBytes(top_bits);
        unsigned unknown = 0;
        if (leads == kAllPairs) {
#pragma GCC unroll 8
            for (unsigned i = 0; i < 64; i += 2) unknown += trial.Character(block + i) ? 0 : 1;
        } else {
            std::uint64_t starts = ~(leads << 1) & ~std::uint64_t{0} >> (64 - length);
            for (; starts != 0; starts &= starts - 1) unknown += trial.Character(block + LowestBit(starts)) ? 0 : 1;
        }
        if (unknown != 0) break;
        // A pair that the end of the text cuts is not known.
        text += length + (leads >> 63);
        writer = trial;
    }
    return text;
}

}  // namespace utility::internal

#endif
