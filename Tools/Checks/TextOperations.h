#ifndef UTILITY_TOOLS_TEXTOPERATIONS_H
#define UTILITY_TOOLS_TEXTOPERATIONS_H

// Every public operation on text, as a function of one text, so that what all must keep is checked for all alike: time
// linear in the text, the same answer in every thread, nothing read beyond the text, no harm from a failed allocation.

#include <cstddef>
#include <string>
#include <vector>

namespace checks {

// `size` bytes, any of which may be NUL, and a NUL behind them.
struct Text {
    const char* chars;
    std::size_t size;
};

enum class Growth { kLinear, kQuadratic };

struct TextOperation {
    const char* name;
    std::string (*run)(const Text& text);  // the whole of its answer
    Growth growth = Growth::kLinear;
};

const std::vector<TextOperation>& TextOperations();

}  // namespace checks

#endif
