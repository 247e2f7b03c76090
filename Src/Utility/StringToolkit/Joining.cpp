#include "Utility/StringToolkit/Joining.h"

#include <cstddef>
#include <string_view>

const char* Vector2Str(const std::vector<std::string>& items, const char* separator, std::string& joined) {
    const std::string_view between(separator);
    std::size_t bytes = items.size() * between.size();
    for (const std::string& item : items) bytes += item.size();
    joined.clear();
    joined.reserve(bytes);
    for (const std::string& item : items) {
        joined += item;
        if (&item != &items.back() && !item.empty()) joined += between;
    }
    return joined.c_str();
}
