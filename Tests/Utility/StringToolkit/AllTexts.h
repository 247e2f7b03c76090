#ifndef UTILITY_TESTS_STRINGTOOLKIT_ALLTEXTS_H
#define UTILITY_TESTS_STRINGTOOLKIT_ALLTEXTS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

using Strings = std::vector<std::string>;

// Every text of at most `max_bytes` bytes over the alphabet, the empty one first.
inline Strings AllTexts(std::string_view alphabet, std::size_t max_bytes) {
    Strings texts = {""};
    for (std::size_t i = 0; texts[i].size() < max_bytes; ++i) {
        for (const char c : alphabet) texts.push_back(texts[i] + c);
    }
    return texts;
}

}  // namespace test_support

#endif
