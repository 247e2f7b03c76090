#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Detection.h"
#include "Detector/Corpus.h"

namespace {

using namespace test_support;

int Detect(const std::string& text) {
    return CodeTrans_CodeDetect(text.data(), text.size());
}

// The share, in hundredths of a per cent, of windows of `size` characters, half of them Chinese, that are taken for `code`.
int PartsRight(tools::Channel encoding, bool simplified, bool traditional, std::size_t size, int code) {
    static const tools::Encoder encoder(tools::ReadGrid(UTILITY_SOURCE_DIR "/Data/gbk.txt"),
                                        tools::ReadGrid(UTILITY_SOURCE_DIR "/Data/big5.txt"));
    int all = 0, right = 0;
    for (const tools::TextFile& file : tools::ReadCorpus(UTILITY_TEST_TEXT_FOLDER, {})) {
        if (!(file.traditional ? traditional : simplified)) continue;
        for (std::size_t pos = 0; pos + size <= file.text.size(); ++pos) {
            const std::string bytes = encoder.EncodeWindow(encoding, file.text.substr(pos, size));
            if (bytes.empty()) continue;
            ++all;
            right += Detect(bytes) == code;
        }
    }
    EXPECT_GT(all, 3000);
    return static_cast<int>(10000.0 * right / all);
}

// Just below what was reached with text that the detector was not trained on.
TEST(DetectionOfTextTest, TellsPartsOfChatFictionNewsAndSubtitles) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    const std::size_t kSizes[] = {2, 3, 4, 8, 32};
    const struct {
        tools::Channel encoding;
        bool simplified, traditional;
        int code, floors[5];
    } kRows[] = {
        {tools::kGbkChannel, true, false, 2, {9970, 9990, 9995, 10000, 10000}},
        {tools::kGbkChannel, false, true, 2, {9970, 9990, 9995, 10000, 10000}},
        {tools::kBig5Channel, false, true, 3, {9850, 9970, 9990, 10000, 10000}},
        {tools::kUtf8Channel, true, true, 1, {9995, 10000, 10000, 10000, 10000}},
        {tools::kUnicodeChannel, true, true, 8, {8200, 9350, 9750, 9990, 10000}},
    };
    for (const auto& row : kRows)
        for (std::size_t i = 0; i < std::size(kSizes); ++i)
            EXPECT_GE(PartsRight(row.encoding, row.simplified, row.traditional, kSizes[i], row.code), row.floors[i])
                << "encoding " << row.code << (row.simplified ? "" : ", Traditional") << ", " << kSizes[i];
}

TEST(DetectionOfTextTest, PicturesAmongChineseAreUtf8OrUcs2) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    for (const char* text :
         {"好😀", "😂笑", "好的👍", "谢谢🙏", "😀", "哈哈🤣🤣🤣", "🎉生日快乐🎂", "明天见👋🏻"})
        EXPECT_EQ(Detect(text), 1) << text;
    for (const char* text : {"🎉生日快乐🎂", "好的，明天见👋"})
        EXPECT_EQ(Detect(Convert("UTF-16LE", "UTF-8", text)), 8) << text;
}

// A text whose last third is in another encoding is in the encoding of the rest, and likewise its first third.
TEST(DetectionOfTextTest, TheLongerPartOfATextCounts) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    const tools::Encoder encoder(tools::ReadGrid(UTILITY_SOURCE_DIR "/Data/gbk.txt"),
                                 tools::ReadGrid(UTILITY_SOURCE_DIR "/Data/big5.txt"));
    std::u16string text;
    for (const tools::TextFile& file : tools::ReadCorpus(UTILITY_TEST_TEXT_FOLDER, {{"hant"}, {}})) text += file.text;
    const std::size_t third = text.size() / 3;
    constexpr std::pair<tools::Channel, int> kEncodings[] = {
        {tools::kGbkChannel, 2}, {tools::kBig5Channel, 3}, {tools::kUtf8Channel, 1}};
    for (const auto& [longer, code] : kEncodings) {
        for (const auto& [shorter, other] : kEncodings) {
            if (code == other) continue;
            const std::string end = encoder.Encode(longer, text.substr(0, 2 * third)) + '\n' +
                                    encoder.Encode(shorter, text.substr(2 * third));
            const std::string begin =
                encoder.Encode(shorter, text.substr(0, third)) + '\n' + encoder.Encode(longer, text.substr(third));
            EXPECT_EQ(Detect(end), code) << "then " << other;
            EXPECT_EQ(Detect(begin), code) << "behind " << other;
        }
    }
}

TEST(DetectionOfTextTest, DamageInEnglishIsNoUcs2) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    const std::string english = "<p>The quick brown fox jumps over the lazy dog</p>\n";
    for (int byte : {0x00, 0x01, 0x80, 0x92, 0xA9, 0xE9, 0xFF})
        for (std::size_t pos = 0; pos < 40; ++pos)
            EXPECT_NE(Detect(std::string(english).insert(pos, 1, static_cast<char>(byte))), 8) << byte << ", " << pos;
}

TEST(DetectionOfTextTest, AsciiIsGbkOfAnyLength) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    std::string ascii;
    for (int byte = 0x20; byte < 0x7F; ++byte) ascii += static_cast<char>(byte);
    ascii += "\t\r\n\f\x1B[31m";
    for (std::size_t length = 0; length <= ascii.size(); ++length) EXPECT_EQ(Detect(ascii.substr(0, length)), 2);
    std::string all_pairs;
    for (const char first : ascii)
        for (const char second : ascii) all_pairs += {first, second};
    EXPECT_EQ(Detect(all_pairs), 2);
    EXPECT_EQ(Detect(Convert("UCS-2LE", "UTF-8", "plain English")), 8);
}

TEST(DetectionOfTextTest, AMarkCountsOnlyAtTheVeryStart) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    const std::string gbk =
        Convert("GBK", "UTF-8", "本报讯：昨天上午，市中心图书馆正式对外开放，首日接待读者三千余人。");
    EXPECT_EQ(Detect("\xEF\xBB\xBF" + gbk), 1);
    EXPECT_EQ(Detect("\xFF\xFE" + gbk), 8);
    EXPECT_EQ(Detect("\xEF\xBB\xBF"), 1);
    for (const char* mark : {"\xEF\xBB\xBF", "\xFF\xFE"}) {
        EXPECT_EQ(Detect(" " + (mark + gbk)), 2);
        EXPECT_EQ(Detect("\xB0\xA1" + (mark + (" " + gbk))), 2);
        EXPECT_EQ(Detect(gbk + mark), 2);
        EXPECT_EQ(Detect("\xEF" + (mark + (" " + gbk))), 2);
    }
}

}  // namespace
