#include "Utility/Runtime/CommandRunner.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>

#include "Internal/LocalTime.h"
#include "Support/LogSupport.h"

namespace {

class CommandRunner : public test_support::LoggedTest {
protected:
    // The lines of all files in the folder without their stamps, as soon as there are `count`, or after ten seconds.
    std::vector<std::string> Lines(std::size_t count) const {
        std::vector<std::string> lines;
        for (int tries = 0; lines.size() < count && tries < 1000; ++tries) {
            usleep(10'000);
            lines.clear();
            for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
                std::ifstream file(entry.path());
                for (std::string line; std::getline(file, line);) lines.push_back(line.substr(line.find(']') + 1));
            }
        }
        return lines;
    }

    // Status of a process that exits with what `host` returns.
    template <typename Host>
    int ExitStatus(Host host) const {
        const pid_t child = fork();
        if (child == 0) std::exit(host());
        int status = -1;
        waitpid(child, &status, 0);
        return status;
    }

    pthread_mutex_t mutex_ = PTHREAD_MUTEX_INITIALIZER;
};

TEST_F(CommandRunner, LogsEveryEndWhateverOtherThreadsDo) {
    std::atomic<int> running{40};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            while (running-- > 0) system_run(":", mutex_);
        });
    }
    while (running > 0) utility::internal::LocalNow();  // holds a lock of the C library nearly all the time
    for (std::thread& thread : threads) thread.join();
    const auto lines = Lines(120);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "\t: start!"), 40);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "\t: start! End!"), 80);
    EXPECT_EQ(waitpid(-1, nullptr, 0), -1);  // no zombie
}

TEST_F(CommandRunner, KeepsOutOfTheHostsCodeAndBuffers) {
    const test_support::TempFolder log;
    const std::string command = "sleep 0.2; rm -r " + log.path().string(), end = command + " start! End!";
    const auto host = [&] {
        g_sLogPath = log.path();  // gone when the last line is due, which then goes to standard output
        if (std::freopen((folder_ / "stdout").c_str(), "w", stdout) == nullptr) return 1;
        std::atexit([] { std::puts("exit"); });
        std::puts("buffered");
        system_run(command.c_str(), mutex_);
        g_bLog = false;
        system_run("echo quiet", mutex_);
        return g_sLastErrorMessage == "echo quiet start! End!" ? 0 : 1;
    };
    EXPECT_EQ(ExitStatus(host), 0);
    const auto complaint = testing::StartsWith("Cannot write log file ");
    EXPECT_THAT(Lines(5), testing::UnorderedElementsAre("buffered", "quiet", "exit", " " + end, complaint));
}

TEST_F(CommandRunner, ReportsAFailedFork) {
    std::filesystem::permissions(folder_.path(), std::filesystem::perms::all);
    for (const rlim_t processes : {0u, 2u}) {  // not even the child, or not the grandchild
        const auto host = [&] {
            const rlimit limit{processes, processes};
            // The limit does not bind root.
            if ((geteuid() == 0 && setuid(54321) != 0) || setrlimit(RLIMIT_NPROC, &limit) != 0) return 2;
            system_run("x", mutex_);
            // Not by exit, where a sanitizer may want a process to look for leaks.
            _exit(g_sLastErrorMessage == "error in fork! End!" ? 0 : 1);
        };
        const int status = ExitStatus(host);
        if (WEXITSTATUS(status) == 2) GTEST_SKIP() << "no process limit to be had";
        EXPECT_EQ(status, 0);
    }
    EXPECT_THAT(Lines(6), testing::IsSupersetOf({"\tx start!", "\terror in fork!", "\terror in fork! End!"}));
}

TEST(LocalTime, LaterAgreesWithTheCLibrary) {
    for (std::time_t start = 0; start < 150L * 365 * 86400; start += 86399L * 5) {
        std::tm from{};
        gmtime_r(&start, &from);
        std::tm later = utility::internal::Later(from, start % 10'000'000);
        const int day = later.tm_mday;
        ASSERT_EQ(timegm(&later), start + start % 10'000'000) << start;
        ASSERT_EQ(later.tm_mday, day) << start;  // was in its range before
    }
}

}  // namespace
