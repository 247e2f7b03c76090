#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CodeMapsTestSupport.h"
#include "CodeTrans/CodeMaps/CodeMaps.h"
#include "CodeTrans/CodeMaps/Detection.h"

namespace {

using namespace test_support;

constexpr const char* kSimplified[] = {
    "本报讯：昨天上午，市中心图书馆正式对外开放，首日接待读者三千余人。",
    "受冷空气影响，未来三天北部地区气温将下降八到十度，局部有大雪。",
    "你到家了吗？我刚下地铁，雨太大了，等会儿再给你打电话。",
    "哈哈哈哈这个视频笑死我了，快发给小李看看！",
    "他推开门，屋里没有人，桌上的茶还冒着热气。",
    "第二季度公司净利润同比增长 12.5%，超出分析师预期。",
    "楼主好人一生平安，下载链接已经失效了，求补档。",
};
constexpr const char* kTraditional[] = {
    "本報訊：昨天上午，市中心圖書館正式對外開放，首日接待讀者三千餘人。",
    "受冷空氣影響，未來三天北部地區氣溫將下降八到十度，局部有大雪。",
    "你到家了嗎？我剛下捷運，雨太大了，等一下再打電話給你。",
    "這家店的牛肉麵真的很好吃，老闆人也很親切，推薦給大家！",
    "他推開門，屋裡沒有人，桌上的茶還冒著熱氣。",
    "第二季公司淨利年增 12.5%，超出分析師預期。",
    "請問各位大大，這款手機的電池可以用多久？謝謝回覆。",
};

int Detect(const std::string& text) {
    return CodeTrans_CodeDetect(text.data(), text.size());
}

TEST(DetectionOfTextTest, TellsSentencesAndNearlyAllOfTheirParts) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    const std::pair<const char*, int> kRows[] = {{"GBK", 2}, {"BIG5", 3}, {"UTF-8", 1}, {"UCS-2LE", 8}};
    for (const auto& [encoding, code] : kRows) {
        std::vector<std::string> sentences(std::begin(kTraditional), std::end(kTraditional));
        if (code != 3) sentences.insert(sentences.end(), std::begin(kSimplified), std::end(kSimplified));
        int windows = 0, right = 0;
        for (const std::string& sentence : sentences) {
            EXPECT_EQ(Detect(Convert(encoding, "UTF-8", sentence)), code) << sentence;
            EXPECT_EQ(Detect(Convert(encoding, "UTF-8", "<p id=\"a\">\r\n" + sentence)), code) << sentence;
            const std::string units = Convert("UCS-2LE", "UTF-8", sentence);
            for (std::size_t pos = 0; pos + 16 <= units.size(); pos += 2, ++windows)
                right += Detect(Convert(encoding, "UCS-2LE", units.substr(pos, 16))) == code;
        }
        EXPECT_GT(windows, 100) << encoding;
        EXPECT_GE(right * 100, windows * 99) << encoding << ": " << right << " of " << windows;
    }
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
    const std::string gbk = Convert("GBK", "UTF-8", kSimplified[0]);
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
