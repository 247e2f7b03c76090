#include "CodeTrans/CodeMaps/Detection.h"

#include <algorithm>
#include <cstdint>

#include "CodeTrans/CodeMaps/DetectionCore.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "Internal/Bytes.h"
#include "Internal/Utf8Sequences.h"
#include "Internal/Words.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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
    void Add(Score score, std::int64_t times) {
        if (score == 0) return;
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const int delta = static_cast<int>(score >> 8 * channel & 0xFF) - kScoreOffset;
            sum[channel] += times * delta;
            positive[channel] += delta > 0 ? times : 0;
        }
        scored += times;
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

// The end of the printable ASCII, 20 to 7F, at `pos`.
const char* SkipPrintable(const char* pos, const char* end) {
#ifdef __SSE2__
    for (; end - pos >= 16; pos += 16) {
        // As signed bytes those are above 1F, and no others.
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pos));
        const auto printable = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(0x1F))));
        if (printable != 0xFFFF) return pos + LowestBit(~printable);
    }
#else
    for (; end - pos >= 8; pos += 8) {
        // Those have a bit of the two below the top one, and no top bit.
        const auto word = LoadWord<std::uint64_t>(pos);
        if ((((word << 1 | word << 2) & ~word) & kTopBits) != kTopBits) break;
    }
#endif
    while (pos != end && ToByte(*pos) >= 0x20 && IsAscii(ToByte(*pos))) ++pos;
    return pos;
}

std::int64_t CountHighBytes(const char* text, const char* end) {
    std::int64_t count = 0;
#ifdef __SSE2__
    while (end - text >= 16) {
        // In each of 16 bytes how often the ones above it had a top bit, from 0 down; 255 times at most.
        __m128i counts = _mm_setzero_si128();
        for (int i = 0; i < 255 && end - text >= 16; ++i, text += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
            counts = _mm_add_epi8(counts, _mm_cmplt_epi8(bytes, _mm_setzero_si128()));
        }
        const __m128i sums = _mm_sad_epu8(_mm_sub_epi8(_mm_setzero_si128(), counts), _mm_setzero_si128());
        count += _mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4);
    }
#endif
    for (; end - text >= 8; text += 8) {
        constexpr std::uint64_t kOnes = kTopBits >> 7;  // a product with it adds up the bytes into the topmost
        count += static_cast<std::int64_t>((LoadWord<std::uint64_t>(text) >> 7 & kOnes) * kOnes >> 56);
    }
    for (; text != end; ++text) count += !IsAscii(ToByte(*text));
    return count;
}

// Adds up scores in words whose bytes and halves are counters of their own. Each takes 255 scores before it is emptied
// into the tally.
class ScoreBlock {
public:
    static constexpr std::size_t kMost = 255;

    void Add(Score score) {
        // A byte is 11 or more exactly where 75 hex more give it a top bit; none is above 33.
        positive_ += (score + 0x75757575u) >> 7 & 0x01010101u;
        even_ += score & 0x00FF00FFu;
        odd_ += score >> 8 & 0x00FF00FFu;
        scored_ += score != 0;
    }
    void EmptyInto(Tally& tally) {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const std::uint32_t pair = channel % 2 == 0 ? even_ : odd_;
            const std::int64_t raised = pair >> 8 * (channel & 2u) & 0xFFFF, offsets = scored_ * kScoreOffset;
            tally.sum[channel] += raised - offsets;
            tally.positive[channel] += positive_ >> 8 * channel & 0xFF;
        }
        tally.scored += scored_;
        *this = {};
    }

private:
    std::uint32_t positive_ = 0, even_ = 0, odd_ = 0, scored_ = 0;
};

// The end of the bytes at `pos` that mean nothing on the ground.
const char* SkipLow(const ScanForm::Ground& ground, const char* pos, const char* end) {
    for (;;) {
        if (ground.skips_printable) pos = SkipPrintable(pos, end);
        if (pos == end || !IsAscii(ToByte(*pos)) || !ground.skips[ToByte(*pos)]) return pos;
        ++pos;
    }
}

// One run over a text by a form.
class FormScan {
public:
    FormScan(const DetectionTable& table, const char* text, const char* end, Tally& tally)
        : states_{table.states, table.count}, form_(*table.form), pos_(text), end_(end), run_end_(text), tally_(tally) {
        GoOnFrom(0, form_.place(0));
    }

    // The verdict of a state that gave one, otherwise 0 and everything added up.
    int Run() {
        while (pos_ != end_) {
            if (IsAscii(ToByte(*pos_)) ? TakeLow() : TakeUnits()) continue;
            const int verdict = TakeByte();
            if (verdict != 0) return verdict;
        }
        block_.EmptyInto(tally_);
        return 0;
    }

private:
    void GoOnFrom(std::uint32_t state, ScanForm::Place place) {
        state_ = state;
        place_ = place;
    }

    // Makes room for a score.
    void MakeRoom() {
        if (room_ > 0) return;
        block_.EmptyInto(tally_);
        room_ = ScoreBlock::kMost;
    }

    // Takes a byte below 80 and those behind it that can be skipped. False if it has to be taken by itself.
    bool TakeLow() {
        if (place_.ground() == ScanForm::Place::kNone) return false;
        const ScanForm::Ground& ground = form_.ground(place_.ground());
        const ScanForm::LowByte* low = &ground.row[ToByte(*pos_)];
        if (ground.skips[ToByte(*pos_)]) {
            pos_ = SkipLow(ground, pos_ + 1, end_);
            low = &ground.row[ToByte(pos_[-1])];
        } else {
            if (low->score >= ScanForm::kByteByByte) return false;
            MakeRoom();
            block_.Add(low->score);
            --room_;
            ++pos_;
        }
        GoOnFrom(low->state, low->next);
        return true;
    }

    // Takes units from 80 up, as far as a ring. False without any.
    bool TakeUnits() {
        unsigned hub = place_.hub();
        if (hub == ScanForm::Place::kNone) return false;
        if (TakeRing(form_.ring(hub))) return true;
        MakeRoom();
        const char* const start = pos_;
        const char* const limit = start + 2 * std::min(static_cast<std::size_t>(end_ - start) / 2, room_);
        const ScanForm::Unit* units = form_.units(hub);
        const ScanForm::Exception* const exceptions = form_.exceptions(0);
        const char* pos = start;
        ScoreBlock block = block_;
        ScanForm::Place place = place_;
        unsigned last_hub = hub;
        while (pos != limit && !IsAscii(ToByte(*pos))) {
            const std::size_t code = UnitAt(pos);
            const ScanForm::Unit unit = units[code];
            const ScanForm::Exception exception = exceptions[place.shift() + code];
            // Whether there is one is as good as drawn by lot: no branch on that.
            const Score excepted = exception.shift == place.shift() ? ~Score{0} : 0;
            const Score score = unit.score ^ ((unit.score ^ exception.score) & excepted);
            if (score >= ScanForm::kByteByByte) break;
            block.Add(score);
            place = unit.next;
            pos += 2;
            last_hub = hub;
            if (place.hub() == hub) continue;
            hub = place.hub();
            if (hub == ScanForm::Place::kNone || form_.ring(hub).exists) break;
            units = form_.units(hub);
        }
        if (pos == start) return false;
        block_ = block;
        room_ -= static_cast<std::size_t>(pos - start) / 2;
        pos_ = pos;
        GoOnFrom(form_.behind(last_hub, UnitAt(pos - 2)), place);
        return true;
    }
    // Takes characters of three bytes in pairs, where they lead round and back. False without any.
    bool TakeRing(const ScanForm::Ring& ring) {
        if (!ring.exists || !(place_ == ring.start)) return false;
        // Looked for once, however often the ring is left on the way there.
        if (pos_ >= run_end_ || (run_end_ - pos_) % 3 != 0) {
            const char* const run_end = SkipThreeByteSequences(pos_, end_);
            if (run_end == pos_) return false;
            run_end_ = run_end;
        }
        const char* pos = pos_;
        while (run_end_ - pos >= ScanForm::Ring::kBytes && !ring.leaves[UnitAt(pos)]) pos += ScanForm::Ring::kBytes;
        if (pos == pos_) return false;
        for (const Score score : ring.scores) tally_.Add(score, (pos - pos_) / ScanForm::Ring::kBytes);
        pos_ = pos;
        GoOnFrom(form_.behind(ring.last_hub, UnitAt(pos - 2)), ring.start);
        return true;
    }
    static std::size_t UnitAt(const char* pos) {
        return static_cast<std::size_t>((ToByte(pos[0]) & 0x7F) << 8 | ToByte(pos[1]));
    }

    // Takes a byte by the states; the verdict of the one it leads to, or 0.
    int TakeByte() {
        const std::size_t entered = states_.Step(state_, ToByte(*pos_++));
        if (entered == States::kNone) {
            GoOnFrom(0, form_.place(0));
            return 0;
        }
        const Score score = ScoreOf(states_.at[entered].nValue);
        if (score >= kVerdict) return VerdictOf(states_.at[entered].nValue);
        MakeRoom();
        block_.Add(score);
        --room_;
        GoOnFrom(static_cast<std::uint32_t>(entered), form_.place(entered));
        return 0;
    }

    const States states_;
    const ScanForm& form_;
    const char* pos_;
    const char* const end_;
    const char* run_end_;  // of the characters of three bytes last looked at
    Tally& tally_;
    ScoreBlock block_;
    std::size_t room_ = ScoreBlock::kMost;
    std::uint32_t state_ = 0;
    ScanForm::Place place_;
};

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
                        : table.form != nullptr ? FormScan(table, text, text + length, tally).Run()
                                                : ScanStates(table, text, length, tally);
    if (verdict != 0) return {verdict, true, 0};
    tally.high_bytes = CountHighBytes(text, text + length);
    return WithLead(tally, Decide(tally));
}

}  // namespace utility::internal

int CodeTrans_CodeDetect(const char* text, unsigned long length) {
    using namespace utility::internal;
    return DetectEncoding({g_tables.states.get(), g_tables.state_count, g_tables.scan_form.get()}, text, length)
        .encoding;
}
