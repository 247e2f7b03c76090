#include "Utility/Extraction/ItemLookup.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "Internal/ReadInt.h"

namespace {

std::string Concatenate(std::initializer_list<std::string_view> parts) {
    std::string whole;
    for (const std::string_view part : parts) whole += part;
    return whole;
}

// Behind the first occurrence of `pattern` that lies within the first `max_size` bytes, or null; null in a
// null text. Not by strstr, which on some systems takes the product of both lengths where they are made of
// the same bytes. memmem wants the size of the text, which is measured window by window, so that a near
// occurrence is found without it.
const char* FindBehind(const char* text, const std::string& pattern, std::size_t max_size = SIZE_MAX) {
    if (text == nullptr) return nullptr;
    constexpr std::size_t kFirstWindow = 4096;
    const std::size_t overlap = pattern.size() - 1;
    for (std::size_t window = std::max(kFirstWindow, 4 * pattern.size());; window *= 2) {
        const std::size_t size = strnlen(text, std::min(window, max_size));
        if (const void* const found = memmem(text, size, pattern.data(), pattern.size())) {
            return static_cast<const char*>(found) + pattern.size();
        }
        if (size < window) return nullptr;
        text += size - overlap;  // an occurrence may straddle the end of the window
        max_size -= size - overlap;
    }
}

// Where the values start, or null.
const char* FindItemValue(const char* text, const char* name) {
    return FindBehind(text, Concatenate({"<", name, ">"}));
}
const char* FindJsonValue(const char* text, const char* key) {
    const char* const behind_key = FindBehind(text, Concatenate({"\"", key, "\":"}));
    const char* const quote = behind_key == nullptr ? nullptr : std::strchr(behind_key, '"');
    return quote == nullptr ? nullptr : quote + 1;
}

// The value runs from `start`, null if nothing was found, to `end`, null if the closing delimiter is missing.
const char* TakeValue(const char* start, const char* end, std::string& value) {
    if (start == nullptr) {
        value.clear();
    } else if (end == nullptr) {
        value = start;
    } else {
        value.assign(start, end);
    }
    return end;
}

const char* TakeQuotedValue(const char* start, std::string& value) {
    return TakeValue(start, start == nullptr ? nullptr : std::strchr(start, '"'), value);
}

const char* FindEndTag(const char* start, const char* name) {
    const std::string tag = Concatenate({"</", name, ">"});
    const char* const behind_tag = FindBehind(start, tag);
    return behind_tag == nullptr ? nullptr : behind_tag - tag.size();
}

// Read where it stands: no closing delimiter begins like a part of a number.
int ReadItem(const char* start) {
    return start == nullptr ? 0 : utility::internal::ReadInt(start);
}

}  // namespace

const char* GetXMLPropertyValue(const char* text, const char* name, std::string& value, const char* limit) {
    if (text == nullptr) return nullptr;
    const std::string pattern = Concatenate({name, "=\""});
    std::size_t max_size = SIZE_MAX;
    if (limit != nullptr) {
        // No further: a caller that goes from tag to tag would otherwise search the whole rest of its text
        // for an attribute that a tag lacks.
        const bool is_out_of_reach = std::less<>()(limit, text);
        max_size = is_out_of_reach ? 0 : static_cast<std::size_t>(limit - text) + pattern.size();
    }
    return TakeQuotedValue(FindBehind(text, pattern, max_size), value);
}

const char* GetXMLItemValue(const char* text, const char* name, std::string& value) {
    if (text == nullptr) return nullptr;
    const char* const start = FindItemValue(text, name);
    return TakeValue(start, FindEndTag(start, name), value);
}

bool GetXMLItemValue(const char* text, const char* name, char* buffer) {
    *buffer = '\0';
    const char* const start = FindItemValue(text, name);
    if (start == nullptr) return false;
    const char* const end = FindEndTag(start, name);
    const std::size_t size = end == nullptr ? std::strlen(start) : static_cast<std::size_t>(end - start);
    std::memcpy(buffer, start, size);
    buffer[size] = '\0';
    return true;
}

int GetXMLItemInt(const char* text, const char* name) {
    return ReadItem(FindItemValue(text, name));
}

const char* GetJsonItemValue(const char* text, const char* key, std::string& value) {
    if (text == nullptr) return nullptr;
    return TakeQuotedValue(FindJsonValue(text, key), value);
}

int GetJsonItemInt(const char* text, const char* key) {
    return ReadItem(FindJsonValue(text, key));
}
