#ifndef UTILITY_INTERNAL_FOLDINGRUNS_H
#define UTILITY_INTERNAL_FOLDINGRUNS_H

// Double-byte text rewritten in place, where characters become shorter or stay: several characters at a time.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "CodeTrans/Tables/PairTable.h"
#include "Internal/DoubleByteRuns.h"

namespace utility::internal {

// Writes each pair as it is, or as the byte that a table has for it.
class PairFolder {
public:
    explicit PairFolder(const PairTable<char>& folded) : folded_(folded) {}

    bool HasRoom() const { return true; }
    unsigned Four(std::uint64_t indexes) {
        char* place = out;
        for (unsigned i = 0; i < 4; ++i) place = ends_[i] = Write(indexes >> 16 * i & 0xFFFF, place);
        return 0;
    }
    bool AllFour(std::uint64_t indexes) {
        Four(indexes);
        Took(4);
        return true;
    }
    void Took(unsigned pairs) {
        if (pairs > 0) out = ends_[pairs - 1];
    }
    char* Pair(const char* pair, char* place) const {
        const char lead = pair[0], trail = pair[1];
        // A branch, as most pairs stay: the next place need not wait for the table.
        if (const char folded = folded_[PairIndex(ToByte(lead), ToByte(trail))]; folded != '\0') {
            *place++ = folded;
        } else {
            *place++ = lead;
            *place++ = trail;
        }
        return place;
    }

    char* out = nullptr;

private:
    char* Write(std::size_t index, char* place) const {
        const auto pair = static_cast<unsigned>(index >> 7 << 8 | (index & 0x7F) | 0x80);
        const unsigned folded = ToByte(folded_[index]);
        StoreWord(static_cast<std::uint16_t>(folded != 0 ? folded : pair), place);
        return place + (folded != 0 ? 1 : 2);
    }

    const PairTable<char>& folded_;
    char* ends_[4];  // of the pairs last written
};

// The same, with a byte in the place of each single one.
class CharacterFolder : public PairFolder {
public:
    CharacterFolder(const PairTable<char>& folded, const std::array<char, 256>& singles)
        : PairFolder(folded), singles_(singles) {}

    void Ascii8(const char* bytes) {
        for (unsigned i = 0; i < 8; ++i) out[i] = singles_[ToByte(bytes[i])];
    }
    void TookAscii(unsigned count) { out += count; }
    char* Single(const char* byte, char* place) const {
        *place = singles_[ToByte(*byte)];
        return place + 1;
    }

private:
    const std::array<char, 256>& singles_;
};

// Writes what is too little for a run, which may be the text that is written to.
template <typename Folder>
char* FoldRest(const char* text, const char* end, const Folder& folder, char* out) {
    while (text != end) {
        if (!IsAscii(ToByte(*text)) && end - text > 1) {
            out = folder.Pair(text, out);
            text += 2;
        } else {
            out = folder.Single(text++, out);
        }
    }
    return out;
}

// Rewrites the text and returns the end of what it wrote. The folder writes no more than it reads, has what
// ReadDoubleByteRuns asks for, and takes with Pair(pair, place) and Single(byte, place) what is too little for a run; Single
// gets a lead byte at the end of the text, too. Of single bytes the one behind may be looked at: the next one of the text, or
// the NUL that ends it, without which no folder may look.
//
// What a turn writes in vain would destroy text that is still to be read. So the text is read from a copy, a block at a time;
// behind the place where a run ends, the copy holds all that the last turn may have written to.
template <typename Folder>
char* FoldInPlace(char* text, std::size_t length, Folder&& folder) {
    constexpr std::size_t kBlock = 1024, kMostLeft = 24;
    if (length < kMostLeft) return FoldRest(text, text + length, folder, text);
    char block[kMostLeft + kBlock + 1];
    std::size_t held = 0;
    folder.out = text;
    for (const char *source = text, *const end = text + length;;) {
        const std::size_t taken = std::min(kBlock, static_cast<std::size_t>(end - source));
        std::memcpy(block + held, source, taken);
        source += taken;
        held += taken;
        block[held] = source != end ? *source : '\0';
        const char* const block_end = block + held;
        const char* pos = ReadDoubleByteRuns(block, block_end, folder, [](const char*) { return false; });
        if (source == end) return FoldRest(pos, block_end, folder, folder.out);
        held = static_cast<std::size_t>(block_end - pos);
        std::memmove(block, pos, held);
    }
}

}  // namespace utility::internal

#endif
