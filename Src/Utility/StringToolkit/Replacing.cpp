#include "Utility/StringToolkit/Replacing.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "Internal/SubstringSearch.h"

using utility::internal::FindFirst;

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// Where nothing grows, what stays moves up at once to where it ends up.
std::size_t ReplaceInPlace(std::string& text, std::string_view searched, std::string_view inserted, std::size_t found) {
    char* const begin = text.data();
    char* out = begin + found;
    std::size_t count = 0;
    while (found != kNone) {
        ++count;
        std::memcpy(out, inserted.data(), inserted.size());
        out += inserted.size();
        const std::size_t rest = found + searched.size();
        found = FindFirst(text, searched, rest);
        const std::size_t bytes = (found != kNone ? found : text.size()) - rest;
        std::memmove(out, begin + rest, bytes);
        out += bytes;
    }
    text.resize(static_cast<std::size_t>(out - begin));
    return count;
}

std::size_t ReplaceIntoCopy(std::string& text, std::string_view searched, std::string_view inserted,
                            std::size_t found) {
    std::string replaced;
    replaced.reserve(text.size() + text.size() / 8 + inserted.size());
    std::size_t count = 0;
    std::size_t rest = 0;
    for (; found != kNone; found = FindFirst(text, searched, rest), ++count) {
        replaced.append(text, rest, found - rest).append(inserted);
        rest = found + searched.size();
    }
    replaced.append(text, rest);
    text = std::move(replaced);
    return count;
}

}  // namespace

std::size_t gfn_vReplaceSubstr(std::string& text, const char* old_text, const char* new_text) {
    if (text.empty() || old_text == nullptr || *old_text == '\0') return 0;
    const std::string_view searched(old_text);
    const std::string_view inserted(new_text);
    const std::size_t found = FindFirst(text, searched, 0);
    if (found == kNone) return 0;
    if (inserted.size() > searched.size()) return ReplaceIntoCopy(text, searched, inserted, found);
    // Either may lie in the text, which changes under it.
    return ReplaceInPlace(text, std::string(searched), std::string(inserted), found);
}
