// pagetext as its users start it.

#include <TextKit.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "Apps/Program.h"
#include "Support/TestSupport.h"

namespace {

using test_program::Outcome;
using test_program::Page;
using test_program::PageText;

TEST(ProgramTest, ReadsEverySamplePage) {
    struct Row {
        const char* page;
        const char* encoding;
        const char* sentence;  // one of the page's
    };
    const Row rows[] = {
        {"news-gbk.html", "gbk", "“我数了一下，从家门口到菜市场，一共三百二十步。”"},
        {"forum-gbk.html", "gbk", "一般 3<pH<7 的土都不用担心。"},
        {"broken-gbk.html", "gbk", "最后一行也要看得到。"},
        {"article-big5.html", "big5", "最後一頁寫著：「風向東北，一切平安。」"},
        {"article-utf8.html", "utf-8", "Why?"},
        {"essay-utf8-bom.html", "utf-8", "我们坐在幕布背面看，字是反的，左右也是反的。"},
        {"notice-utf16le.html", "utf-16le", "请提前储水，给您带来的不便敬请谅解！"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.page);
        EXPECT_EQ(PageText("--detect " + Page(row.page)).output, std::string(row.encoding) + "\n");
        const Outcome json = PageText("--json " + Page(row.page));
        EXPECT_EQ(json.status, 0);
        const auto object = nlohmann::json::parse(json.output);
        EXPECT_EQ(object["encoding"], row.encoding);
        EXPECT_EQ(object["replaced"], 0);
        bool found = false;
        for (const auto& sentence : object["sentences"]) {
            const std::string text = sentence;
            found = found || text.find(row.sentence) != std::string::npos;
        }
        EXPECT_TRUE(found) << json.output;
        EXPECT_EQ(object["text"].get<std::string>().find("function"), std::string::npos);
        EXPECT_EQ(object["text"].get<std::string>().find("document.write"), std::string::npos);
    }
}

TEST(ProgramTest, GoesOnAfterAPageThatCannotBeRead) {
    const test_support::TempFolder folder;
    test_support::WriteFileBytes(folder / "empty", "");
    test_support::WriteFileBytes(folder / "be", test_support::Bytes("\xFE\xFF\0a"));
    test_support::WriteFileBytes(folder / "good", "\xD6\xD0\xCE\xC4<p>end");
    const Outcome outcome = PageText(folder / "missing" + " " + (folder / "be") + " " + (folder / "empty") + " " +
                                     folder.path().string() + " " + (folder / "good") + " --from gbk --plain");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.output.find("missing: No such file or directory\n"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find(folder.path().string() + ": Is a directory\n"), std::string::npos);
    EXPECT_NE(outcome.output.find("中文<p>end\n"), std::string::npos);
    EXPECT_EQ(PageText("--detect " + (folder / "be") + " " + (folder / "empty")).output,
              (folder / "be") + ": utf-16be\n" + (folder / "empty") + ": ascii\n");
    test_support::WriteFileBytes(folder / "four", "\x84\x31\xA4\x37 \xD6\xD0\xCE\xC4");
    const Outcome four = PageText("--from gbk " + (folder / "four"));
    EXPECT_EQ(four.status, 1);
    EXPECT_NE(four.output.find("four-byte characters of GB18030 are not supported"), std::string::npos);
    test_support::WriteFileBytes(folder / "[x,y]", "in brackets");
    EXPECT_EQ(PageText("-- [x,y]", folder.path()).output, "in brackets\n");
    EXPECT_EQ(PageText((folder / "[x,y]") + " > /dev/full").status, 1);
    EXPECT_EQ(PageText("--emails " + (folder / "be")).output, "");
    test_support::WriteFileBytes(folder / "mail", "收：李<Li.Lei@Example.ORG>, b-2@mail.example.com.");
    EXPECT_EQ(PageText("--emails --plain " + (folder / "mail")).output, "Li.Lei@example.org\nb-2@mail.example.com\n");
    test_support::WriteFileBytes(folder / "utf-32", test_support::Bytes("\xFF\xFE\0\0a\0\0\0"));
    const Outcome unknown = PageText(folder / "utf-32");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.output.find("encoding unknown"), std::string::npos);
    EXPECT_EQ(PageText("--json " + (folder / "empty")).output,
              "{\"name\":\"" + (folder / "empty") +
                  "\",\"encoding\":\"ascii\",\"text\":\"\",\"sentences\":[],\"emails\":[],\"replaced\":0}\n");
}

TEST(ProgramTest, ReadsStandardInputAndWritesGbk) {
    const Outcome gbk = PageText("--to gbk < " + Page("article-utf8.html"));
    EXPECT_EQ(gbk.status, 0);
    EXPECT_NE(gbk.output.find("&#127838;"), std::string::npos);
    const textkit::Encoded title = textkit::Encode("为什么面包会变硬", textkit::Encoding::kGbk);
    EXPECT_NE(gbk.output.find(title.bytes), std::string::npos);
    EXPECT_EQ(PageText("--data /dev/null < /dev/null").status, 1);
    EXPECT_EQ(PageText("--sentences --json < /dev/null").status, 2);
    EXPECT_EQ(PageText("--json --to gbk < /dev/null").status, 2);
    EXPECT_EQ(PageText("--records --to gbk < /dev/null").status, 2);
    EXPECT_EQ(PageText("--files0-from /dev/null page").status, 2);
    EXPECT_EQ(PageText("--jobs -1 < /dev/null").status, 2);
}

TEST(ProgramTest, EveryOptionIsInTheManualAndTheCompletions) {
    const std::string help = PageText("--help").output;
    const std::string folder = std::string(UTILITY_TEST_SOURCE_DIR) + "/Apps/pagetext/";
    std::string manual = test_support::ReadFileBytes(folder + "pagetext.1");
    manual = std::regex_replace(manual, std::regex(R"(\\-)"), "-");
    const std::string bash = test_support::ReadFileBytes(folder + "completion/pagetext");
    const std::string zsh = test_support::ReadFileBytes(folder + "completion/_pagetext");
    int options = 0;
    const std::regex option(R"(--[a-z0-9-]+)");
    for (std::sregex_iterator it(help.begin(), help.end(), option), end; it != end; ++it, ++options) {
        SCOPED_TRACE(it->str());
        const std::regex word(it->str() + "(?![a-z0-9-])");
        EXPECT_TRUE(std::regex_search(manual, word));
        EXPECT_TRUE(std::regex_search(bash, word));
        EXPECT_TRUE(std::regex_search(zsh, word));
    }
    EXPECT_GE(options, 14);
    const auto complete = [&](const std::string& words) {
        return test_program::Shell("bash -c '. " + folder + "completion/pagetext; COMP_WORDS=(pagetext " + words +
                                   "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _pagetext; echo ${COMPREPLY[@]}'")
            .output;
    };
    EXPECT_EQ(complete("--to g"), "gbk\n");
    EXPECT_EQ(complete("--from = utf-16"), "utf-16le utf-16be\n");
    EXPECT_EQ(complete("--j"), "--jobs --json\n");
    EXPECT_EQ(complete(folder + "pagetext."), folder + "pagetext.1\n");
}

}  // namespace
