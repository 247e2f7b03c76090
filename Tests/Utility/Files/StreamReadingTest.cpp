#include <climits>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Support/TestSupport.h"
#include "Utility/Files/FileQueries.h"
#include "Utility/Files/WordReader.h"
#include "Utility/Global.h"

namespace {

using test_support::Bytes;
using test_support::WriteFileBytes;
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

class StreamReading : public testing::Test {
protected:
    Stream OpenWith(const std::string& content) const {
        WriteFileBytes(folder_ / "stream", content);
        return Stream(std::fopen((folder_ / "stream").c_str(), "rb"), std::fclose);
    }

    test_support::TempFolder folder_;
    test_support::Restore<bool> log_{g_bLog};
};

TEST_F(StreamReading, CountsLinesInPiecesOf999Bytes) {
    const std::pair<std::string, std::size_t> kRows[] = {
        {"", 0},
        {"a\nb", 2},
        {"\n\n", 2},
        {Bytes("a\0\n\0"), 2},
        {std::string(2500, 'x'), 3},
        {std::string(998, 'x') + "\n", 1},
        {std::string(999, 'x') + "\n", 2},
        {std::string(1998, 'x') + "\nb", 4},
    };
    for (const auto& [content, count] : kRows) {
        SCOPED_TRACE(content.size());
        const Stream stream = OpenWith(content);
        std::fseek(stream.get(), 1, SEEK_SET);
        EXPECT_EQ(GetFileLinesCount(stream.get()), count);
        EXPECT_EQ(std::ftell(stream.get()), 0);
    }
    const Stream unreadable(std::fopen(folder_.path().c_str(), "rb"), std::fclose);
    EXPECT_EQ(GetFileLinesCount(unreadable.get()), 0u);
}

TEST_F(StreamReading, TakesWordsUpToTheLimit) {
    const std::string text = "a \tb\tc d\r\n \n\xD6\xD0 f\ng\nh";
    const std::string word(6000, 'w');
    const struct {
        std::string content;
        int max_words;
        std::vector<std::string> words;
        std::string next;  // what the stream goes on with
    } kRows[] = {
        {text, 3, {"a", "b", "c"}, "\xD6\xD0 f\ng\nh"},
        {text, 4, {"a", "b", "c", "d"}, "\xD6\xD0 f\ng\nh"},
        {text, 5, {"a", "b", "c", "d", "\xD6\xD0"}, "h"},
        {text, INT_MAX, {"a", "b", "c", "d", "\xD6\xD0", "f", "g", "h"}, ""},
        {text, 0, {}, " \n\xD6\xD0 f\ng\nh"},
        {text, -1, {}, " \n\xD6\xD0 f\ng\nh"},
        {Bytes("a\0b\nc"), 9, {"a", "c"}, ""},
        {word + word, 9, {(word + word).substr(0, 10239), word.substr(0, 12000 - 10239)}, ""},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.content.substr(0, 30) + " " + std::to_string(row.max_words));
        const Stream stream = OpenWith(row.content);
        std::vector<std::string> words = {"before"}, expected = row.words;
        EXPECT_EQ(ReadNWord(stream.get(), row.max_words, words), row.words.size() + 1);
        expected.insert(expected.begin(), "before");
        EXPECT_EQ(words, expected);
        char next[100] = {};
        std::fread(next, 1, sizeof next - 1, stream.get());
        EXPECT_EQ(next, row.next);
    }
}

TEST_F(StreamReading, JudgesAndMeasuresByName) {
    g_bLog = false;
    const std::string name = folder_ / "page";
    const std::pair<std::string, bool> kRows[] = {{"plain words", true},
                                                  {"", false},
                                                  {"\xD6\xD0\xCE\xC4", false},
                                                  {Bytes("ab\0\xD6\xD0\xCE\xC4"), true}};
    for (const auto& [content, is_english] : kRows) {
        SCOPED_TRACE(content);
        WriteFileBytes(name, content);
        EXPECT_EQ(IsEnglishTextFile(name.c_str()), is_english);
        EXPECT_EQ(get_file_size(name.c_str()), static_cast<long>(content.size()));
    }
    EXPECT_FALSE(IsEnglishTextFile((folder_ / "missing").c_str()));
    EXPECT_EQ(get_file_size((folder_ / "missing").c_str()), -1);
    EXPECT_GE(get_file_size(folder_.path().c_str()), 0);
}

}  // namespace
