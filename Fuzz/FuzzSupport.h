#ifndef UTILITY_FUZZ_FUZZSUPPORT_H
#define UTILITY_FUZZ_FUZZSUPPORT_H

// What the fuzz targets share: parameters taken off the input, buffers of exactly the promised size with something
// behind them that shows a byte too many, a folder for files, and a check that stops the fuzzer.

#include <STLCodeTrans.h>
#include <Utility.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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
    // Numbers of any size, four bytes each, from what is left.
    std::vector<int> Integers() {
        std::vector<int> numbers(rest_.size() / sizeof(int));
        for (int& number : numbers) {
            std::memcpy(&number, rest_.data(), sizeof number);
            rest_.remove_prefix(sizeof number);
        }
        return numbers;
    }

private:
    std::string_view rest_;
};

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kCanary = 0;  // the sanitizer sees the first byte too many, and reads as well
#elif defined(__has_feature)
constexpr std::size_t kCanary = __has_feature(address_sanitizer) ? 0 : 16;
#else
constexpr std::size_t kCanary = 16;
#endif

// Exactly `size` bytes, and behind them what nobody may touch.
class Exact {
public:
    explicit Exact(std::size_t size) : bytes_(new char[size + kCanary]), size_(size) {
        std::memset(bytes_.get(), 'x', size + kCanary);
    }
    // The text with its NUL.
    explicit Exact(const std::string& text) : Exact(text.size() + 1) {
        std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
    }
    ~Exact() {
        for (std::size_t i = 0; i < kCanary; ++i) FUZZ_CHECK(bytes_[size_ + i] == 'x');
    }
    Exact(const Exact&) = delete;
    Exact& operator=(const Exact&) = delete;
    char* get() { return bytes_.get(); }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(bytes_.get()); }
    std::size_t size() const { return size_; }
    // What stands in front of the first NUL, which must be there.
    std::string Text() const {
        const void* const end = std::memchr(bytes_.get(), '\0', size_);
        FUZZ_CHECK(end != nullptr);
        return std::string(static_cast<const char*>(bytes_.get()), static_cast<const char*>(end));
    }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

// Neither log lines nor what the library prints.
inline const bool kQuiet = (g_bLog = false, std::freopen("/dev/null", "w", stdout) != nullptr);

// A folder of this process's own, removed at its end.
class Folder {
public:
    static std::string File(const char* name) {
        static const Folder folder;
        return folder.path_ + '/' + name;
    }

private:
    Folder() : path_((std::filesystem::temp_directory_path() / ("fuzz-" + std::to_string(getpid()))).string()) {
        std::filesystem::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string path_;
};

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    FUZZ_CHECK(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
    (void)std::fclose(file);
}

// A stream over the bytes, which the operating system knows nothing of.
struct Stream {
    explicit Stream(std::string bytes, const char* mode = "rb")
        : content(std::move(bytes)), file(fmemopen(content.data(), content.size(), mode)) {}
    ~Stream() {
        if (file != nullptr) (void)std::fclose(file);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    std::string content;
    std::FILE* file;
};

inline std::string Without(std::string text, std::string_view bytes) {
    text.erase(
        std::remove_if(text.begin(), text.end(), [bytes](char c) { return bytes.find(c) != std::string_view::npos; }),
        text.end());
    return text;
}

inline std::string Joined(const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& piece : pieces) text += piece;
    return text;
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#endif
