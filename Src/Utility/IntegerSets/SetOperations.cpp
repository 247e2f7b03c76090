#include "Utility/IntegerSets/SetOperations.h"

#include <algorithm>
#include <climits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

// Gathers values for the end of a vector. There is always room for another block, so that a loop may write a value
// first and then decide whether it counts.
class Sink {
public:
    static constexpr std::size_t kBlock = 4;

    explicit Sink(std::vector<int>& values) : values_(values) {}
    void Add(int value) { AddIf(value, true), MakeRoom(); }
    void AddIf(int value, bool counts) {
        buffer_[count_] = value;
        count_ += counts;
    }
    // To be called once a block at least.
    void MakeRoom() {
        if (count_ > kBuffer) Flush();
    }
    void Flush() {
        values_.insert(values_.end(), buffer_, buffer_ + count_);
        count_ = 0;
    }

private:
    static constexpr std::size_t kBuffer = 1024;
    std::vector<int>& values_;
    std::size_t count_ = 0;
    int buffer_[kBuffer + kBlock + 1];
};

struct Place {
    std::size_t a, b;
};

// Steps over the smaller of two elements, or over both, without a branch that no processor would foresee.
void IntersectOneByOne(const std::vector<int>& sorted_a, const std::vector<int>& sorted_b, int offset, Place place,
                       Sink& sink) {
    while (place.a < sorted_a.size() && place.b < sorted_b.size()) {
        const long a = static_cast<long>(sorted_a[place.a]) + offset, b = sorted_b[place.b];
        sink.AddIf(sorted_a[place.a], a == b);
        sink.MakeRoom();
        place.a += a <= b;
        place.b += b <= a;
    }
}

#ifdef __SSE2__

__m128i LoadBlock(const std::vector<int>& values, std::size_t pos) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(values.data() + pos));
}

// Compares each of four elements with each of four others at once, steps over the block whose last element is smaller
// (or both), and stops where there is no block left with another element behind it, or where one holds equal elements:
// then which of them count depends on their number. What is left is for the loop above.
Place IntersectByBlocks(const std::vector<int>& sorted_a, const std::vector<int>& sorted_b, int offset, Sink& sink) {
    Place place{0, 0};
    const auto fits = [offset](int value) {
        const long sum = static_cast<long>(value) + offset;
        return sum >= INT_MIN && sum <= INT_MAX;
    };
    if (!fits(sorted_a.front()) || !fits(sorted_a.back())) return place;
    const __m128i offsets = _mm_set1_epi32(offset);
    while (sorted_a.size() - place.a > Sink::kBlock && sorted_b.size() - place.b > Sink::kBlock) {
        const __m128i unmoved_a = LoadBlock(sorted_a, place.a), b = LoadBlock(sorted_b, place.b);
        const __m128i ascending = _mm_and_si128(_mm_cmpgt_epi32(LoadBlock(sorted_a, place.a + 1), unmoved_a),
                                                _mm_cmpgt_epi32(LoadBlock(sorted_b, place.b + 1), b));
        if (_mm_movemask_epi8(ascending) != 0xFFFF) break;
        const __m128i a = _mm_add_epi32(unmoved_a, offsets);
        const __m128i equal =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi32(a, b), _mm_cmpeq_epi32(a, _mm_shuffle_epi32(b, 0x39))),
                         _mm_or_si128(_mm_cmpeq_epi32(a, _mm_shuffle_epi32(b, 0x4E)),
                                      _mm_cmpeq_epi32(a, _mm_shuffle_epi32(b, 0x93))));
        const int matches = _mm_movemask_ps(_mm_castsi128_ps(equal));
        if (matches != 0) {
            for (std::size_t i = 0; i < Sink::kBlock; ++i) sink.AddIf(sorted_a[place.a + i], (matches >> i & 1) != 0);
            sink.MakeRoom();
        }
        const int last_a = sorted_a[place.a + Sink::kBlock - 1] + offset, last_b = sorted_b[place.b + Sink::kBlock - 1];
        place.a += last_a <= last_b ? Sink::kBlock : 0;
        place.b += last_b <= last_a ? Sink::kBlock : 0;
    }
    return place;
}

#else

Place IntersectByBlocks(const std::vector<int>&, const std::vector<int>&, int, Sink&) {
    return {0, 0};
}

#endif

// The two below are for lists of which one is longer. `add` is called with the place in each.

// Steps over the longer list one by one, which a processor foresees as long as there are several steps each time.
template <typename Add>
void IntersectBySteps(const std::vector<int>& few, const std::vector<int>& many, long offset, Add add) {
    std::size_t place = 0;
    for (std::size_t i = 0; i < few.size(); ++i) {
        const long value = few[i] + offset;
        while (place < many.size() && many[place] < value) ++place;
        if (place == many.size()) return;
        if (many[place] == value) add(i, place++);
    }
}

// Looks for a few values at once, so that their memory is waited for together: leaps that double until the last value
// is behind, and then halves what was leapt over for each of them, without a branch that no processor would foresee.
template <typename Add>
void IntersectByLeaps(const std::vector<int>& few, const std::vector<int>& many, long offset, Add add) {
    constexpr std::size_t kAtOnce = 4;
    const std::size_t first_leap = kAtOnce * (many.size() / few.size());
    const int* const end = many.data() + many.size();
    const int* place = many.data();
    for (std::size_t i = 0; i < few.size() && place != end; i += kAtOnce) {
        const std::size_t count = std::min(kAtOnce, few.size() - i);
        long values[kAtOnce];
        const int* found[kAtOnce];
        for (std::size_t k = 0; k < kAtOnce; ++k) {
            values[k] = few[i + std::min(k, count - 1)] + offset;
            found[k] = place;
        }
        const auto left = static_cast<std::size_t>(end - place);
        std::size_t span = first_leap;
        while (span < left && place[span] < values[kAtOnce - 1]) span *= 2;
        for (span = std::min(span, left); span > 1;) {
            const std::size_t half = span / 2;
            for (std::size_t k = 0; k < kAtOnce; ++k) found[k] += found[k][half - 1] < values[k] ? half : 0;
            span -= half;
        }
        for (std::size_t k = 0; k < count; ++k) {
            // A value that comes twice finds the same place, which counts once.
            place = std::max(place, found[k] + (*found[k] < values[k]));
            if (place == end) return;
            if (*place == values[k]) add(i + k, static_cast<std::size_t>(place++ - many.data()));
            if (place == end) return;
        }
    }
}

template <typename Add>
void IntersectUnequal(const std::vector<int>& few, const std::vector<int>& many, long offset, Add add) {
    constexpr std::size_t kManySteps = 32;
    if (many.size() / few.size() < kManySteps) {
        IntersectBySteps(few, many, offset, add);
    } else {
        IntersectByLeaps(few, many, offset, add);
    }
}

}  // namespace

bool IsExists(int value, const std::vector<int>& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

int LocateIndex(int value, const std::vector<int>& sorted) {
    const auto found = std::find_if(sorted.begin(), sorted.end(), [value](int element) { return element >= value; });
    return found == sorted.end() ? -1 : static_cast<int>(found - sorted.begin());
}

std::size_t Intersection(const std::vector<int>& sorted_a, const std::vector<int>& sorted_b, int offset,
                         std::vector<int>& common) {
    constexpr std::size_t kMuchLonger = 4;
    if (sorted_a.empty() || sorted_b.empty()) return common.size();
    Sink sink(common);
    if (sorted_b.size() / kMuchLonger >= sorted_a.size()) {
        IntersectUnequal(sorted_a, sorted_b, offset, [&](std::size_t a, std::size_t) { sink.Add(sorted_a[a]); });
    } else if (sorted_a.size() / kMuchLonger >= sorted_b.size()) {
        IntersectUnequal(sorted_b, sorted_a, -long{offset}, [&](std::size_t, std::size_t a) { sink.Add(sorted_a[a]); });
    } else {
        const Place start = IntersectByBlocks(sorted_a, sorted_b, offset, sink);
        IntersectOneByOne(sorted_a, sorted_b, offset, start, sink);
    }
    sink.Flush();
    return common.size();
}

// What stays moves up at once to where it ends up, since erasing elements one by one would move the rest
// every time.
bool Not(std::vector<int>& sorted_a, const std::vector<int>& sorted_b) {
    std::size_t a = 0;
    std::size_t kept = 0;
    for (std::size_t b = 0; a < sorted_a.size() && b < sorted_b.size();) {
        if (sorted_a[a] < sorted_b[b]) {
            sorted_a[kept++] = sorted_a[a++];
        } else if (sorted_a[a] == sorted_b[b++]) {
            ++a;
        }
    }
    if (kept == a) return false;
    const auto position = [&sorted_a](std::size_t index) {
        return sorted_a.begin() + static_cast<std::ptrdiff_t>(index);
    };
    sorted_a.erase(position(kept), position(a));
    return true;
}
