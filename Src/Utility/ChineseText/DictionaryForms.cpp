#include "Utility/ChineseText/DictionaryForms.h"

#include <cstring>
#include <string_view>

#include "Internal/EncodedList.h"

namespace {

constexpr std::string_view kMarks = ".,;:?!%(){+}[]/=";
constexpr auto kFullWidthMarks = utility::internal::Utf8("。，；：？！％（）｛＋｝［］／＝");
constexpr std::size_t kFormLength = 3;
static_assert(kMarks.size() == 16 && kFullWidthMarks.size() == 16 * kFormLength);

}  // namespace

bool Delimiter2DictFormat(char mark, char* form) {
    const std::size_t index = kMarks.find(mark);
    if (index == std::string_view::npos) {
        form[0] = mark;
        form[1] = '\0';
        return false;
    }
    std::memcpy(form, kFullWidthMarks.c_str() + index * kFormLength, kFormLength);
    form[kFormLength] = '\0';
    return true;
}

std::size_t MaxPrefix(const char* first, const char* second) {
    std::size_t length = 0;
    while (first[length] != '\0' && first[length] == second[length]) ++length;
    return length;
}
