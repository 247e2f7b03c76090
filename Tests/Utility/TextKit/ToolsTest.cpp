#include <TextKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <string>
#include <vector>

#include "Support/TestSupport.h"

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using textkit::Empty;

std::vector<std::string> List(const textkit::Pieces& pieces) {
    return {pieces.begin(), pieces.end()};
}

// Every short text over two separators and content, against a plain loop.
TEST(PiecesTest, SplitsEveryShortText) {
    for (const std::string& text : test_support::AllTexts("a-\xE3\x80\x81", 5)) {
        std::vector<std::string> kept(1), whole(1);
        for (std::size_t i = 0; i < text.size();) {
            const bool mark = text.compare(i, 3, "、") == 0, pair = text.compare(i, 2, "--") == 0;
            i += mark ? 3 : 1;
            mark || text[i - 1] == '-' ? kept.emplace_back() : kept.back() += text[i - 1];
            if (mark) whole.back() += "、";
            if (!mark && !pair) whole.back() += text[i - 1];
            if (pair) ++i, whole.emplace_back();
            if (pair) kept.emplace_back();
        }
        EXPECT_EQ(List(textkit::SplitAny(text, "、-")), kept) << test_support::Hex(text);
        EXPECT_EQ(List(textkit::Split(text, "--")), whole) << test_support::Hex(text);
        EXPECT_EQ(textkit::Join(textkit::Split(text, "--"), "--"), text);
        kept.erase(std::remove(kept.begin(), kept.end(), ""), kept.end());
        EXPECT_EQ(List(textkit::SplitAny(text, "-、", Empty::kDrop)), kept) << test_support::Hex(text);
    }
    EXPECT_THAT(List(textkit::Split("abc", "")), ElementsAre("abc"));
    EXPECT_THAT(List(textkit::Split({}, ",")), ElementsAre(""));
    EXPECT_TRUE(textkit::Split({}, ",", Empty::kDrop).empty());
    // Characters, not bytes: 一 is E4 B8 80, 丁 E4 B8 81.
    EXPECT_THAT(List(textkit::SplitAny("a一b\xE4\xB8", "丁\x80")), ElementsAre("a一b\xE4\xB8"));
}

TEST(PiecesTest, TokensAreWordsNumbersAndChineseRuns) {
    const struct {
        const char* text;
        std::vector<std::string> tokens;
    } rows[] = {
        {"价格：1,284.50 元（3.14, ok）。中文", {"价格", "1,284.50", "元", "3.14", "ok", "中文"}},
        {"iPhone手机B2B，don't l’été e.g. x_1", {"iPhone", "手机", "B2B", "don't", "l’été", "e.g", "x_1"}},
        {"1,a ,2, 3,. a.b@c.org 'x' 3.中", {"1", "a", "2", "3", "a.b", "c.org", "x", "3", "中"}},
        {"时时々〇㐀𠀀 カタカナ・한국 ①℃🍞ＡＢ２", {"时时々〇㐀𠀀", "カタカナ", "한국", "①", "ＡＢ２"}},
        {"\xFF中\xE4\xB8文\xC2\xA0Ünï", {"中", "文", "Ünï"}},
        {"", {}},
        {"…—\u3000", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(List(textkit::Tokens(row.text)), row.tokens) << row.text;
}

// Every byte behind words of every length around that of a block, at the end of the text and inside it.
TEST(PiecesTest, BytesThatEndAWord) {
    for (std::size_t length = 1; length <= 33; ++length)
        for (int byte = 0; byte < 256; ++byte)
            for (const std::string behind : {"", " 中文 and so on"}) {
                const std::string word(length, 'w'), end(1, static_cast<char>(byte));
                const bool inside = std::isalnum(byte) != 0 || byte == '_';
                ASSERT_EQ(List(textkit::Tokens(word + end + behind))[0], inside ? word + end : word) << byte;
            }
}

TEST(PiecesTest, TrimsTheBlanksOfUnicode) {
    for (const char* blank : {" ", "\t", "\n", "\v", "\f", "\r", "\u0085", "\u00A0", "\u1680", "\u2000", "\u200A",
                              "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
        EXPECT_EQ(textkit::Trim(blank + "a"s + blank + "文"s + blank + blank), "a"s + blank + "文")
            << test_support::Hex(blank);
        EXPECT_EQ(textkit::Trim(blank), "");
    }
    for (const char* text : {"\u200B", "\u3001", "\x80", "\xE3\x80", "x\x80\x80", ""})
        EXPECT_EQ(textkit::Trim(text), text);
}

TEST(PiecesTest, ReplacesInOnePass) {
    std::size_t count = 7;
    EXPECT_EQ(textkit::Replace("a--a---", "--", "-", &count), "a-a--");
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(textkit::Replace("中文", "", "x", &count), "中文");
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(textkit::Replace({}, "a", "b"), "");
}

TEST(MailTest, DecodesWords) {
    const struct {
        const char *header, *text;
    } rows[] = {
        {"=?UTF-8?B?5Lit5paH?= =?utf-8?q?=E5=9B=BD_x?=", "中文国 x"},
        {"=?big5?B?pKSk5Q==?=\r\n =?gbk?Q?=D6=D0?= !", "中文中 !"},
        {"=?UTF-8*zh-CN?B?5Lit?==?UTF-8?B?5paH?=", "中文"},
        {"=?utf-8?B?5Lg=?= =?UTF-8?B?rQ==?=", "中"},  // a character cut in two
        {"=?ISO-8859-1?Q?Jos=E9_=80?= x", "José € x"},
        {"=?gbk?Q?=D6?=", "\uFFFD"},
        {"=?koi8-r?B?xA==?= =?utf-8?q?a?=", "=?koi8-r?B?xA==?= a"},
        {"=?utf-8?x?a?= =?utf-8?q?a", "=?utf-8?x?a?= =?utf-8?q?a"},
        {"=?utf-8?q?=4?= =?utf-8?q?=e4=b8=AD=?=", "=4中="},
        {"=?=?utf-8?q?a?= b", "=?a b"},
        {"a =?b c?q?d?=", "a =?b c?q?d?="},
        {"", ""},
    };
    for (const auto& row : rows) EXPECT_EQ(textkit::DecodeWords(row.header), row.text) << row.header;
}

TEST(MailTest, FindsAddressesAndNames) {
    const struct {
        const char* text;
        std::vector<std::string> found;  // "name|address"
    } rows[] = {
        {"To: John <John.Smith@MAILHOST.Org>", {"John|John.Smith@mailhost.org"}},
        {"收件人：张三<a@b.cn>；李 四 <c@d.cn>，e@f.cn", {"张三|a@b.cn", "李 四|c@d.cn", "|e@f.cn"}},
        {R"(From: "Smith, \"J\" \\" <a@b.c>, "x\" <c@d.e>)", {R"(Smith, "J" \|a@b.c)", R"(x\|c@d.e)"}},
        {"Cc: =?gb2312?B?1cU=?=\r\n =?gb2312?B?yP0=?= <z@x.cn>\nx\n<y@x.cn>", {"张三|z@x.cn", "|y@x.cn"}},
        {"\"=?utf-8?q?=E5=BC=A0=2C=E4=B8=89?=\" <z@x.cn>", {"张,三|z@x.cn"}},
        {"\"  Li \r\n\t Si  \" <a@b.cn>, \" \" <c@d.cn>", {"Li Si|a@b.cn", "|c@d.cn"}},
        {"z@x.cn (Zhang San), w@x.cn (open", {"Zhang San|z@x.cn", "|w@x.cn"}},
        {"写信到li.lei@example.com谢谢。或 'b-2@Mail.example.com'.", {"|li.lei@example.com", "|b-2@mail.example.com"}},
        {"<root@localhost> root@localhost a@b@c.de x@1.2 @x.y a.@b.c .a@b.c a@-b.c a@b.c-.d",
         {"|root@localhost", "|b@c.de", "|a@b.c", "|a@b.c"}},
        {"o'neil+x@a.b.", {"|o'neil+x@a.b"}},
        {"", {}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> found;
        for (const auto& email : textkit::EmailAddresses(row.text)) found.push_back(email.name + "|" + email.address);
        EXPECT_EQ(found, row.found) << row.text;
    }
}

TEST(ItemsTest, FindsXmlElementsAndAttributes) {
    const struct {
        const char* xml;
        const char *item, *attribute;  // of "a", "id"; null for none
    } rows[] = {
        {"<a><b>1</b></a>", "<b>1</b>", nullptr},
        {"<?x <a>?><!-- <a id='0'>no</a> --><![CDATA[<a>]]><A/><a id='1>2'>x</a >", "x", "1>2"},
        {"<a/><a id = \"7\">y</a>", "", "7"},
        {"<ab id='5'/><a\npid='3'\nid='4' >中<a/><a>y</a></a>z</a>", "中<a/><a>y</a>", "4"},
        {"<a id='1'>open", nullptr, "1"},
        {"<a id='open>x</a>", nullptr, nullptr},
        {"</a><a id=5>x</a>", "x", nullptr},
        {"<!-- <a>x</a>", nullptr, nullptr},
        {"<a =/='' id", nullptr, nullptr},
        {"", nullptr, nullptr},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textkit::XmlItem(row.xml, "a").value_or("none"), row.item ? row.item : "none") << row.xml;
        EXPECT_EQ(textkit::XmlAttribute(row.xml, "a", "id").value_or("none"), row.attribute ? row.attribute : "none")
            << row.xml;
    }
}

TEST(ItemsTest, FindsJsonMembers) {
    const struct {
        const char *json, *value;  // of "k"; null for none
    } rows[] = {
        {R"({"k":"v"})", "v"},
        {R"({"x": "k", "k" : -1.5e3})", "-1.5e3"},
        {R"({"x": {"k": [1, "]", {"k": 2}]}, "k": 3})", R"([1, "]", {"k": 2}])"},
        {R"({"x": "\"k\": 1", "\u006b": null})", "null"},
        {R"({"k": "\u4E2d\ud83c\udf5e\ud83cx\udf5e\u12\q\"\\\/\b\n"})", "中🍞\uFFFDx\uFFFDu12q\"\\/\b\n"},
        {R"({"k": {"a": "}")", nullptr},
        {R"({"k": "open)", nullptr},
        {R"({"k":})", nullptr},
        {R"(["k", "v"])", nullptr},
        {"\"", nullptr},
        {"", nullptr},
    };
    for (const auto& row : rows)
        EXPECT_EQ(textkit::JsonItem(row.json, "k").value_or("none"), row.value ? row.value : "none");
}

std::string RandomText(std::mt19937& random, const std::vector<std::string>& pieces) {
    std::string text;
    for (auto count = random() % 60; count > 0; --count) text += pieces[random() % pieces.size()];
    return text;
}

// What stands behind the first member "k", found byte by byte; a text without one where there is none.
std::string BehindMember(const std::string& json) {
    for (std::size_t i = 0; i < json.size(); ++i) {
        if (json[i] != '"') continue;
        std::string name;
        while (++i < json.size() && json[i] != '"') name += json[i] == '\\' ? json.substr(++i, 1) : json.substr(i, 1);
        const std::size_t colon = json.find_first_not_of(' ', i + 1);
        if (name == "k" && colon != json.npos && json[colon] == ':') return json.substr(colon);
    }
    return "";
}

// Items far into a text are looked for without reading what is in front of them name by name.
TEST(ItemsTest, FarItemsAreThoseThatReadingFinds) {
    std::mt19937 random(1);
    int found = 0;
    for (int round = 0; round < 30000; ++round) {
        const std::string json = RandomText(random, {"\"", "\"k\"", "k\"", "\"x\":1,", " ", ":", "\"long value\""}) +
                                 RandomText(random, {"\"", "\\", "\"k\"", "k\"", ":", " ", "1"});
        const auto member = textkit::JsonItem(json, "k");
        ASSERT_EQ(member, textkit::JsonItem("\"k\"" + BehindMember(json), "k")) << json;
        std::string xml = RandomText(random, {"<b>", "</b>", "<", ">", "text", "<b =x>", "<b", "/", "!"});
        if (round % 2 == 0)
            xml += RandomText(random, {"'", "\"", "<b a=", ">", "<!--", "-->", "<?", "?>", "<![CDATA["});
        xml += RandomText(random, {"<a>", "</a>", "<b>", "'", "<a", "-->", ">", "/>"});
        // Behind a first tag with a stray quote or a declaration behind it, every tag is read.
        const std::string fast = "<r>" + xml, slow = (round % 4 < 2 ? "<r>'" : "<r><!>") + xml;
        const auto element = textkit::XmlItem(fast, "a");
        ASSERT_EQ(element, textkit::XmlItem(slow, "a")) << xml;
        found += member.has_value() + element.has_value();
    }
    EXPECT_GT(found, 20000);
}

TEST(DictionaryTest, FindsWhatAPlainLoopFinds) {
    const std::vector<std::string> texts = test_support::AllTexts("ab\xFF", 5);
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        std::vector<std::string> words;
        for (int i = 0; i < round * 2; ++i) words.push_back(texts[random() % texts.size()]);
        const textkit::Dictionary dictionary({words.begin(), words.end()});
        for (const std::string& text : texts) {
            std::size_t length = 0, index = textkit::kNoPosition;
            for (std::size_t i = 0; i < words.size(); ++i)
                if (words[i].size() > length && text.compare(0, words[i].size(), words[i]) == 0)
                    length = words[i].size(), index = i;
            const auto match = dictionary.Longest(text);
            ASSERT_EQ(std::pair(match.length, match.index), std::pair(length, index)) << test_support::Hex(text);
        }
    }
    EXPECT_EQ(textkit::Dictionary({}).Longest("a").length, 0u);
}

// Sixteen times the text must not take many times sixteen the time.
TEST(ToolsTest, HostileTextsTakeLinearTime) {
    const std::string_view pieces[] = {
        "a@",     "a@b.",           "\\\"",  "\"<a@b.c>", "=?",     "=?a?q?", "<",        "<a",       "<a '",
        "<!--",   "\"k\" :",        "\"\\",  "{\"k\":",   "a.",     "\u3000", "aaaaaaaa", "\"<a@b.c", "(a",
        "a@b.c(", "=?utf-8?q?=?= ", "\"x\"", "x\"",       "a@b.c'", "<b",     "<c>'",     "\"x"};
    const auto run = [](const std::string& text) {
        const std::clock_t start = std::clock();
        textkit::EmailAddresses(text);
        textkit::DecodeWords(text);
        textkit::XmlItem(text, "b");
        textkit::JsonItem(text, "x");
        textkit::Trim(text + "x");
        textkit::Replace(text, "aaaaaaab", "x");
        for (const std::string_view token : textkit::Tokens(text)) static_cast<void>(token);
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    };
    for (const std::string_view piece : pieces) {
        std::string small, large;
        while (small.size() < 20000) small += piece;
        for (int i = 0; i < 16; ++i) large += small;
        EXPECT_LT(std::min(run(large), run(large)), 60 * std::min(run(small), run(small)) + 0.05) << piece;
    }
}

}  // namespace
