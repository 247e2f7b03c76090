#include "Utility/Files/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

#include "Support/LogSupport.h"

namespace {

using test_support::Bytes, test_support::Hex, test_support::WriteFileBytes;

class FileReader : public test_support::LoggedTest {
protected:
    CReadFile reader_;
};

std::string WithoutNul(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text;
}

// The bytes that the buffer form hands out, or "no NUL" or "no buffer" where those are missing. Memory of that size was
// given back dirty just before, so bytes that nobody wrote show.
std::string Read(CReadFile& reader, const std::string& name, long offset = 0, std::size_t count = 0,
                 bool whole_file = true) {
    std::fill_n(static_cast<volatile char*>(std::make_unique<char[]>(count + 1).get()), count + 1, '\xAA');
    char* bytes = nullptr;
    const std::size_t size = reader.ReadFile(name.c_str(), &bytes, offset, count, whole_file);
    const std::unique_ptr<char[]> owner(bytes);
    if (bytes == nullptr) return "no buffer";
    return bytes[size] == '\0' ? std::string(bytes, size) : "no NUL";
}

TEST_F(FileReader, FillsUpWithZerosWhatTheFileDoesNotHave) {
    const std::string content = Bytes("ab\0def\nhi\0"), name = folder_ / "letters";
    WriteFileBytes(name, content);
    for (const long offset : {LONG_MIN, -1L, 0L, 3L, 9L, 10L, 11L, 1L << 40, LONG_MAX}) {
        for (const std::size_t count : {0u, 1u, 7u, 10u, 11u, 5000u}) {
            for (const bool whole : {false, true}) {
                SCOPED_TRACE(testing::Message() << offset << ' ' << count << ' ' << whole);
                std::string expected;
                for (std::size_t i = 0; i < (count == 0 && whole ? 10 : count); ++i) {
                    const std::size_t pos = i + static_cast<std::size_t>(offset);
                    expected += offset >= 0 && offset < 10 && pos < 10 ? content[pos] : '\0';
                }
                EXPECT_EQ(Hex(Read(reader_, name, offset, count, whole)), Hex(expected));
                std::string text = "left over";
                EXPECT_EQ(ReadFile(name.c_str(), text, offset, count, whole), WithoutNul(expected).size());
                EXPECT_EQ(Hex(text), Hex(WithoutNul(expected)));
            }
        }
    }
}

TEST_F(FileReader, ReadsWhatIsNoRegularFile) {
    CReadFile fresh;
    EXPECT_EQ(Read(fresh, "", 0, 5, true), "");
    EXPECT_EQ(Read(reader_, folder_.path(), 0, 3, false), Bytes("\0\0\0"));
    EXPECT_EQ(Read(reader_, "/dev/null", 0, 3, true), Bytes("\0\0\0"));
    const std::string pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int writer = open(pipe.c_str(), O_RDWR);
    ASSERT_EQ(write(writer, "abcdef", 6), 6);
    EXPECT_EQ(Read(reader_, pipe, 0, 4, false), "abcd");
    EXPECT_EQ(Read(reader_, pipe, 0, 2, false), "ef");
    close(writer);
}

TEST_F(FileReader, RefusesACountThatCannotBeHad) {
    const std::string name = folder_ / "small";
    WriteFileBytes(name, "0123456789");
    for (const std::size_t count : {std::size_t{1} << 50, SIZE_MAX / 2, SIZE_MAX - 1, SIZE_MAX}) {
        char untouched, *bytes = &untouched;
        EXPECT_EQ(reader_.ReadFile(name.c_str(), &bytes, 0, count, false), 0u) << count;
        EXPECT_EQ(bytes, &untouched);
    }
    EXPECT_EQ(Read(reader_, name), "0123456789");
}

TEST_F(FileReader, HoldsItsFileUntilAnotherIsOpen) {
    const std::string name = folder_ / "data.txt", other_case = folder_ / "Data.TXT", missing = folder_ / "missing";
    WriteFileBytes(name, "0123456789");
    WriteFileBytes(other_case, "another");
    for (const std::string& same : {name, other_case}) EXPECT_EQ(Read(reader_, same), "0123456789");
    std::filesystem::resize_file(name, 4);
    EXPECT_EQ(Read(reader_, name), Bytes("0123\0\0\0\0\0\0"));
    WriteFileBytes(name, "changed and grown");
    EXPECT_EQ(Read(reader_, name), "changed an");
    std::string text = missing;  // name and text may be the same string
    EXPECT_EQ(reader_.ReadFile(text.c_str(), text, 0, 0, true), 0u);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(text, "");
    EXPECT_EQ(g_sLastErrorMessage, "Error read file " + missing);
    EXPECT_EQ(Logged(".err") + Logged(".log"),
              "[]Error read file " + missing + "\n[]Failed open file  " + missing + "\n");
    std::filesystem::remove(name);
    EXPECT_EQ(Read(reader_, name), "changed an");
    EXPECT_EQ(Read(reader_, folder_.path(), 0, 1, false), Bytes("\0"));
    EXPECT_EQ(Read(reader_, name), "no buffer");
}

TEST_F(FileReader, ThreadsShareOneOverChangingNames) {
    const auto name = [this](unsigned file) { return folder_ / std::to_string(file); };
    const auto content = [](unsigned file) { return std::string(10010 + file, static_cast<char>('0' + file)); };
    for (unsigned file = 0; file < 3; ++file) WriteFileBytes(name(file), content(file));
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (unsigned thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, random = thread]() mutable {
            for (int i = 0; i < 500; ++i) {
                random = random * 1664525 + 1013904223;
                const unsigned file = (random >> 16) % 4;  // the last one does not exist
                const std::string whole = file == 3 ? "" : content(file);
                std::string text;
                reader_.ReadFile(name(file).c_str(), text, 0, 0, true);
                wrong += text != whole;
                const std::string end = Read(reader_, name(file), 10000, 20, false);
                wrong += end != (file == 3 ? "no buffer" : whole.substr(10000) + std::string(10 - file, '\0'));
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(reader_.m_nReadCount, 0);
}

}  // namespace
