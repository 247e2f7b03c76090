// The examples of the public comments, as they stand there.

#include <TextKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>
#include <sstream>
#include <vector>

#include "Support/TestSupport.h"

namespace {

using testing::ElementsAre;

using textkit::Encoding;

TEST(TextKitExamples, Encodings) {
    if (std::optional<textkit::CodeMaps> maps = textkit::CodeMaps::Load(UTILITY_TEST_DATA_FILE))
        EXPECT_EQ(textkit::Detect("\xD6\xD0\xB9\xFA", *maps).encoding, Encoding::kGbk);
    else
        ADD_FAILURE() << "no data file";
#ifdef UTILITY_EMBED_CODEMAPS
    EXPECT_EQ(textkit::Detect("\xD6\xD0\xB9\xFA\xC8\xCB\xC3\xF1").encoding, Encoding::kGbk);
#endif
    EXPECT_EQ(textkit::Detect("plain").confidence, 1);
    EXPECT_EQ(textkit::Decode("\xD6\xD0"
                              "A",
                              Encoding::kGbk)
                  .text,
              "中A");
    const textkit::Decoded decoded = textkit::Decode("a\xD6\n", Encoding::kGbk);
    EXPECT_EQ(decoded.text, "a\uFFFD\n");
    EXPECT_EQ(decoded.replaced, 1u);
    EXPECT_EQ(decoded.first_replaced, 1u);
    EXPECT_EQ(textkit::Encode("中", Encoding::kGbk).bytes, "\xD6\xD0");
    EXPECT_EQ(textkit::Encode("A©", Encoding::kGbk, textkit::Unmappable::kNumericReference).bytes, "A&#169;");
    EXPECT_EQ(textkit::DetectPage("<meta charset='big5'>\xFF.").encoding, Encoding::kBig5);
    EXPECT_EQ(textkit::EncodingFromLabel("GB2312"), Encoding::kGbk);
    EXPECT_EQ(textkit::EncodingName(Encoding::kUtf16Le), "utf-16le");
    EXPECT_TRUE(textkit::IsValidUtf8("中"));
    EXPECT_FALSE(textkit::IsValidUtf8("\xC0\x80"));
}

TEST(TextKitExamples, Pages) {
    EXPECT_EQ(textkit::PageText("<p>5 &lt; 6&nbsp;&nbsp;<b>x</b>y<p>z<script async>f()</script>"), "5 < 6 xy\nz");
    EXPECT_EQ(textkit::DecodeReferences("&copy;2026 &#20013;&#x6587; AT&T &notin;"), "©2026 中文 AT&T ∉");
}

template <typename Range>
std::vector<std::string_view> List(const Range& range) {
    return {range.begin(), range.end()};
}

TEST(TextKitExamples, Pieces) {
    EXPECT_THAT(List(textkit::Split("一，二，，三", "，")), ElementsAre("一", "二", "", "三"));
    EXPECT_THAT(List(textkit::Split("a--b----c", "--", textkit::Empty::kDrop)), ElementsAre("a", "b", "c"));
    EXPECT_THAT(List(textkit::SplitAny("红、黄，蓝", "，、")), ElementsAre("红", "黄", "蓝"));
    EXPECT_THAT(List(textkit::SplitAny(" a, b", ", ", textkit::Empty::kDrop)), ElementsAre("a", "b"));
    EXPECT_THAT(List(textkit::Tokens("iPhone手机：1,284.50 元。")), ElementsAre("iPhone", "手机", "1,284.50", "元"));
    EXPECT_EQ(textkit::Join(std::vector<std::string>{"a", "", "b"}, ", "), "a, , b");
    EXPECT_EQ(textkit::Trim("　 标题\n"), "标题");
    EXPECT_EQ(textkit::Replace("aaa", "a", "aa"), "aaaaaa");
}

TEST(TextKitExamples, MailItemsAndDictionary) {
    const std::vector<textkit::EmailAddress> found =
        textkit::EmailAddresses("收件人：张三 <zs@Example.com>, \"Li, Lei\" <li.lei@example.org>");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].address + found[0].name, "zs@example.com张三");
    EXPECT_EQ(found[1].address + found[1].name, "li.lei@example.orgLi, Lei");
    EXPECT_EQ(textkit::DecodeWords("Re: =?GB2312?B?1tA=?= =?gb2312?Q?=B9=FA?="), "Re: 中国");
    EXPECT_EQ(textkit::DecodeWords("=?gb2312?B?1tC5+g==?="), "中国");
    EXPECT_EQ(textkit::XmlItem("<r><!-- <a>0</a> --><a id='1'>x<a>y</a></a></r>", "a"), "x<a>y</a>");
    EXPECT_EQ(textkit::XmlAttribute("<e pid=\"7\" id = '8'/>", "e", "id"), "8");
    EXPECT_EQ(textkit::JsonItem(R"({"text": "n", "n" : 5, "s": "\u4e2d\"文"})", "n"), "5");
    EXPECT_EQ(textkit::JsonItem(R"({"text": "n", "n" : 5, "s": "\u4e2d\"文"})", "s"), "中\"文");
    const textkit::Dictionary words({"人民", "中华人民共和国", "中华"});
    EXPECT_EQ(words.Longest("中华人民").length, 6u);
    EXPECT_EQ(words.Longest("中华人民").index, 2u);
}

TEST(TextKitExamples, Files) {
    const test_support::TempFolder folder;
    std::error_code error;
    if (!textkit::WriteFile(folder / "notes.txt", "文\n", error)) std::cerr << error.message();
    EXPECT_EQ(textkit::ReadFile(folder / "notes.txt", error), "文\n");
    EXPECT_EQ(textkit::ReadTextFile(folder / "notes.txt", error).text, "文\n");
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[1]);
    EXPECT_EQ(textkit::ReadFile(ends[0], error), "");
    close(ends[0]);
    EXPECT_FALSE(error);
}

TEST(TextKitExamples, ChineseText) {
    std::ostringstream out;
    for (const textkit::Character& c : textkit::Characters("中a"))
        out << c.bytes << ' ' << unsigned(c.code_point) << '\n';
    EXPECT_EQ(out.str(), "中 20013\na 97\n");
    EXPECT_EQ(textkit::ClassOf(U'中'), textkit::CharacterClass::kHan);
    EXPECT_EQ(textkit::ClassOf(U'Ａ'), textkit::CharacterClass::kLetter);
    const textkit::ClassCounts counts = textkit::CountClasses("GBK 有 21791 个码位。");
    EXPECT_EQ(counts[textkit::CharacterClass::kHan], 4u);
    EXPECT_EQ(counts[textkit::CharacterClass::kDigit], 5u);
    EXPECT_EQ(counts.total(), 16u);
    const textkit::Sentences sentences("他说：“走吧！”然后走了。It costs 3.5 yuan. OK?");
    EXPECT_EQ(std::vector<std::string_view>(sentences.begin(), sentences.end()),
              (std::vector<std::string_view>{"他说：“走吧！”", "然后走了。", "It costs 3.5 yuan.", "OK?"}));
    EXPECT_EQ(textkit::Fold("ＧＢＫ编码（第２版），ÉTÉ"), "gbk编码(第2版),été");
    EXPECT_EQ(textkit::Fold("【A】、B", {true, true, false, true, true}), "(a) b");
}

TEST(TextKitExamples, NumbersAndNames) {
    EXPECT_EQ(textkit::ParseNumber("三百二十")->numerator, 320);
    EXPECT_EQ(textkit::ParseNumber("百分之五")->ToDouble(), 0.05);
    EXPECT_EQ(textkit::ParseNumber("负1.5亿")->numerator, -150000000);
    EXPECT_FALSE(textkit::ParseNumber("二三十").has_value());
    std::ostringstream out;
    for (const textkit::NumberMatch& n : textkit::Numbers("第十二章：增长5%，约三万五千人"))
        out << n.text << '=' << n.value.ToDouble() << ' ';
    EXPECT_EQ(out.str(), "十二=12 5%=0.05 三万五千=35000 ");
    EXPECT_EQ(textkit::MatchForeignName("比尔·盖茨").style, textkit::NameStyle::kWestern);
    EXPECT_EQ(textkit::MatchForeignName("比尔·盖茨").share, 1);
    EXPECT_EQ(textkit::MatchForeignName("山田太郎").style, textkit::NameStyle::kJapanese);
    EXPECT_EQ(textkit::MatchForeignName("山田太郎").share, 0.5);
    EXPECT_EQ(textkit::MatchForeignName("电脑").share, 0);
    EXPECT_EQ(textkit::SplitPlaceName("北京市").stem, "北京");
    EXPECT_EQ(textkit::SplitPlaceName("新疆维吾尔自治区").suffix, "自治区");
    EXPECT_EQ(textkit::SplitPlaceName("广场").stem, "广场");
}

TEST(TextKitExamples, Dates) {
    EXPECT_FALSE(textkit::TimeZone::Named("../../etc/passwd").has_value());
    EXPECT_EQ(textkit::TimeZone().ToTime({2001, 9, 9, 1, 46, 40}), 1000000000);
    EXPECT_EQ(textkit::TimeZone().ToCivil(1000000000).year, 2001);
    const std::optional<textkit::DateFields> fields = textkit::ParseDate("十一月二十三日下午3点半");
    EXPECT_EQ(*fields->month, 11);
    EXPECT_EQ(*fields->hour, 15);
    EXPECT_FALSE(fields->year.has_value());
    EXPECT_EQ(*textkit::ParseDate("2026年")->year, 2026);
    EXPECT_EQ(textkit::ParseTime("2026-11-23T08:05:09+08:00"), 1795392309);
    EXPECT_EQ(textkit::ParseTime("2026年11月23日"), 1795392000);
    const std::optional<textkit::TimeZone> shanghai = textkit::TimeZone::Named("Asia/Shanghai");
    if (!shanghai.has_value()) GTEST_SKIP() << "no time-zone database on this machine";
    EXPECT_EQ(textkit::ParseTime("2026年11月23日", *shanghai), 1795363200);
}

}  // namespace
