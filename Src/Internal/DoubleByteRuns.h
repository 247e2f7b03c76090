#ifndef UTILITY_INTERNAL_DOUBLEBYTERUNS_H
#define UTILITY_INTERNAL_DOUBLEBYTERUNS_H

// The loop of everything that reads GBK or Big5: several characters at a time where they are alike.

#include <algorithm>
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
// The writer has `Four(indexes)`, which looks four pairs up and gives the number of those in front that the table knows; of
// these Took(n) keeps the first n; and `Ascii8(bytes)`, of which TookAscii(n) keeps the first n. Both write in full, also
// what is not kept; but the 24 bytes of a turn give 12 characters or more, those among them.
template <typename Writer, typename ReadOther>
inline const char* ReadDoubleByteRuns(const char* text, const char* end, Writer& writer, ReadOther read_other) {
    while (end - text >= 24 && writer.HasRoom()) {
        const auto word = LoadWord<std::uint64_t>(text);
        const unsigned known = writer.Four(PairIndexes(word));
        const std::uint64_t no_leads = ~word & kLeadBits;
        if (no_leads == 0 && known == 4) {
            text += 8;
            writer.Took(4);
            continue;
        }
        const unsigned pairs = no_leads != 0 ? std::min(LowestBit(no_leads) / 16, known) : known;
        text += 2 * pairs;
        writer.Took(pairs);

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

// The number of leading entries that are not 0.
template <typename Entry>
inline unsigned CountKnown(const Entry (&entries)[4]) {
    if (entries[0] != 0 && entries[1] != 0 && entries[2] != 0 && entries[3] != 0) return 4;
    return entries[0] == 0 ? 0 : entries[1] == 0 ? 1 : entries[2] == 0 ? 2 : 3;
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
    unsigned Four(std::uint64_t indexes) {
        std::uint32_t entries[4];
        LookUp(table_, indexes, entries);
        char* place = out_;
        for (unsigned i = 0; i < 4; ++i) {
            StoreWord(entries[i], place);
            place += entries[i] >> 24;
        }
        indexes_ = indexes;
        end_of_four_ = place;
        return CountKnown(entries);
    }
    void Took(unsigned pairs) {
        if (pairs == 4) {
            out_ = end_of_four_;
            return;
        }
        for (; pairs > 0; --pairs, indexes_ >>= 16) out_ += table_[indexes_ & 0xFFFF] >> 24;
    }
    void Ascii8(const char* bytes) { std::memcpy(out_, bytes, 8); }
    void TookAscii(unsigned bytes) { out_ += bytes; }
    void One(unsigned code_point) { out_ = WriteUtf8(code_point, out_); }

private:
    const PairTable<std::uint32_t>& table_;
    char* out_;
    const char* limit_;
    std::uint64_t indexes_ = 0;
    char* end_of_four_ = nullptr;
};

}  // namespace utility::internal

#endif
