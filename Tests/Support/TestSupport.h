#ifndef UTILITY_TESTS_TESTSUPPORT_H
#define UTILITY_TESTS_TESTSUPPORT_H

// What several test programs need: bytes shown in hexadecimal, blocks of an exact size, fresh folders, streams with
// known content, settings put back; and the standard headers that most of them use.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

namespace test_support {

// Whether this machine stores the low byte of a number first.
inline constexpr bool kLowByteFirst = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

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

// The bytes in a block of just their size, where AddressSanitizer sees one byte too many; Exactly(text + '\0') for a
// text that ends with a NUL.
inline std::vector<char> Exactly(std::string_view bytes) {
    return {bytes.begin(), bytes.end()};
}

// The character of a double-byte encoding that has this code: one byte below 0x100, lead and trail byte above.
inline std::string Character(unsigned code) {
    std::string bytes(1, static_cast<char>(code & 0xFF));
    return code > 0xFF ? static_cast<char>(code >> 8) + bytes : bytes;
}

// The words of a text, cut at white space.
inline std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

// Every text of at most `max_bytes` bytes over the alphabet, the empty one first.
inline std::vector<std::string> AllTexts(std::string_view alphabet, std::size_t max_bytes) {
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; texts[i].size() < max_bytes; ++i)
        for (const char c : alphabet) texts.push_back(texts[i] + c);
    return texts;
}

// Up to four runs of up to 40 pieces, each run from one of the groups, as loops over runs of alike characters meet
// them; a group is pieces separated by blanks.
inline std::string RandomRuns(std::mt19937& random, const std::vector<std::string>& groups) {
    std::string text;
    for (auto runs = random() % 5; runs > 0; --runs) {
        const std::vector<std::string> pieces = Words(groups[random() % groups.size()]);
        for (auto left = random() % 3 == 0 ? random() % 41 : random() % 6; left > 0; --left)
            text += pieces[random() % pieces.size()];
    }
    return text;
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

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

inline Stream Open(const std::string& path, const char* mode) {
    return Stream(std::fopen(path.c_str(), mode), std::fclose);
}

// A nameless file open for reading and writing, at its beginning.
inline Stream StreamOf(const std::string& bytes = {}) {
    Stream stream(std::tmpfile(), std::fclose);
    (void)std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
    std::rewind(stream.get());
    return stream;
}

// Everything in the file, which is at its beginning afterwards.
inline std::string BytesIn(const Stream& stream) {
    std::string bytes;
    std::rewind(stream.get());
    for (int c; (c = std::getc(stream.get())) != EOF;) bytes += static_cast<char>(c);
    std::rewind(stream.get());
    return bytes;
}

// What `call` writes to standard output.
template <typename Call>
std::string PrintedBy(Call call) {
    testing::internal::CaptureStdout();
    call();
    return testing::internal::GetCapturedStdout();
}

inline void SetTimeZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

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
    const bool works =
        std::setlocale(LC_ALL, "zh_CN.gbk") != nullptr && std::mbstowcs(wide, "\xD6\xD0", 1) == 1 && wide[0] == 0x4E2D;
    std::setlocale(LC_ALL, before.c_str());
    return works;
}

}  // namespace test_support

// Skips the test, visibly, where the machine has no GBK locale to compare with.
#define SKIP_WITHOUT_GBK_LOCALE() \
    if (!test_support::HasGbkLocale()) GTEST_SKIP() << "no zh_CN.gbk locale on this machine (./test.sh makes one)"

#endif
