#include "Utility/ChineseText/CharacterLists.h"

#include <cstring>
#include <string_view>

#include "Internal/CharacterSet.h"
#include "Utility/ChineseText/CharacterClass.h"

namespace {

using utility::internal::BytesTaken;
using utility::internal::CharacterSet;
using utility::internal::CharacterUnit;
using utility::internal::IsAscii;
using utility::internal::ReadUnit;

bool IsInList(const char* list, CharacterUnit unit) {
    const char bytes[] = {static_cast<char>(unit.lead), static_cast<char>(unit.trail), '\0'};
    if (IsAscii(unit.lead)) return unit.lead != 0 && std::strchr(list, bytes[0]) != nullptr;
    return CC_Find(list, bytes) != nullptr;
}

}  // namespace

std::size_t GetCharCount(const char* list, const char* text, unsigned long length) {
    // In a text this short, a search for each character beats making a set of the list.
    constexpr std::size_t kFewBytes = 64;
    if (length == 0) length = std::strlen(text);
    if (length > kFewBytes) return CharacterSet<128>(std::string_view(list)).Count(text, length);
    std::size_t count = 0;
    for (std::size_t pos = 0; pos < length;) {
        const CharacterUnit unit = ReadUnit(text + pos);
        count += IsInList(list, unit);
        pos += BytesTaken(unit);
    }
    return count;
}
