#include "CodeTrans/CodeMaps/Detection.h"

#include <algorithm>
#include <cstdint>

#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "Internal/Bytes.h"

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

}  // namespace

DetectionResult DetectEncoding(const DetectionTable& table, const char* text, std::size_t length) {
    if (table.states == nullptr) return {};
    const _tTrieNode* const states = table.states;
    Tally tally;
    for (std::size_t pos = 0; pos < length; ++pos) tally.high_bytes += !IsAscii(ToByte(text[pos]));
    if (table.count == 0) return WithLead(tally, Decide(tally));

    std::size_t state = 0;
    for (std::size_t pos = 0; pos < length;) {
        // As a signed sum: a negative nBase may lead back into the table.
        const auto next = static_cast<std::size_t>(std::ptrdiff_t{states[state].nBase} + ToByte(text[pos]));
        if (next < table.count && static_cast<std::size_t>(states[next].nCheck) == state) {
            state = next;
            const std::int32_t value = states[next].nValue;
            if (value != kNeutralValue) {
                if (VerdictOf(value) != 0) return {VerdictOf(value), true, 0};
                tally.Add(value);
            }
            ++pos;
        } else if (state != 0) {
            state = static_cast<std::size_t>(states[state].nFail);
        } else {
            ++pos;
        }
    }
    return WithLead(tally, Decide(tally));
}

}  // namespace utility::internal

int CodeTrans_CodeDetect(const char* text, unsigned long length) {
    using namespace utility::internal;
    return DetectEncoding({g_tables.states.get(), g_tables.state_count}, text, length).encoding;
}
