#ifndef UTILITY_TESTS_TESTSUPPORT_H
#define UTILITY_TESTS_TESTSUPPORT_H

// What several test programs need: bytes shown in hexadecimal, fresh folders, settings put back.

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_support {

// Bytes as "D6 D0 41", for comparing and naming what no terminal shows.
inline std::string Hex(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        if (!text.empty()) text += ' ';
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

// A string that may hold NUL bytes, from a literal.
template <std::size_t N>
std::string Bytes(const char (&literal)[N]) {
    return std::string(literal, N - 1);
}

// Every text of at most `max_bytes` bytes over the alphabet, the empty one first.
inline std::vector<std::string> AllTexts(std::string_view alphabet, std::size_t max_bytes) {
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; texts[i].size() < max_bytes; ++i) {
        for (const char c : alphabet) texts.push_back(texts[i] + c);
    }
    return texts;
}

// Puts a process-wide setting back when the test ends.
template <typename T>
class Restore {
public:
    explicit Restore(T& setting) : setting_(setting), value_(setting) {}
    ~Restore() { setting_ = std::move(value_); }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    T& setting_;
    T value_;
};

// A fresh folder, removed with its content at the end.
class TempFolder {
public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "utility-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

inline void WriteFileBytes(const std::string& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(out.good()) << path;
}

inline std::string ReadFileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << path;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// Whether the C library converts GBK under the locale zh_CN.gbk; leaves the locale as it was.
inline bool HasGbkLocale() {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    wchar_t wide[2] = {};
    const bool works = std::setlocale(LC_ALL, "zh_CN.gbk") != nullptr &&
                       std::mbstowcs(wide, "\xD6\xD0", 1) == 1 && wide[0] == 0x4E2D;
    std::setlocale(LC_ALL, before.c_str());
    return works;
}

}  // namespace test_support

// Skips the test, visibly, where the machine has no GBK locale to compare with.
#define SKIP_WITHOUT_GBK_LOCALE()      \
    if (!test_support::HasGbkLocale()) \
    GTEST_SKIP() << "no zh_CN.gbk locale on this machine (./test.sh makes one)"

#endif
