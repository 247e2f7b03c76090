#include "Utility/StringToolkit/Replacing.h"

#include <string_view>
#include <utility>

#include "Internal/SubstringSearch.h"

using utility::internal::FindFirst;

std::size_t gfn_vReplaceSubstr(std::string& text, const char* old_text, const char* new_text) {
    if (text.empty() || old_text == nullptr || *old_text == '\0') return 0;
    const std::string_view searched(old_text);
    const std::string_view inserted(new_text);
    std::string replaced;
    std::size_t count = 0;
    std::size_t rest = 0;
    for (std::size_t found; (found = FindFirst(text, searched, rest)) != std::string::npos; ++count) {
        replaced.append(text, rest, found - rest).append(inserted);
        rest = found + searched.size();
    }
    if (count == 0) return 0;
    replaced.append(text, rest);
    text = std::move(replaced);
    return count;
}
