#include <unistd.h>

#include <map>

#include "Support/LogSupport.h"
#include "Utility.h"

namespace {

using namespace test_support;

const std::string kDigits = "0123456789";

TEST(FileCopying, AppendsUpToALimitAndCopiesRanges) {
    unsigned char buffer[11];
    const Stream source = StreamOf(kDigits);
    for (std::size_t size = 0; size <= 11; ++size) {
        for (std::size_t end = 0; end <= 12; ++end) {
            SCOPED_TRACE(testing::Message() << size << ' ' << end);
            const Stream grown = StreamOf("start");
            const std::string whole = size == 0 ? "" : kDigits.substr(0, end == 0 ? 10 : end);
            const long length = size == 0 || end > 10 ? -2 : 5 + static_cast<long>(whole.size());
            EXPECT_EQ(FileCopy(source.get(), grown.get(), size, nullptr, end), length);
            EXPECT_EQ(BytesIn(grown), "start" + whole);
            for (std::size_t start = 0; start <= 12; ++start) {
                const Stream copy = StreamOf();
                const bool is_empty = size == 0 || start > end || start > 10;
                const std::string range = is_empty ? "" : kDigits.substr(start, end - start);
                EXPECT_EQ(FileCopy(source.get(), copy.get(), start, end, buffer, size, nullptr), range.size());
                EXPECT_EQ(BytesIn(copy), range);
            }
        }
    }
}

TEST(FileCopying, EndsWhereSomethingFails) {
    unsigned char buffer[4];
    const Stream source = StreamOf(kDigits), copy = StreamOf(), closed = StreamOf();
    const Stream directory = Open("/", "rb"), full = Open("/dev/full", "wb"), unreadable = Open("/dev/full", "wb");
    close(fileno(closed.get()));
    EXPECT_EQ(FileCopy(source.get(), full.get(), SIZE_MAX, nullptr, 0), -2);
    EXPECT_EQ(FileCopy(source.get(), closed.get(), 4, nullptr, 0), -2);
    EXPECT_EQ(FileCopy(closed.get(), copy.get(), 4, nullptr, 0), -1);
    EXPECT_EQ(FileCopy(directory.get(), copy.get(), 4, nullptr, 0), -2);
    EXPECT_EQ(FileCopy(unreadable.get(), copy.get(), 4, nullptr, 7), -2);
    EXPECT_EQ(FileCopy(source.get(), copy.get(), SIZE_MAX - 1, SIZE_MAX, buffer, 4, nullptr), 0u);
    EXPECT_EQ(BytesIn(copy), "");
}

TEST(FileCopying, ThreadsAppendToOneStream) {
    constexpr std::size_t kBlock = 2'003;  // of one letter; every block must end up in one piece
    const Stream destination = StreamOf();
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    std::vector<std::thread> threads;
    std::map<std::string, int> blocks, expected;
    for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'}) {
        expected[std::string(kBlock, letter)] = 400;
        threads.emplace_back([&destination, &mutex, block = std::string(kBlock, letter)] {
            const Stream source = StreamOf(block);
            unsigned char buffer[100];
            for (int i = 0; i < 200; ++i) {
                FileCopy(source.get(), destination.get(), 70, &mutex, 0);
                FileCopy(source.get(), destination.get(), 0, kBlock, buffer, sizeof buffer, &mutex);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    const std::string bytes = BytesIn(destination);
    for (std::size_t pos = 0; pos < bytes.size(); pos += kBlock) ++blocks[bytes.substr(pos, kBlock)];
    EXPECT_TRUE(blocks == expected);
}

class NamedFiles : public LoggedTest {
protected:
    const std::string text_ = folder_ / "text", copy_ = folder_ / "copy", nowhere_ = folder_ / "no/where";
};

TEST_F(NamedFiles, AreWrittenAndCopied) {
    EXPECT_TRUE(gfn_bWriteFile(text_.c_str(), "longer than what follows"));
    EXPECT_FALSE(FileCopy(nowhere_.c_str(), text_.c_str(), 4));
    EXPECT_TRUE(FileCopy(text_.c_str(), copy_.c_str(), 4));
    EXPECT_EQ(ReadFileBytes(copy_), "longer than what follows");
    EXPECT_TRUE(gfn_bWriteFile(text_.c_str(), Bytes("100%s\n\0lost")));
    EXPECT_TRUE(gfn_bAddFile(text_.c_str(), "\xD6\xD0\r\n"));
    EXPECT_EQ(ReadFileBytes(text_), "100%s\n\xD6\xD0\r\n");
    EXPECT_FALSE(gfn_bWriteFile(nullptr, "x") || gfn_bAddFile("", "x") || gfn_bAddFile(nowhere_.c_str(), "x"));
    // What the disk does not take goes unnoticed.
    EXPECT_TRUE(gfn_bWriteFile("/dev/full", "x") && FileCopy(text_.c_str(), "/dev/full", 4));
    EXPECT_FALSE(FileCopy(text_.c_str(), nowhere_.c_str(), 4));
    EXPECT_EQ(Logged(".err"), "[]Error read file\n[]" + nowhere_ + "\n[]Error write file\n[]" + nowhere_ + '\n');
}

TEST_F(NamedFiles, AreFoundByGroupsOfThreeBytes) {
    // clang-format off
    const std::pair<const char*, const char*> rows[] = {
        {"12", "12.txt"}, {"123", "123.html"}, {"1234", "123/4.txt"}, {"123456", "123/456.txt"},
        {"1234567", "123/456/7.txt"}, {"1234568", "123/456/8.html"}};
    // clang-format on
    const std::string base = folder_.path();
    std::string content;
    std::filesystem::create_directories(base + "/123/456");
    for (const char* const name : {"123/456/7.html", "123/456/8.txt"}) gfn_bWriteFile((folder_ / name).c_str(), "");
    for (const auto& [id, name] : rows) gfn_bWriteFile((folder_ / name).c_str(), name);
    for (const auto& [id, name] : rows) {
        EXPECT_EQ(GetFileContentById(id, base.c_str(), content), content.data());
        EXPECT_EQ(content, name);
    }
    EXPECT_EQ(GetFileContentById("12345", base.c_str(), content), nullptr);
    EXPECT_EQ(GetFileContentById("", base.c_str(), content = "before"), nullptr);
    EXPECT_EQ(content, "");
    const std::string last = "\n[]Read file by ID fail!\n[]" + base + "/123/45.html\n";
    EXPECT_EQ(Logged(".err").substr(Logged(".err").size() - last.size()), last);
}

}  // namespace
