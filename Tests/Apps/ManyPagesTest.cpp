// pagetext over many pages: lists of names, several jobs, records, the line that tells how far it is.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Apps/Program.h"
#include "Support/TestSupport.h"
#include "pagetext/Progress.h"

namespace {

using test_program::kPageText;
using test_program::Outcome;
using test_program::Page;
using test_program::PageText;
using test_program::Shell;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

TEST(ManyPagesTest, JobsWriteWhatOneWritesInTheSameOrder) {
    const test_support::TempFolder folder;
    const char* pages[] = {"news-gbk.html", "missing", "article-utf8.html", "notice-utf16le.html", "forum-gbk.html"};
    std::string list;
    for (int i = 0; i < 400; ++i) list += i % 23 == 7 ? std::string(1, '\0') : Page(pages[i % 5]) + '\0';
    list.pop_back();  // the last name may end with the list
    test_support::WriteFileBytes(folder / "list", list);
    for (const std::string form : {"", "--json", "--detect", "--sentences --to gbk"}) {
        SCOPED_TRACE(form);
        const Outcome one = PageText(form + " --files0-from " + (folder / "list"));
        EXPECT_EQ(one.status, 1);
        EXPECT_NE(one.output.find("list: entry 8: the name of a page is empty\n"), std::string::npos);
        for (const std::string jobs : {"-j 0 ", "--jobs=2 ", "-j7 "})
            EXPECT_EQ(PageText(form + " --files0-from " + (folder / "list") + " " + jobs).output, one.output) << jobs;
        if (form != "--detect") continue;
        EXPECT_EQ(std::count(one.output.begin(), one.output.end(), '\n'), 400);
        EXPECT_EQ(one.output.find(Page(pages[0]) + ": gbk\npagetext: " + Page("missing") + ": No such file"), 0U);
    }
    EXPECT_EQ(PageText("--detect --files0-from - < " + (folder / "list")).output.find(Page(pages[0]) + ": gbk\n"), 0U);
    EXPECT_EQ(Shell("printf - | " + kPageText + "--files0-from -").output,
              "pagetext: -: entry 1: standard input holds the names already\n");
    EXPECT_EQ(PageText("--files0-from " + (folder / "none")).output,
              "pagetext: " + (folder / "none") + ": No such file or directory\n");
    EXPECT_EQ(Shell("head -c 70000 /dev/zero | tr '\\0' a | " + kPageText + "--files0-from -").output,
              "pagetext: -: entry 1 is longer than 65536 bytes\n");
    EXPECT_EQ(PageText("-j 3 --files0-from " + (folder / "list") + " 2>&1 >/dev/full | tail -n 1").output,
              "pagetext: standard output cannot be written\n");
}

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define KEEPS_WHAT_IS_FREED
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KEEPS_WHAT_IS_FREED
#endif

#ifndef KEEPS_WHAT_IS_FREED
// The most memory that a command takes, in KiB.
long MostMemory(const std::string& command) {
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
        _exit(127);
    }
    int status = -1;
    rusage usage = {};
    EXPECT_EQ(wait4(child, &status, 0, &usage), child);
    EXPECT_EQ(status, 0);
    return usage.ru_maxrss;
}

TEST(ManyPagesTest, MemoryDoesNotGrowWithTheNumberOfPages) {
    const test_support::TempFolder folder;
    std::string name = Page("forum-gbk.html");
    while (name.size() < 400) name.insert(name.rfind('/'), "/.");
    std::string names;
    for (int i = 0; i < 50000; ++i) names += name + '\0';
    test_support::WriteFileBytes(folder / "few", names.substr(0, (name.size() + 1) * 200));
    test_support::WriteFileBytes(folder / "many", names);
    for (const std::string jobs : {"1", "4"}) {
        const std::string command = kPageText + "--detect -j " + jobs + " >/dev/null --files0-from ";
        const long few = MostMemory(command + (folder / "few"));
        EXPECT_LT(MostMemory(command + (folder / "many")), few + 2048) << jobs << " jobs, a list of 20 MB";
    }
}
#endif

TEST(ManyPagesTest, AnswersAHundredThousandRecordsInOrder) {
    const test_support::TempFolder folder;
    constexpr int kRecords = 100000;
    std::string records;
    for (int i = 0; i < kRecords; ++i) {
        const std::string id = std::to_string(i);
        if (i % 97 == 5)
            records += "{\"id\":" + id + ",\"path\":\n";
        else if (i % 1000 == 1)
            records += R"({"id":"n)" + id + R"(","path":")" + Page("forum-gbk.html") + "\"}\r\n";
        else
            records += R"({"bytes":"1tDOxMTjusM8cD50d28=","id":)" + id + "}\n";  // 中文你好<p>two
    }
    test_support::WriteFileBytes(folder / "records", records);
    const Outcome outcome = Shell("cat " + (folder / "records") + " | " + kPageText + "--records --jobs 2");
    EXPECT_EQ(outcome.status, 0);
    const std::vector<std::string> answers = Lines(outcome.output);
    ASSERT_EQ(answers.size(), std::size_t{kRecords});
    int wrong = 0;
    for (int i = 0; i < kRecords; ++i) {
        const std::string id = std::to_string(i);
        const std::string& answer = answers[static_cast<std::size_t>(i)];
        if (i % 97 == 5) {
            wrong += answer.find("{\"line\":" + std::to_string(i + 1) + ",\"error\":\"not JSON") != 0;
        } else if (i % 1000 == 1) {
            const auto object = nlohmann::json::parse(answer);
            wrong +=
                object["id"] != "n" + id || object["path"] != Page("forum-gbk.html") || object["encoding"] != "gbk";
        } else {
            wrong += answer != "{\"id\":" + id + R"(,"encoding":"gbk","text":"中文你好\ntwo","replaced":0})";
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST(ManyPagesTest, ABadRecordIsAnsweredByTheReason) {
    struct Row {
        std::string record;
        const char* answer;  // what stands in it
    };
    const Row rows[] = {
        {R"({"bytes":""})", R"({"encoding":"ascii","text":"","replaced":0})"},
        {R"({"bytes":"YQ=="})", R"("text":"a")"},
        {R"({"bytes":"YQ"})", R"("text":"a")"},
        {R"({"bytes":"YWI=","x":{"y":[{}]}})", R"("text":"ab")"},
        {R"({"bytes":"\/v8AYQ"})", R"({"encoding":"utf-16be","text":"a","replaced":0})"},
        {R"({"bytes":"YR=="})", "bytes is not base64"},
        {R"({"bytes":"Y"})", "bytes is not base64"},
        {R"({"bytes":"YQ==="})", "bytes is not base64"},
        {R"({"bytes":"Y Q="})", "bytes is not base64"},
        {R"({"bytes":7})", "bytes is not text"},
        {R"({"id":3})", R"({"id":3,"line":11,"error":"neither path nor bytes, or both"})"},
        {R"({"path":"a","bytes":""})", "neither path nor bytes, or both"},
        {R"({"path":"/missing","id":"x"})", R"({"id":"x","path":"/missing","line":13,"error":"No such file)"},
        {R"({"path":"a\u0000b"})", R"("error":"Invalid argument")"},
        {R"({"id":true,"bytes":""})", "id is neither text nor number"},
        {R"({"id":1e999,"bytes":""})", "a number is out of range"},
        {"", "not JSON: byte 1"},
        {"[1]", "not a JSON object"},
        {R"({"bytes":""}{)", "not JSON: byte 13"},
        {"{\"path\":\"\xD6\xD0\"}", "not JSON: byte 11"},
        {std::string(200000, '['), "not JSON: byte 200001"},
        {R"({"bytes":"","x":)" + std::string(200000, '[') + std::string(200000, ']') + "}", R"("text":"")"},
        {"\"" + std::string(65 << 20, 'x') + "\"", R"({"line":23,"error":"entry 23 is longer than 67108864 bytes"})"},
        {R"({"bytes":"YQ","id":-1.5})", R"({"id":-1.5,"encoding":"ascii","text":"a","replaced":0})"},
    };
    const test_support::TempFolder folder;
    std::string records;
    for (const Row& row : rows) records += row.record + '\n';
    test_support::WriteFileBytes(folder / "records", records);
    const Outcome outcome = PageText("--records " + (folder / "records"));
    EXPECT_EQ(outcome.status, 0);
    const std::vector<std::string> answers = Lines(outcome.output);
    ASSERT_EQ(answers.size(), std::size(rows));
    for (std::size_t i = 0; i < answers.size(); ++i)
        EXPECT_NE(answers[i].find(rows[i].answer), std::string::npos) << rows[i].answer << "\n" << answers[i];
    const Outcome missing = PageText("--records --detect " + (folder / "none") + " - < " + (folder / "records"));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output.find("pagetext: " + (folder / "none") + ": No such file or directory\n{\"encoding\":"),
              0U);
}

// An engine may wait for the answer to a record before it sends the next.
TEST(ManyPagesTest, ARecordIsAnsweredBeforeTheNextIsThere) {
    for (const std::string jobs : {"1", "4"}) {
        const Outcome outcome =
            Shell("bash -c 'coproc P { " + kPageText + "--records --detect -j " + jobs +
                  "; }; for i in 1 2 3; do echo \"{\\\"id\\\":$i,\\\"bytes\\\":\\\"\\\"}\" >&${P[1]};"
                  " read -t 30 line <&${P[0]} && echo $line; done'");
        EXPECT_EQ(outcome.output,
                  "{\"id\":1,\"encoding\":\"ascii\"}\n{\"id\":2,\"encoding\":\"ascii\"}\n"
                  "{\"id\":3,\"encoding\":\"ascii\"}\n");
    }
}

TEST(ManyPagesTest, GnuParallelSpreadsRecordsOverProcesses) {
    if (Shell("parallel --version < /dev/null").output.find("GNU parallel") != 0)
        GTEST_SKIP() << "no GNU parallel on this machine (Debian package parallel)";
    const test_support::TempFolder folder;
    std::string records;
    for (int i = 0; i < 20000; ++i)
        records += R"({"id":)" + std::to_string(i) + R"(,"path":")" + Page("broken-gbk.html") + "\"}\n";
    test_support::WriteFileBytes(folder / "records", records);
    const std::string parallel =
        "parallel --will-cite --pipe --keep-order -j 3 --block 200k " + kPageText + "--records --emails <";
    const Outcome by_parallel = Shell(parallel + (folder / "records"));
    EXPECT_EQ(by_parallel.status, 0);
    EXPECT_EQ(Lines(by_parallel.output).size(), 20000U);
    EXPECT_TRUE(by_parallel.output == PageText("--records --emails " + (folder / "records")).output);
}

TEST(ManyPagesTest, TheProgressLineTellsCountRateAndTimeLeft) {
    using pagetext::ProgressLine;
    EXPECT_EQ(ProgressLine({50, 200, 0.25, 10}, "a.html", 80),
              "[=====>              ]  25%  50/200  5.0/s  0:30 left  a.html");
    EXPECT_EQ(ProgressLine({3000000, 0, 0.999, 86400}, "", 80),
              "[===================>]  99%  3000000  35/s  1:27 left  ");
    EXPECT_EQ(ProgressLine({1, 0, 0.0001, 1}, "", 80), "[>                   ]   0%  1  1.0/s  2:46:39 left  ");
    EXPECT_EQ(ProgressLine({2, 2, 1, 0.1}, "中文", 52), "[====================] 100%  2/2  20/s  0:00 left  ");
    EXPECT_EQ(ProgressLine({2, 2, 1, 0.1}, "中文", 54), "[====================] 100%  2/2  20/s  0:00 left  中");
    EXPECT_EQ(ProgressLine({7, 0, -1, 0}, "x", 80), "7  x");
}

TEST(ManyPagesTest, ATerminalSeesProgressThatIsGoneAtTheEnd) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) GTEST_SKIP() << "no terminals here";
    const std::string name = ptsname(terminal);
    const int other_end = open(name.c_str(), O_RDWR | O_NOCTTY);  // so that what is written stays
    const std::string command =
        "TERM=xterm " + kPageText + Page("news-gbk.html") + " /missing " + Page("news-gbk.html");
    EXPECT_EQ(WEXITSTATUS(std::system((command + " >/dev/null 2>" + name).c_str())), 1);
    char shown[4096];
    const ssize_t bytes = read(terminal, shown, sizeof shown);
    close(other_end);
    close(terminal);
    ASSERT_GT(bytes, 0);
    const std::string text(shown, static_cast<std::size_t>(bytes));
    EXPECT_TRUE(std::regex_search(text, std::regex(R"(\[======> +\]  33%  1/3  [\d.]+/s  \d:\d\d left  )"))) << text;
    EXPECT_NE(text.find("\r\033[Kpagetext: /missing: No such file or directory\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.rfind("\r\033[K"), text.size() - 4) << text;
}

}  // namespace
