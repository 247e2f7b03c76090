#ifndef UTILITY_BENCHMARKS_PEERS_H
#define UTILITY_BENCHMARKS_PEERS_H

// Other programs' converters in the form that contests take. ICU and uchardet are there where CMake found them.

#include <iconv.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#ifdef UTILITY_BENCHMARK_ICU
#include <unicode/ucnv.h>
#endif

namespace bench {

// A converter of iconv with a buffer for `most_bytes` of output.
class IconvPeer {
public:
    IconvPeer(const char* to, const char* from, std::size_t most_bytes)
        : converter_(iconv_open(to, from), &iconv_close), buffer_(most_bytes) {}

    std::string_view Convert(std::string_view text) {
        // iconv reads only; its parameter has no const for historical reasons.
        char *in = const_cast<char*>(text.data()), *out = buffer_.data();
        std::size_t in_left = text.size(), out_left = buffer_.size();
        iconv(converter_.get(), &in, &in_left, &out, &out_left);
        return {buffer_.data(), buffer_.size() - out_left};
    }

private:
    std::shared_ptr<void> converter_;
    std::vector<char> buffer_;
};

#ifdef UTILITY_BENCHMARK_ICU
using IcuConverter = std::shared_ptr<UConverter>;

inline IcuConverter OpenIcu(const char* encoding) {
    UErrorCode error = U_ZERO_ERROR;
    return IcuConverter(ucnv_open(encoding, &error), &ucnv_close);
}

// From an encoding to UTF-16 in the machine's order.
class IcuToUtf16 {
public:
    IcuToUtf16(const char* from, std::size_t most_units) : converter_(OpenIcu(from)), buffer_(most_units + 1) {}

    std::string_view Convert(std::string_view text) {
        UErrorCode error = U_ZERO_ERROR;
        const int32_t units = ucnv_toUChars(converter_.get(), buffer_.data(), static_cast<int32_t>(buffer_.size()),
                                            text.data(), static_cast<int32_t>(text.size()), &error);
        return {reinterpret_cast<const char*>(buffer_.data()), 2 * static_cast<std::size_t>(units)};
    }

private:
    IcuConverter converter_;
    std::vector<UChar> buffer_;
};

// From one encoding to another, through a pivot buffer of ICU's.
class IcuPeer {
public:
    IcuPeer(const char* to, const char* from, std::size_t most_bytes)
        : to_(OpenIcu(to)), from_(OpenIcu(from)), buffer_(most_bytes + 1) {}

    std::string_view Convert(std::string_view text) {
        UErrorCode error = U_ZERO_ERROR;
        char* out = buffer_.data();
        const char* in = text.data();
        ucnv_convertEx(to_.get(), from_.get(), &out, buffer_.data() + buffer_.size(), &in, in + text.size(), nullptr,
                       nullptr, nullptr, nullptr, true, true, &error);
        return {buffer_.data(), static_cast<std::size_t>(out - buffer_.data())};
    }

private:
    IcuConverter to_, from_;
    std::vector<char> buffer_;
};
#endif

}  // namespace bench

#endif
