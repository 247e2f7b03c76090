#include "Utility/StringToolkit/Replacing.h"

#include <cstring>
#include <string_view>
#include <utility>

std::size_t gfn_vReplaceSubstr(std::string& text, const char* old_text, const char* new_text) {
    if (text.empty() || old_text == nullptr || *old_text == '\0') return 0;
    const std::string_view searched(old_text);
    const std::string_view inserted(new_text);
    std::string replaced;
    std::size_t count = 0;
    const char* rest = text.data();
    const char* const end = rest + text.size();
    // memmem rather than find(), which starts to compare anew at every place that begins like `old_text`.
    while (const void* const found =
               memmem(rest, static_cast<std::size_t>(end - rest), searched.data(), searched.size())) {
        replaced.append(rest, static_cast<const char*>(found)).append(inserted);
        rest = static_cast<const char*>(found) + searched.size();
        ++count;
    }
    if (count == 0) return 0;
    replaced.append(rest, end);
    text = std::move(replaced);
    return count;
}
