#ifndef UTILITY_TESTS_CONVERSIONSUPPORT_H
#define UTILITY_TESTS_CONVERSIONSUPPORT_H

#include <iconv.h>

#include <optional>
#include <string>

namespace test_support {

// The whole text converted by the C library, which takes no part in what is tested; nothing if it refuses.
inline std::optional<std::string> Iconv(const char* from, const char* to, std::string text) {
    std::string converted(4 * text.size() + 16, '\0');
    char *in = text.data(), *out = converted.data();
    std::size_t in_left = text.size(), out_left = converted.size();
    iconv_t converter = iconv_open(to, from);
    const std::size_t result = iconv(converter, &in, &in_left, &out, &out_left);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1)) return std::nullopt;
    converted.resize(converted.size() - out_left);
    return converted;
}

inline std::string AsBytes(const std::wstring& wide) {
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
}

}  // namespace test_support

#endif
