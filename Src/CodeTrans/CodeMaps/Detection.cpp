#include "CodeTrans/CodeMaps/Detection.h"

#include <cstdint>

#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "Internal/Bytes.h"

namespace {

using namespace utility::internal;

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
    int verdict =
        positive[kGbkChannel] > tally.high_bytes / 4 || tally.high_bytes == 0 ? ENCODE_GBK : ENCODE_UNKNOWN;
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

}  // namespace

int CodeTrans_CodeDetect(const char* text, unsigned long length) {
    if (g_tables.states == nullptr) return ENCODE_UNKNOWN;
    const _tTrieNode* const states = g_tables.states.get();
    const std::size_t count = g_tables.state_count;
    Tally tally;
    for (std::size_t pos = 0; pos < length; ++pos) tally.high_bytes += !IsAscii(ToByte(text[pos]));
    if (count == 0) return Decide(tally);

    std::size_t state = 0;
    for (std::size_t pos = 0; pos < length;) {
        // As a signed sum: a negative nBase may lead back into the table.
        const auto next = static_cast<std::size_t>(std::ptrdiff_t{states[state].nBase} + ToByte(text[pos]));
        if (next < count && static_cast<std::size_t>(states[next].nCheck) == state) {
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
    return Decide(tally);
}
