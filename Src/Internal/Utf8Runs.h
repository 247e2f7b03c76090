#ifndef UTILITY_INTERNAL_UTF8RUNS_H
#define UTILITY_INTERNAL_UTF8RUNS_H

// The loop of everything that reads UTF-8 and writes it in another form: several characters at a time where they are alike.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Internal/Words.h"

namespace utility::internal {

// What counts as a sequence of three bytes.
enum class ThreeBytes {
    kByLead,  // a lead byte E0 to EF and any two bytes
    kByAll,   // the same with two continuation bytes
    kStrict,  // the same without overlong forms and surrogates
};

using CodePoints4 = std::uint32_t __attribute__((vector_size(16)));

template <typename Lanes>
inline bool IsAnySet(Lanes lanes) {
    using Halves = std::uint64_t __attribute__((vector_size(16)));
    const auto halves = reinterpret_cast<Halves>(lanes);
    return (halves[0] | halves[1]) != 0;
}

// Sixteen ASCII bytes at a time.
template <typename Writer>
inline const char* ReadAscii16s(const char* text, const char* end, Writer& writer) {
    for (; end - text >= 16 && AreAscii16(text); text += 16) {
        writer.Ascii8(text);
        writer.TookAscii(8);
        writer.Ascii8(text + 8);
        writer.TookAscii(8);
    }
    return text;
}

// The bits of twelve bytes that make them four sequences of three bytes, and the values that those have.
template <ThreeBytes kRule>
struct FourSequences {
    static constexpr bool kByLead = kRule == ThreeBytes::kByLead;
    static constexpr std::uint64_t kBits = kByLead ? 0x00F00000F00000F0u : 0xC0F0C0C0F0C0C0F0u;
    static constexpr std::uint64_t kValues = kByLead ? 0x00E00000E00000E0u : 0x80E08080E08080E0u;
    static constexpr std::uint32_t kLaterBits = kByLead ? 0x0000F000u : 0xC0C0F0C0u;
    static constexpr std::uint32_t kLaterValues = kByLead ? 0x0000E000u : 0x8080E080u;

    CodePoints4 code_points;
    std::uint64_t wrong;  // bits in which the first eight bytes differ
    std::uint32_t later_wrong;

    // Looks at 13 bytes.
    explicit FourSequences(const char* text) {
        const CodePoints4 bytes = {LoadWord<std::uint32_t>(text), LoadWord<std::uint32_t>(text + 3),
                                   LoadWord<std::uint32_t>(text + 6), LoadWord<std::uint32_t>(text + 9)};
        code_points = (bytes & 0x0F) << 12 | (bytes >> 2 & 0xFC0) | (bytes >> 16 & 0x3F);
        wrong = (LoadWord<std::uint64_t>(text) & kBits) ^ kValues;
        later_wrong = (LoadWord<std::uint32_t>(text + 8) & kLaterBits) ^ kLaterValues;
    }
    bool AllRight() const { return (wrong | later_wrong) == 0; }
    // Number of sequences in front of the wrong byte; there is one.
    unsigned RightOnes() const { return (wrong != 0 ? LowestBit(wrong) / 8 : 8 + LowestBit(later_wrong) / 8) / 3; }
    // Number of code points in front of one that is below 800 or a surrogate.
    unsigned AllowedOnes() const {
        const CodePoints4 row = code_points & 0xF800;
        const auto forbidden = (row == 0) | (row == 0xD800);
        if (!IsAnySet(forbidden)) return 4;
        unsigned count = 0;
        while (count < 4 && forbidden[count] == 0) ++count;
        return count;
    }
};

inline constexpr std::ptrdiff_t kUtf8Turn = 24;

// Reads `text` until fewer than kUtf8Turn bytes are left and returns the place of the first byte not read.
//
// Chinese text is runs of three-byte sequences and runs of ASCII, and a wrong guess which of them comes next costs the
// processor as much as ten characters. So a turn decodes four sequences of three bytes, whatever the twelve bytes are, and
// steps over as many as there were: four in the usual case; otherwise over those in front and then, written the same way,
// over up to eight ASCII bytes. Where there is neither, one call to `read_other` steps over what stands there.
//
// The writer has `Four(code_points)`, which gives the number of those in front that it knows and of which Took(n) keeps the
// first n, and `Ascii8(bytes)`, of which TookAscii(n) keeps the first n. Both write in full: up to kWrittenInVain characters
// behind those that a turn keeps.
inline constexpr std::size_t kWrittenInVain = 11;

template <ThreeBytes kRule, typename Writer, typename ReadOther>
inline const char* ReadUtf8Runs(const char* text, const char* end, Writer& writer, ReadOther read_other) {
    while (end - text >= kUtf8Turn) {
        const FourSequences<kRule> four(text);
        unsigned known = writer.Four(four.code_points);
        if (kRule == ThreeBytes::kStrict) known = std::min(known, four.AllowedOnes());
        const bool all_right = four.AllRight();
        if (all_right && known == 4) {
            text += 12;
            writer.Took(4);
            continue;
        }
        const unsigned sequences = all_right ? known : std::min(four.RightOnes(), known);
        text += 3 * sequences;
        writer.Took(sequences);

        writer.Ascii8(text);
        const std::uint64_t high_bytes = LoadWord<std::uint64_t>(text) & kTopBits;
        if (high_bytes == 0) {
            text += 8;
            writer.TookAscii(8);
            text = ReadAscii16s(text, end, writer);
            continue;
        }
        const unsigned ascii_bytes = LowestBit(high_bytes) / 8;
        text += ascii_bytes;
        writer.TookAscii(ascii_bytes);
        if (ascii_bytes == 0) read_other(text);
    }
    return text;
}

// The same for an output that has no room for more than the text's characters, or that is the text itself.
template <ThreeBytes kRule, typename Writer, typename ReadOther>
inline const char* ReadUtf8RunsExactly(const char* text, const char* end, Writer& writer, ReadOther read_other) {
    while (end - text >= 16) {
        const FourSequences<kRule> four(text);
        if (four.AllRight()) {
            writer.Four(four.code_points);
            writer.Took(4);
            text += 12;
        } else if (const char* const run_end = ReadAscii16s(text, end, writer); run_end != text) {
            text = run_end;
        } else {
            read_other(text);
        }
    }
    return text;
}

// Whether the last 128 bytes are sure to give more characters than are written in vain, so that up to there an output with
// no more room than the text needs has room for those, too. ASCII bytes and leads with their continuation bytes count: each
// is a character by any rule but kByLead, by which a lead that is not theirs may swallow two of them.
inline constexpr std::ptrdiff_t kTail = 128;

inline bool HasFullTail(const char* text, const char* end) {
    constexpr std::ptrdiff_t kWorthIt = 16 * kTail;
    if (end - text < kWorthIt) return false;
    const char* const tail = end - kTail;
    unsigned char characters = 0;  // a byte, so that the compiler can count in vectors
    for (std::ptrdiff_t i = 0; i < kTail - 2; ++i) {
        const bool ascii = (tail[i] & 0x80) == 0, two = (tail[i] & 0xE0) == 0xC0, three = (tail[i] & 0xF0) == 0xE0;
        const bool next = (tail[i + 1] & 0xC0) == 0x80, next_two = next & ((tail[i + 2] & 0xC0) == 0x80);
        characters = static_cast<unsigned char>(characters + (ascii | (two & next) | (three & next_two)));
    }
    return characters >= 3 * (kWrittenInVain + 1);
}

}  // namespace utility::internal

#endif
