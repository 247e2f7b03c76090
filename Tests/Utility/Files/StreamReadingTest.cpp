#include "Support/LogSupport.h"
#include "Utility.h"

namespace {

using test_support::Bytes, test_support::Stream, test_support::StreamOf;

TEST(StreamReading, CountsLinesInPiecesOf999Bytes) {
    // clang-format off
    const std::pair<std::string, std::size_t> rows[] = {
        {"", 0}, {"a\nb", 2}, {"\n\n", 2}, {Bytes("a\0\n\0"), 2}, {std::string(2500, 'x'), 3},
        {std::string(998, 'x') + "\n", 1}, {std::string(999, 'x') + "\n", 2}, {std::string(1998, 'x') + "\nb", 4}};
    // clang-format on
    for (const auto& [content, count] : rows) {
        SCOPED_TRACE(content.size());
        const Stream stream = StreamOf(content);
        std::fseek(stream.get(), 1, SEEK_SET);
        EXPECT_EQ(GetFileLinesCount(stream.get()), count);
        EXPECT_EQ(std::ftell(stream.get()), 0);
    }
    EXPECT_EQ(GetFileLinesCount(test_support::Open("/", "rb").get()), 0u);
}

TEST(StreamReading, TakesWordsUpToTheLimit) {
    const std::string text = "a \tb\tc d\r\n \n\xD6\xD0 f\ng\nh";
    const std::string word(6000, 'w');
    // clang-format off
    const std::tuple<std::string, int, std::vector<std::string>, std::string> rows[] = {  // and what comes next
        {text, 3, {"a", "b", "c"}, "\xD6\xD0 f\ng\nh"}, {text, 4, {"a", "b", "c", "d"}, "\xD6\xD0 f\ng\nh"},
        {text, 5, {"a", "b", "c", "d", "\xD6\xD0"}, "h"}, {text, INT_MAX, test_support::Words(text), ""},
        {text, 0, {}, " \n\xD6\xD0 f\ng\nh"}, {text, -1, {}, " \n\xD6\xD0 f\ng\nh"}, {Bytes("a\0b\nc"), 9, {"a", "c"}, ""},
        {word + word, 9, {(word + word).substr(0, 10239), word.substr(0, 12000 - 10239)}, ""}};
    // clang-format on
    for (auto [content, max_words, expected, rest] : rows) {
        SCOPED_TRACE(content.substr(0, 30) + " " + std::to_string(max_words));
        const Stream stream = StreamOf(content);
        std::vector<std::string> words = {"before"};
        expected.insert(expected.begin(), "before");
        EXPECT_EQ(ReadNWord(stream.get(), max_words, words), expected.size());
        EXPECT_EQ(words, expected);
        char next[100];
        next[std::fread(next, 1, sizeof next - 1, stream.get())] = '\0';
        EXPECT_EQ(next, rest);
    }
}

using FileQueries = test_support::LoggedTest;

TEST_F(FileQueries, JudgeAndMeasureByName) {
    g_bLog = false;
    const std::string name = folder_ / "page", missing = folder_ / "missing";
    for (const auto& [content, is_english] :
         {std::pair(Bytes("ab\0\xD6\xD0"), true), {"", false}, {"\xD6\xD0", false}}) {
        test_support::WriteFileBytes(name, content);
        EXPECT_EQ(IsEnglishTextFile(name.c_str()), is_english) << content;
        EXPECT_EQ(get_file_size(name.c_str()), static_cast<long>(content.size()));
    }
    EXPECT_TRUE(!IsEnglishTextFile(missing.c_str()) && get_file_size(missing.c_str()) == -1);
    EXPECT_GE(get_file_size(folder_.path().c_str()), 0);
}

}  // namespace
