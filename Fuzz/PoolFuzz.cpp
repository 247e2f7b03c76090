// Pools and compact storage read back from damaged files (what can be read must be written as it was), and the
// operations on sets of integers.

#include <MemoryExt.h>

#include <climits>
#include <cstdint>
#include <iterator>

#include "FuzzSupport.h"

namespace {

using fuzz::Stream;

// What the pool writes, as a string.
template <typename Pool>
std::string Written(const Pool& pool) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const out = open_memstream(&bytes, &size);
    pool.Write(out);
    (void)std::fclose(out);
    const std::unique_ptr<char, decltype(&std::free)> owner(bytes, &std::free);
    return std::string(bytes, size);
}

void CheckFiles(const std::string& bytes) {
    CIntArray integers, integers_again;
    const Stream integer_file(bytes), string_file(bytes), text_file(bytes);
    FUZZ_CHECK(integers.Read(integer_file.file) <= bytes.size() / sizeof(int));
    FUZZ_CHECK(integers.m_nCount >= 0 && integers.m_nCount <= integers.m_nCapacity);
    const std::string integer_form = Written(integers);
    integers_again.Read(Stream(integer_form).file);
    FUZZ_CHECK(Written(integers_again) == integer_form);

    CStaticStr strings, strings_again;
    const int offset = strings.AddString("before");
    FUZZ_CHECK(offset == 0);
    strings.Read(string_file.file);
    FUZZ_CHECK(strings.m_nSize <= strings.m_nCapacity);
    if (strings.m_pBuf != nullptr) FUZZ_CHECK(strings.m_pBuf[strings.m_nSize] == '\0');
    const std::string string_form = Written(strings);
    strings_again.Read(Stream(string_form).file);
    FUZZ_CHECK(Written(strings_again) == string_form);
    const int added = strings.AddString("behind");
    FUZZ_CHECK(added < 0 || std::strcmp(strings.GetStr(added), "behind") == 0);

    std::string text;
    tstring_load(text, text_file.file);
    FUZZ_CHECK(text.size() <= bytes.size());
    for (std::size_t pos = 0; pos + 4 <= bytes.size(); pos += 4) {
        int value = 0, again = 0;
        unsigned char code[4], again_code[4];
        std::memcpy(code, bytes.data() + pos, 4);
        const int length = int_uncompress(code, &value);
        FUZZ_CHECK(length >= 1 && length <= 4 && value >= 0);
        FUZZ_CHECK(int_compress(value, again_code) <= length && int_uncompress(again_code, &again) >= 1 &&
                   again == value);
    }
}

void CheckPool(const std::vector<int>& first, const std::vector<int>& sorted, _tIntArray odd_range) {
    CIntArray pool;
    _tIntArray range, sorted_range;
    FUZZ_CHECK(pool.GenerateIntList(first, range) == static_cast<int>(first.size()));
    FUZZ_CHECK(pool.GenerateIntList(sorted, sorted_range) == static_cast<int>(sorted.size()));
    std::vector<int> list, other = first;
    FUZZ_CHECK(pool.GetVector(range, list) == first.size() && list == first);
    std::sort(other.begin(), other.end());
    const int length = static_cast<int>(other.size());
    std::vector<int> common;
    std::set_intersection(sorted.begin(), sorted.end(), other.begin(), other.end(), std::back_inserter(common));
    FUZZ_CHECK(pool.Or(other.data(), length, sorted_range) == !common.empty());
    FUZZ_CHECK(pool.And(other.data(), length, sorted_range) == (common == sorted));
    for (const int value : first) FUZZ_CHECK(pool.IsExist(value, range));
    pool.Or(other.data(), length, odd_range), pool.And(other.data(), length, odd_range), pool.IsExist(0, odd_range);
    pool.GetValue(odd_range.nStart);
}

void CheckSets(std::vector<int> values, const std::vector<int>& sorted, int offset) {
    std::vector<int> common, expected;
    Intersection(sorted, sorted, 0, common);
    FUZZ_CHECK(common == sorted);
    std::sort(values.begin(), values.end());
    common.clear();
    Intersection(values, sorted, 0, common);
    std::set_intersection(values.begin(), values.end(), sorted.begin(), sorted.end(), std::back_inserter(expected));
    FUZZ_CHECK(common == expected);
    Intersection(values, sorted, offset, common);
    const int place = LocateIndex(offset, sorted);
    const auto bound = std::lower_bound(sorted.begin(), sorted.end(), offset) - sorted.begin();
    FUZZ_CHECK(place == (bound == static_cast<long>(sorted.size()) ? -1 : bound));
    std::vector<int> table = sorted;
    const int found = BinarySearch(offset, table.data(), static_cast<int>(table.size()));
    FUZZ_CHECK((found >= 0) == std::binary_search(sorted.begin(), sorted.end(), offset));
    FUZZ_CHECK((found >= 0) == IsExists(offset, sorted));
    const std::size_t size = values.size();
    const bool is_changed = Not(values, sorted);
    FUZZ_CHECK(is_changed == (values.size() < size) && values.size() + expected.size() == size);

    std::vector<unsigned long> sizes;
    for (const int value : sorted) sizes.push_back(static_cast<unsigned long>(value) >> (value & 31));
    for (const bool balance : {false, true}) {
        int count = 0;
        const int start = MergeSelect(sizes, count, balance);
        FUZZ_CHECK(start >= 0 && count >= 0 &&
                   static_cast<std::size_t>(start) + static_cast<std::size_t>(count) <= sizes.size());
        FUZZ_CHECK(sizes.size() < 2 ? count == 0 : count >= 1);
    }
    char* buffer = nullptr;
    int used = 0, capacity = 0;
    for (const int value : values) used = WriteBuf(&buffer, used, capacity, value, (value & 1) != 0);
    FUZZ_CHECK(static_cast<std::size_t>(used) == 4 * values.size() && used <= capacity);
    std::free(buffer);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    CheckFiles(std::string(reinterpret_cast<const char*>(data), size));
    fuzz::Input input(data, size);
    const std::size_t cut = input.Number(200);
    // Small numbers, so that some are equal; and a few of any size.
    std::vector<int> numbers = input.Integers();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (i % 8 != 0) numbers[i] &= 15;
    const auto middle = numbers.begin() + static_cast<long>(std::min(cut, numbers.size()));
    const std::vector<int> first(numbers.begin(), middle);
    std::vector<int> sorted(middle, numbers.end());
    std::sort(sorted.begin(), sorted.end());
    const int any = numbers.empty() ? 0 : numbers.front();
    CheckPool(first, sorted, {any, numbers.empty() ? 0 : numbers.back()});
    CheckSets(first, sorted, any);
    return 0;
}
