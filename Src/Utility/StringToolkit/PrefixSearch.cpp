#include "Utility/StringToolkit/PrefixSearch.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "Internal/Bytes.h"

using utility::internal::ToByte;

namespace {

constexpr std::size_t kWholeText = static_cast<std::size_t>(-1);

// The entry that halving the range meets first among those that share `n` bytes with `key`, or -1.
long HalvingHit(const char* key, unsigned long n, const char** table, unsigned long first, unsigned long last) {
    while (first <= last) {
        const unsigned long middle = first + (last - first) / 2;
        const int order = std::strncmp(key, table[middle], n);
        if (order == 0) return static_cast<long>(middle);
        if (order > 0) {
            first = middle + 1;
        } else if (middle == 0) {
            break;
        } else {
            last = middle - 1;
        }
    }
    return -1;
}

// The beginning of a text, against which entries are compared.
struct Beginning {
    const char* text;
    std::size_t bytes;  // kWholeText for all of it

    // Whether the entry stands behind the beginning, and how many bytes they share. What the entries on either side
    // share would save some comparing, but lead beyond the end of entries that are out of order.
    bool IsBefore(const char* entry, std::size_t& common) const {
        common = 0;
        while (common < bytes && entry[common] == text[common] && entry[common] != '\0') ++common;
        return ToByte(entry[common]) > (common < bytes ? ToByte(text[common]) : 0);
    }
};

// Entries that stand at or before a beginning: how many, and how many bytes the last of them shares with it.
struct Range {
    unsigned long end;
    std::size_t common_bytes;
};

// Looks for entries that stand at or before a text, or at or before a beginning of it, in a table in order.
class PrefixFinder {
public:
    PrefixFinder(const char* text, const char** table) : text_(text), table_(table) {}

    // Among the first `count` entries those at or before the whole text.
    Range FindUpToText(unsigned long count) {
        const auto note = [this](Range range) { path_[path_length_++] = range; };
        return Halve({text_, kWholeText}, {0, 0}, count, note);
    }

    // Those at or before what the last entry of `found` and the text have in common, where the entry goes on behind
    // that. The first entry on the path to the text that shares as much does so, too, or is all of it; the one before
    // on the path stands in front: few are left in between.
    Range FindUpToCommon(Range found) const {
        const std::size_t bytes = found.common_bytes;
        std::size_t step = 0;
        while (path_[step].common_bytes < bytes) ++step;
        const Range low = step == 0 ? Range{0, 0} : path_[step - 1];
        const bool goes_on = table_[path_[step].end - 1][bytes] != '\0';
        return Halve({text_, bytes}, goes_on ? low : path_[step], (goes_on ? path_[step].end : found.end) - 1,
                     [](Range) {});
    }

private:
    // Halves what is between two ends: entries in front of `low` stand at or before the beginning, those from `high` on
    // behind it. `note` is called for each new low end.
    template <typename Note>
    Range Halve(const Beginning& beginning, Range low, unsigned long high, Note note) const {
        while (low.end < high) {
            const unsigned long middle = low.end + (high - low.end) / 2;
            std::size_t common;
            if (beginning.IsBefore(table_[middle], common)) {
                high = middle;
            } else {
                low = {middle + 1, common};
                note(low);
            }
        }
        return low;
    }

    const char* text_;
    const char** table_;
    Range path_[64];  // the low ends, of which there are no more than bits in an index
    std::size_t path_length_ = 0;
};

}  // namespace

long BinaryPrefixSearch(const char* key, unsigned long n, const char** table, unsigned long first, unsigned long last) {
    if (table == nullptr) return -1;
    const long hit = HalvingHit(key, n, table, first, last);
    if (hit < 0) return -1;
    const std::size_t least_bytes = strnlen(key, n);
    long best = hit;
    std::size_t best_bytes = std::strlen(table[hit]);
    // Whether the search goes on behind entry `i`.
    const auto consider = [&](unsigned long i) {
        if (std::strncmp(key, table[i], n) != 0) return false;
        const std::size_t bytes = std::strlen(table[i]);
        if (bytes < best_bytes) {
            best = static_cast<long>(i);
            best_bytes = bytes;
        }
        return true;
    };
    const auto start = static_cast<unsigned long>(hit);
    for (unsigned long i = start; i > first && best_bytes > least_bytes && consider(i - 1);) --i;
    for (unsigned long i = start; i < last && best_bytes > least_bytes && consider(i + 1);) ++i;
    return best;
}

long MaxMatching(const char* text, const char** table, unsigned long count, long* index) {
    *index = -1;
    if (table == nullptr) return 0;
    // Every entry that the text starts with stands at or before the text, and the last entry there either is
    // one, or shares with the text, and so with all of them, no more than its beginning.
    PrefixFinder finder(text, table);
    Range range = finder.FindUpToText(count);
    for (; range.end > 0 && range.common_bytes > 0; range = finder.FindUpToCommon(range)) {
        const char* const entry = table[range.end - 1];
        if (entry[range.common_bytes] != '\0') continue;
        *index = static_cast<long>(range.end - 1);
        if (range.end > 1 && std::strcmp(table[range.end - 2], entry) == 0) {
            const long hit = HalvingHit(text, range.common_bytes, table, 0, count - 1);
            if (hit >= 0) *index = std::min(*index, hit);
        }
        return static_cast<long>(range.common_bytes);
    }
    return 0;
}
