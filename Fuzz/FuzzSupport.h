#ifndef UTILITY_FUZZ_FUZZSUPPORT_H
#define UTILITY_FUZZ_FUZZSUPPORT_H

// What the fuzz targets share: parameters taken off the input, buffers of exactly the promised size, and a check that
// stops the fuzzer.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#define FUZZ_CHECK(condition)                                                                  \
    do {                                                                                       \
        if (!(condition)) {                                                                    \
            std::fprintf(stderr, "%s:%d: %s does not hold\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                      \
        }                                                                                      \
    } while (false)

namespace fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    // A number up to `limit`, from the next two bytes; 0 when the input is used up.
    std::size_t Number(std::size_t limit) {
        std::size_t value = 0;
        for (int i = 0; i < 2 && !rest_.empty(); ++i, rest_.remove_prefix(1)) {
            value = value << 8 | static_cast<unsigned char>(rest_.front());
        }
        return value % (limit + 1);
    }
    // The bytes up to the next NUL, which is dropped.
    std::string Text() {
        const std::size_t end = rest_.find('\0');
        std::string text(rest_.substr(0, end));
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return text;
    }
    std::string Rest() { return std::string(rest_); }

private:
    std::string_view rest_;
};

// Exactly `size` bytes, so that the sanitizer sees one byte too many.
class Exact {
public:
    explicit Exact(std::size_t size) : bytes_(new char[size]), size_(size) { std::memset(bytes_.get(), 'x', size); }
    // The text with its NUL.
    explicit Exact(const std::string& text) : Exact(text.size() + 1) {
        std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
    }
    char* get() { return bytes_.get(); }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(bytes_.get()); }
    std::size_t size() const { return size_; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#endif
