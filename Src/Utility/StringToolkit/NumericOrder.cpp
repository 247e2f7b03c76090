#include "Utility/StringToolkit/NumericOrder.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "Internal/ReadInt.h"

namespace {

int NumberBehind(const std::string& text, std::size_t prefix_bytes) {
    if (text.size() <= prefix_bytes) return 0;
    return utility::internal::ReadInt(text.c_str() + prefix_bytes);
}

}  // namespace

bool _index_digit::operator<(const _index_digit& other) const {
    return digit < other.digit;
}

void SortByNumber(std::vector<std::string>& list, const char* prefix) {
    const std::size_t prefix_bytes = std::strlen(prefix);
    std::vector<_index_digit> records;
    records.reserve(list.size());
    for (const std::string& text : list) {
        records.push_back({static_cast<int>(records.size()), NumberBehind(text, prefix_bytes)});
    }
    std::stable_sort(records.begin(), records.end());
    std::vector<std::string> sorted;
    sorted.reserve(list.size());
    for (const _index_digit& record : records) {
        sorted.push_back(std::move(list[static_cast<std::size_t>(record.index)]));
    }
    list = std::move(sorted);
}
