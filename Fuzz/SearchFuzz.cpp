// Searches, comparisons, dictionaries, orders and hashes.

#include <cmath>

#include "FuzzSupport.h"

namespace {

constexpr std::string_view kOverlooked = " \r\n";

void CheckLocate(const std::string& text, const std::string& pattern) {
    unsigned long start = 0, end = 0;
    int offset = 0;
    const int result = StrLocate(text.c_str(), pattern.c_str(), start, end, offset);
    const std::string needle = fuzz::Without(pattern, kOverlooked), hay = fuzz::Without(text, kOverlooked);
    const bool is_there = !needle.empty() && hay.find(needle) != std::string::npos;
    FUZZ_CHECK(start <= end && end <= text.size());
    if (result == 0) FUZZ_CHECK(fuzz::Without(text.substr(start, end - start), kOverlooked) == needle);
    if (result == 0) FUZZ_CHECK(is_there);
    if (result < 0) FUZZ_CHECK(!is_there && start == 0 && end == 0);
    if (result > 0) FUZZ_CHECK(static_cast<std::size_t>(result) <= pattern.size() && end == text.size());

    unsigned long position = 0;
    for (const int maximum : {-1, 0, 1, 5}) {
        StrMatch(pattern.c_str(), text.c_str(), position, maximum);
        FUZZ_CHECK(position <= text.size());
    }
    std::string common;
    const unsigned length = prefixMatch(text.c_str(), pattern.c_str(), common);
    FUZZ_CHECK(common.size() == length && hay.substr(0, length) == common && needle.substr(0, length) == common);
    FUZZ_CHECK(length == hay.size() || length == needle.size() || hay[length] != needle[length]);
}

// The entries of a dictionary, its order made sure of; what is found is compared with what looking at each entry finds.
void CheckDictionary(std::vector<std::string> entries, const std::string& key) {
    std::sort(entries.begin(), entries.end());
    std::vector<const char*> table;
    for (const std::string& entry : entries) table.push_back(entry.c_str());
    std::size_t longest = 0;
    for (const std::string& entry : entries)
        if (key.compare(0, entry.size(), entry) == 0) longest = std::max(longest, entry.size());
    long index = 0;
    FUZZ_CHECK(MaxMatching(key.c_str(), table.data(), table.size(), &index) == static_cast<long>(longest));
    FUZZ_CHECK(longest == 0 ? index == -1 : entries[static_cast<std::size_t>(index)] == key.substr(0, longest));
    for (std::size_t n = 0; n <= std::min<std::size_t>(key.size(), 8) && !table.empty(); ++n) {
        std::size_t shortest = std::string::npos;
        for (const std::string& entry : entries)
            if (entry.compare(0, n, key, 0, n) == 0) shortest = std::min(shortest, entry.size());
        const long found = BinaryPrefixSearch(key.c_str(), n, table.data(), 0, table.size() - 1);
        FUZZ_CHECK((found >= 0) == (shortest != std::string::npos));
        if (found >= 0) FUZZ_CHECK(entries[static_cast<std::size_t>(found)].size() == shortest);
    }
    const int count = static_cast<int>(table.size());
    const bool is_entry = std::find(entries.begin(), entries.end(), key) != entries.end();
    FUZZ_CHECK(IsExists(key.c_str(), table.data(), count) == is_entry);
    for (std::string& entry : entries) toLower(entry);
    std::sort(entries.begin(), entries.end());
    std::string lower = key;
    toLower(lower);
    const int place = BinarySearch(key.c_str(), entries);
    FUZZ_CHECK((place >= 0) == std::binary_search(entries.begin(), entries.end(), lower));
    if (place >= 0) FUZZ_CHECK(entries[static_cast<std::size_t>(place)] == lower);
}

void CheckOrder(std::vector<std::string> list, const std::string& prefix) {
    std::vector<std::string> sorted = list;
    SortByNumber(sorted, prefix.c_str());
    const auto number = [&prefix](const std::string& entry) {
        const bool is_short = entry.size() < prefix.size();
        return is_short ? 0 : static_cast<int>(std::strtol(entry.c_str() + prefix.size(), nullptr, 10));
    };
    std::stable_sort(list.begin(), list.end(),
                     [&number](const std::string& a, const std::string& b) { return number(a) < number(b); });
    FUZZ_CHECK(sorted == list);
}

void CheckHashes(const std::string& text) {
    std::string folded = text;
    toLower(folded);
    FUZZ_CHECK(Tianlhash(text.c_str()) == Tianlhash(folded.c_str()));
    unsigned long polynomial = 0;
    for (const char c : text) polynomial = 31 * polynomial + static_cast<unsigned char>(c);
    FUZZ_CHECK(Strhash(text.c_str()) == polynomial && UrlHash(text.c_str()) == ELFhash(text.c_str()));
    FUZZ_CHECK(_hf(text.c_str()) >= 0);
    const std::string half = text.substr(0, text.size() / 8 * 4);
    FUZZ_CHECK(HfIp((half + half).c_str()) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string pattern = input.Text(), text = input.Text();
    CheckLocate(text, pattern);
    std::vector<std::string> entries;
    gfn_bSplitOR(input.Rest().c_str(), entries, ",");
    CheckDictionary(entries, text);
    CheckOrder(entries, pattern);
    CheckHashes(text);
    const std::string a = pattern.substr(0, 300), b = text.substr(0, 300);
    const double similarity = ComputeSim(a.c_str(), b.c_str());
    // Above 1 where the first repeats what the second has once.
    FUZZ_CHECK(similarity >= 0 && similarity <= 300 && ComputeSim(a.c_str(), a.c_str()) == 1);
    return 0;
}
