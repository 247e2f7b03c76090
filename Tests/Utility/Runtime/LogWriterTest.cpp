#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/LogSupport.h"

namespace {

using test_support::Bytes, test_support::PrintedBy;

std::string Format(std::time_t utc, const char* format) {
    std::tm time{};
    gmtime_r(&utc, &time);
    char text[30];
    return std::string(text, std::strftime(text, sizeof text, format, &time));
}

// Runs in a zone half an hour off any whole one where it is about noon: no test sees midnight.
class LogWriter : public test_support::LoggedTest {
protected:
    LogWriter() {
        const int behind = std::stoi(Format(std::time(nullptr), "%H")) - 12;
        test_support::SetTimeZone(("XST" + std::to_string(behind) + ":30").c_str());
        behind_seconds_ = behind * 3600 + (behind < 0 ? -1800 : 1800);
        day_ = Format(std::time(nullptr) - behind_seconds_, "%Y%m%d");
    }
    ~LogWriter() override { test_support::SetTimeZone("UTC0"); }

    // `text` with the stamp at its front, which must be of this moment, cut down to "[]".
    std::string WithoutStamp(const std::string& text) const {
        for (int age = 0; age < 10; ++age) {
            const std::time_t local = std::time(nullptr) - behind_seconds_ - age;
            const std::string stamp = Format(local, "[%Y-%m-%d %H:%M:%S]");
            if (text.compare(0, stamp.size(), stamp) == 0) return "[]" + text.substr(stamp.size());
        }
        return "no stamp of now: " + text;
    }
    std::string Log(const char* extension) const { return test_support::ReadFileBytes(folder_ / (day_ + extension)); }

    std::string day_;
    int behind_seconds_ = 0;
};

TEST_F(LogWriter, AppendsStampedLinesPerDayAndKind) {
    WriteLog("two\nlines 100%s", nullptr, false);
    EXPECT_EQ(WithoutStamp(Log(".log")), "[]\ttwo\nlines 100%s\n");
    const std::size_t before = Log(".log").size();
    WriteLog(Bytes("cut\0here"), folder_.path().c_str(), false);
    EXPECT_EQ(WithoutStamp(Log(".log").substr(before)), "[]\tcut\n");
    WriteError("", (folder_ / "").c_str());
    g_bLog = false;
    WriteError("x", nullptr);
    EXPECT_EQ(WithoutStamp(Log(".err")), "[]\t\n");

    char written[100] = {};
    std::FILE* const stream = fmemopen(written, sizeof written, "wb");
    WriteLog(stream, Bytes("one\0two"));
    EXPECT_STREQ(written, "");
    std::fclose(stream);
    EXPECT_EQ(WithoutStamp(written), "[] one\n");
}

TEST_F(LogWriter, FallsBackToStandardOutput) {
    const std::string no_room = folder_ / (day_ + ".err");  // opens, but takes nothing
    ASSERT_EQ(symlink("/dev/full", no_room.c_str()), 0);
    const std::tuple<const char*, const char*, bool, std::string> rows[] = {
        {"/no/such", "unused", false, "/no/such/" + day_ + ".log"},
        {"/no/such/", "unused", true, "/no/such/" + day_ + ".err"},
        {"/no/such\\", "unused", false, "/no/such\\" + day_ + ".log"},
        {nullptr, "/no/such", false, "/no/such/" + day_ + ".log"},
        {nullptr, "/no/such/", true, "/no/such//" + day_ + ".err"},
        {nullptr, folder_.path().c_str(), true, no_room}};
    for (const auto& [directory, log_path, is_error, file_name] : rows) {
        g_sLogPath = log_path;
        const auto write = [directory = directory, is_error = is_error] { WriteLog("text", directory, is_error); };
        EXPECT_EQ(WithoutStamp(PrintedBy(write)), "[] text\nCannot write log file " + file_name + "!\r\n");
    }
    const auto write_in_a_process = [] {
        if (fork() == 0) {
            WriteLog(nullptr, "text");
            _exit(0);  // flushes nothing
        }
        EXPECT_GT(wait(nullptr), 0);
    };
    EXPECT_EQ(WithoutStamp(PrintedBy(write_in_a_process)), "[] text\nCannot write log file!\r\n");
}

TEST_F(LogWriter, ThreadsAndProcessesNeverMixLines) {
    const auto write = [](char name) {
        for (std::size_t i = 1; i <= 200; ++i) WriteLog(std::string(i * 97, name), nullptr, false);
    };
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    g_sLogPath.clear();  // the working directory takes its place, once
    const pid_t child = fork();
    if (child == 0) write('a'), _exit(0);
    std::vector<std::thread> threads;
    for (const char name : {'b', 'c', 'd'}) threads.emplace_back(write, name);
    for (std::thread& thread : threads) thread.join();
    std::filesystem::current_path(before);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(g_sLogPath, folder_.path());

    std::size_t seen[4] = {};
    std::istringstream lines(Log(".log"));
    for (std::string line; std::getline(lines, line);) {
        const char name = line.back();
        ASSERT_TRUE(name >= 'a' && name <= 'd') << line;
        ASSERT_EQ(line.substr(22), std::string(++seen[name - 'a'] * 97, name));
    }
    EXPECT_THAT(seen, testing::Each(200u));
}

}  // namespace
