#include "Utility/StringToolkit/PrefixSearch.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

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

// How many of the `count` entries stand at or before the first `bytes` bytes of `text`.
unsigned long CountUpTo(const char* text, std::size_t bytes, const char** table, unsigned long count) {
    const auto stands_behind = [bytes](const char* prefix, const char* entry) {
        if (bytes == kWholeText) return std::strcmp(entry, prefix) > 0;
        const int order = std::strncmp(entry, prefix, bytes);
        return order > 0 || (order == 0 && entry[bytes] != '\0');
    };
    return static_cast<unsigned long>(std::upper_bound(table, table + count, text, stands_behind) - table);
}

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
    std::size_t bytes = kWholeText;
    for (unsigned long end = count; (end = CountUpTo(text, bytes, table, end)) > 0; --end) {
        const char* const entry = table[end - 1];
        std::size_t common_bytes = 0;
        while (common_bytes < bytes && entry[common_bytes] != '\0' && entry[common_bytes] == text[common_bytes]) {
            ++common_bytes;
        }
        if (common_bytes == 0) break;
        if (entry[common_bytes] == '\0') {
            *index = static_cast<long>(end - 1);
            if (end > 1 && std::strcmp(table[end - 2], entry) == 0) {
                *index = std::min(*index, HalvingHit(text, common_bytes, table, 0, count - 1));
            }
            return static_cast<long>(common_bytes);
        }
        bytes = common_bytes;
    }
    return 0;
}
