#ifndef UTILITY_INTERNAL_DOUBLEBYTERUNS_H
#define UTILITY_INTERNAL_DOUBLEBYTERUNS_H

// The loop of everything that reads GBK or Big5: several characters at a time where they are alike.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "CodeTrans/Tables/PairTable.h"
#include "Internal/Words.h"

namespace utility::internal {

// Reads `text` until fewer than 24 bytes are left, or the writer has no more room, or `read_other` says false; returns the
// place of the first byte not read.
//
// Text alternates between pairs and ASCII, and a wrong guess which of them comes next costs the processor as much as five
// characters. So each turn decodes four pairs, whatever the eight bytes are, and steps over as many as there were: four in
// the usual case; otherwise over those in front and then, decoded the same way, over up to eight ASCII bytes. Where there
// is neither, read_other(text) is to step over what stands there: a pair that the table does not know.
//
// The writer has `Four(indexes)`, which looks four pairs up and gives a word of four bytes, the first pair's lowest, with the
// lowest bit set of each whose pair the table does not know; of the pairs in front of those Took(n) keeps the first n; and
// `Ascii8(bytes)`, of which TookAscii(n) keeps the first n. Both write in full, also what is not kept; but the 24 bytes of a
// turn give 12 characters or more, those among them. `AllFour(indexes)` keeps four pairs, or none and says so: it is asked
// first where there are four, and may look for the usual ones only.
template <typename Writer, typename ReadOther>
inline const char* ReadDoubleByteRuns(const char* text, const char* end, Writer& writer, ReadOther read_other) {
    while (end - text >= 24 && writer.HasRoom()) {
        const auto word = LoadWord<std::uint64_t>(text);
        const std::uint64_t no_leads = ~word & kLeadBits;
        if (no_leads == 0 && writer.AllFour(PairIndexes(word))) {
            text += 8;
            continue;
        }
        unsigned pairs = no_leads != 0 ? LowestBit(no_leads) / 16 : 4;
        // The next turn need not wait for the table, as the branch is foreseen.
        const std::uint64_t unknown = writer.Four(PairIndexes(word)) & ((std::uint64_t{1} << 8 * pairs) - 1);
        if (__builtin_expect(unknown != 0, 0)) pairs = LowestBit(unknown) / 8;
        text += 2 * pairs;
        writer.Took(pairs);
        if (pairs == 4) continue;

        writer.Ascii8(text);
        const std::uint64_t high_bytes = LoadWord<std::uint64_t>(text) & kTopBits;
        const unsigned ascii_bytes = high_bytes != 0 ? LowestBit(high_bytes) / 8 : 8;
        text += ascii_bytes;
        writer.TookAscii(ascii_bytes);
        if (ascii_bytes == 0 && !read_other(text)) break;
        if (ascii_bytes < 8) continue;
        for (; end - text >= 16 && writer.HasRoom() && AreAscii16(text); text += 16) {
            writer.Ascii8(text);
            writer.TookAscii(8);
            writer.Ascii8(text + 8);
            writer.TookAscii(8);
        }
    }
    return text;
}

// Steps over eight bytes that are ASCII or four usual pairs: for the last bytes of a text, which the loop leaves. The writer
// has the room.
template <typename Writer>
inline bool ReadEightAlike(const char*& text, Writer& writer) {
    const auto word = LoadWord<std::uint64_t>(text);
    if ((word & kTopBits) == 0) {
        writer.Ascii8(text);
        writer.TookAscii(8);
    } else if ((word & kLeadBits) != kLeadBits || !writer.AllFour(PairIndexes(word))) {
        return false;
    }
    text += 8;
    return true;
}

// The entries of four pairs.
template <typename Entry>
inline void LookUp(const PairTable<Entry>& table, std::uint64_t indexes, Entry (&entries)[4]) {
    for (unsigned i = 0; i < 4; ++i) entries[i] = table[indexes >> 16 * i & 0xFFFF];
}

// Writes UTF-8 by a table whose entries are the bytes, lowest first, below their number; 0 for an unknown pair.
class Utf8PairWriter {
public:
    // The most that a turn writes, and so the room behind `limit` that the buffer has.
    static constexpr std::size_t kSlack = 64;

    Utf8PairWriter(const PairTable<std::uint32_t>& table, char* out, const char* limit)
        : table_(table), out_(out), limit_(limit) {}

    char*& out() { return out_; }
    bool HasRoom() const { return out_ < limit_; }
    bool AllFour(std::uint64_t indexes) {
        std::uint32_t entries[4];
        LookUp(table_, indexes, entries);
        // Three bytes each, which is the longest and what all Chinese characters have.
        if ((entries[0] & entries[1] & entries[2] & entries[3]) >> 24 != 3) return false;
        for (unsigned i = 0; i < 4; ++i) StoreWord(entries[i], out_ + 3 * i);
        out_ += 12;
        return true;
    }
    unsigned Four(std::uint64_t indexes) {
        std::uint32_t entries[4];
        LookUp(table_, indexes, entries);
        // The lengths side by side, 0 for an unknown pair, and what the first ones come to: no chain of additions, and nothing
        // to foresee, as text that is mixed would have it.
        const std::uint32_t lengths =
            entries[0] >> 24 | (entries[1] >> 16 & 0xFF00) | (entries[2] >> 8 & 0xFF0000) | (entries[3] & 0xFF000000);
        sums_ = lengths * std::uint64_t{0x0101010100};
        char* place = out_;
        for (unsigned i = 0; i < 4; ++i) {
            StoreWord(entries[i], place);
            place += entries[i] >> 24;
        }
        return ~(lengths | lengths >> 1) & 0x01010101u;
    }
    void Took(unsigned pairs) { out_ += sums_ >> 8 * pairs & 0xFF; }
    void Ascii8(const char* bytes) { std::memcpy(out_, bytes, 8); }
    void TookAscii(unsigned bytes) { out_ += bytes; }
    void One(unsigned code_point) { out_ = WriteUtf8(code_point, out_); }

private:
    const PairTable<std::uint32_t>& table_;
    char* out_;
    const char* limit_;
    std::uint64_t sums_ = 0;  // of none, one, ... four of the pairs last written, a byte each
};

}  // namespace utility::internal

#endif
