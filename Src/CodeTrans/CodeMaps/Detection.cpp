#include "CodeTrans/CodeMaps/Detection.h"

#include <algorithm>
#include <cstdint>

#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "Internal/Bytes.h"
#include "Internal/Words.h"

namespace utility::internal {

namespace {

// What the states of a text add up to. 64 bits hold it for any length.
struct Tally {
    std::int64_t high_bytes = 0;
    std::int64_t sum[kChannels] = {};
    std::int64_t positive[kChannels] = {};
    std::int64_t scored = 0;

    void Add(std::int32_t value) {
        const auto deltas = DeltasOf(value);
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            sum[channel] += deltas[channel];
            positive[channel] += deltas[channel] > 0;
        }
        ++scored;
    }
    std::int64_t NonPositiveUnicode() const { return scored - positive[kUnicodeChannel]; }
};

// Ties go to the channel asked first.
int Decide(const Tally& tally) {
    const std::int64_t* sum = tally.sum;
    const std::int64_t* positive = tally.positive;
    std::int64_t best = sum[kGbkChannel];
    int verdict = positive[kGbkChannel] > tally.high_bytes / 4 || tally.high_bytes == 0 ? ENCODE_GBK : ENCODE_UNKNOWN;
    if (sum[kBig5Channel] > best) {
        best = sum[kBig5Channel];
        verdict = positive[kBig5Channel] > tally.high_bytes / 4 ? ENCODE_BIG5 : ENCODE_UNKNOWN;
    }
    if (sum[kUtf8Channel] > best) {
        best = sum[kUtf8Channel];
        verdict = positive[kUtf8Channel] > tally.high_bytes / 6 ? ENCODE_UTF8 : ENCODE_UNKNOWN;
    }
    if (sum[kUnicodeChannel] > best && (positive[kUnicodeChannel] + 9) / (tally.NonPositiveUnicode() + 1) > 9)
        verdict = ENCODE_UNICODE;
    return verdict;
}

// Points between the verdict and the best of the others.
DetectionResult WithLead(const Tally& tally, int verdict) {
    const std::size_t winner = verdict == ENCODE_GBK    ? kGbkChannel
                               : verdict == ENCODE_BIG5 ? kBig5Channel
                               : verdict == ENCODE_UTF8 ? kUtf8Channel
                                                        : kUnicodeChannel;
    std::int64_t next = 0;
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        if (channel != winner) next = std::max(next, tally.sum[channel]);
    return {verdict, false, verdict == ENCODE_UNKNOWN ? 0 : std::max<std::int64_t>(tally.sum[winner] - next, 0)};
}

// Adds up what the records of a form say, in words whose bytes and halves are counters of their own. Each takes 255 records
// before it is emptied into the tally.
class FormTally {
public:
    static constexpr std::size_t kMost = 255;

    void Add(std::uint32_t score) {
        // A byte is 11 or more exactly where 75 hex more give it a top bit; none is above 33.
        positive_ += (score + 0x75757575u) >> 7 & 0x01010101u;
        even_ += score & 0x00FF00FFu;
        odd_ += score >> 8 & 0x00FF00FFu;
        scored_ += score != 0;
    }
    void EmptyInto(Tally& tally) {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const std::uint32_t pair = channel % 2 == 0 ? even_ : odd_;
            tally.sum[channel] += static_cast<std::int64_t>(pair >> 8 * (channel & 2u) & 0xFFFF) -
                                  std::int64_t{ScanForm::kScoreOffset} * scored_;
            tally.positive[channel] += positive_ >> 8 * channel & 0xFF;
        }
        tally.scored += scored_;
        *this = {};
    }

private:
    std::uint32_t positive_ = 0, even_ = 0, odd_ = 0, scored_ = 0;
};

// The end of the words of printable ASCII at `pos`: 20 to 7F, so with a bit of the two below the top one.
const char* SkipPlain(const char* pos, const char* end) {
    while (end - pos >= 8) {
        const auto word = LoadWord<std::uint64_t>(pos);
        if ((((word << 1 | word << 2) & ~word) & kTopBits) != kTopBits) break;
        pos += 8;
    }
    return pos;
}

// Runs over the text; the verdict of a state that gave one, otherwise 0 and everything added up.
int Scan(const ScanForm& form, const char* text, const char* end, Tally& tally) {
    ScanState state = form.root();
    FormTally block;
    while (text != end) {
        const char* const block_end = text + std::min<std::ptrdiff_t>(FormTally::kMost, end - text);
        while (text < block_end) {
            const std::uint32_t own_number = state.number & ~ScanState::kPlain;
            // As signed sums: a negative base may lead back into the table.
            const ScanState& link = form.link(state);
            const auto own = static_cast<std::size_t>(std::ptrdiff_t{state.base} + ToByte(*text));
            const auto linked = static_cast<std::size_t>(std::ptrdiff_t{link.base} + ToByte(*text));
            // Whether the state or the one behind it has the transition is as good as drawn by lot: no branch on that.
            const bool is_own = form.record(own < form.count() ? own : 0).check == own_number && own < form.count();
            const std::size_t next = is_own ? own : linked;
            const std::uint32_t number = is_own ? own_number : link.number;
            if (next < form.count() && form.record(next).check == number) {
                const ScanForm::Record& record = form.record(next);
                ++text;
                state = record.next;
                if (record.score >= ScanForm::kVerdict)
                    return VerdictOf(static_cast<std::int32_t>(record.score << kVerdictShift));
                block.Add(record.score);
                if (!state.plain()) continue;
                const char* const plain_end = SkipPlain(text, end);
                if (plain_end == text) continue;
                text = plain_end;
                state = form.after_plain(ToByte(text[-1]));
            } else if (number != 0) {
                state = form.link(link);
            } else {
                state = link;  // the root
                ++text;
            }
        }
        block.EmptyInto(tally);
    }
    return 0;
}

// The same by the states themselves, step by step.
int ScanStates(const DetectionTable& table, const char* text, std::size_t length, Tally& tally) {
    const _tTrieNode* const states = table.states;
    std::size_t state = 0;
    for (std::size_t pos = 0; pos < length;) {
        // As a signed sum: a negative nBase may lead back into the table.
        const auto next = static_cast<std::size_t>(std::ptrdiff_t{states[state].nBase} + ToByte(text[pos]));
        if (next < table.count && static_cast<std::size_t>(states[next].nCheck) == state) {
            state = next;
            const std::int32_t value = states[next].nValue;
            if (value != kNeutralValue) {
                if (VerdictOf(value) != 0) return VerdictOf(value);
                tally.Add(value);
            }
            ++pos;
        } else if (state != 0) {
            state = static_cast<std::size_t>(states[state].nFail);
        } else {
            ++pos;
        }
    }
    return 0;
}

}  // namespace

DetectionResult DetectEncoding(const DetectionTable& table, const char* text, std::size_t length) {
    if (table.states == nullptr) return {};
    Tally tally;
    const int verdict = table.count == 0        ? 0
                        : table.form != nullptr ? Scan(*table.form, text, text + length, tally)
                                                : ScanStates(table, text, length, tally);
    if (verdict != 0) return {verdict, true, 0};
    for (std::size_t pos = 0; pos < length; ++pos) tally.high_bytes += !IsAscii(ToByte(text[pos]));
    return WithLead(tally, Decide(tally));
}

}  // namespace utility::internal

int CodeTrans_CodeDetect(const char* text, unsigned long length) {
    using namespace utility::internal;
    return DetectEncoding({g_tables.states.get(), g_tables.state_count, g_tables.scan_form.get()}, text, length)
        .encoding;
}
