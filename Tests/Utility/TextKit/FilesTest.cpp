#undef _FORTIFY_SOURCE  // or the C library's headers define read() themselves
#include <TextKit.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "Support/TestSupport.h"

// The library's calls come here first, so that they can fail, or be interrupted, at will.
namespace {
int g_fsyncs_until_failure = -1, g_rename_error = 0;
ssize_t g_most_bytes = SSIZE_MAX;  // more are cut short
int g_transfers = 0;               // calls of read and write
bool g_interrupt = false;          // every other call is

template <typename... Arguments>
long Call(bool may_be_interrupted, long number, Arguments... arguments) {
    static bool interrupted = false;
    if (may_be_interrupted && g_interrupt && (interrupted = !interrupted)) return errno = EINTR, -1;
    return syscall(number, arguments...);
}
std::size_t AtMost(std::size_t count) {
    ++g_transfers;
    return std::min(count, static_cast<std::size_t>(g_most_bytes));
}
}  // namespace

extern "C" {
int fsync(int descriptor) {
    if (g_fsyncs_until_failure >= 0 && g_fsyncs_until_failure-- == 0) return errno = EIO, -1;
    return static_cast<int>(Call(true, SYS_fsync, descriptor));
}
int rename(const char* from, const char* to) noexcept {
    if (g_rename_error != 0) return errno = g_rename_error, -1;
    return static_cast<int>(Call(false, SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
ssize_t read(int descriptor, void* bytes, std::size_t count) {
    return Call(true, SYS_read, descriptor, bytes, AtMost(count));
}
ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    return Call(true, SYS_write, descriptor, bytes, AtMost(count));
}
}

namespace {

using test_support::ReadFileBytes;
using test_support::Restore;
using test_support::TempFolder;
using test_support::WriteFileBytes;

std::string Read(const std::string& path, int expected_error = 0) {
    std::error_code error = std::make_error_code(std::errc::io_error);
    std::string bytes = textkit::ReadFile(path, error);
    EXPECT_EQ(error.value(), expected_error) << path << error.message();
    return bytes;
}

int WriteError(const std::string& path, std::string_view bytes) {
    std::error_code error = std::make_error_code(std::errc::io_error);
    const bool done = textkit::WriteFile(path, bytes, error);
    EXPECT_EQ(done, !error) << path;
    return error.value();
}

std::size_t FileCount(const TempFolder& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path()), {}));
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(FilesTest, ReadsWhateverHoldsBytes) {
    const TempFolder folder;
    const std::string bytes = std::string(100000, 'x') + '\0' + "y";
    WriteFileBytes(folder / "file", bytes);
    EXPECT_EQ(Read(folder / "file"), bytes);
    EXPECT_NE(Read("/proc/self/status").find("Pid:"), std::string::npos);
    EXPECT_EQ(Read("/dev/null"), "");
    Read(folder / "none", ENOENT);
    Read(folder.path(), EISDIR);
    Read(std::string("a\0b", 3), EINVAL);
    Read("", ENOENT);
    const Restore restore_most(g_most_bytes);
    const Restore restore_interrupt(g_interrupt);
    g_most_bytes = 7000;
    g_interrupt = true;
    g_transfers = 0;
    EXPECT_EQ(Read(folder / "file"), bytes);
    EXPECT_GT(g_transfers, 15);

    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    std::thread writer([&] {
        std::string_view rest = bytes;
        for (ssize_t n; !rest.empty(); rest.remove_prefix(static_cast<std::size_t>(n)))
            n = syscall(SYS_write, ends[1], rest.data(), std::min<std::size_t>(rest.size(), 333));
        close(ends[1]);
    });
    std::error_code error;
    EXPECT_EQ(textkit::ReadFile(ends[0], error), bytes);
    writer.join();
    close(ends[0]);
    textkit::ReadFile(ends[0], error);
    EXPECT_EQ(error.value(), EBADF);
}

TEST(FilesTest, ReadsTextOfAnyEncoding) {
    const TempFolder folder;
    WriteFileBytes(folder / "declared", "<meta charset=gb2312>\xD6\xD0");
    WriteFileBytes(folder / "big-endian", test_support::Bytes("\xFE\xFF\x4E\x2D"));
    std::error_code error;
    EXPECT_EQ(textkit::ReadTextFile(folder / "declared", error).text, "<meta charset=gb2312>中");
    EXPECT_EQ(textkit::ReadTextFile(folder / "big-endian", error).text, "中");
    EXPECT_EQ(textkit::ReadTextFile(folder / "none", error).text, "");
    EXPECT_EQ(error.value(), ENOENT);
}

TEST(FilesTest, ReplacesAFileAndKeepsItsPermissions) {
    const TempFolder folder;
    const mode_t mask = umask(027);
    EXPECT_EQ(WriteError(folder / "file", "new"), 0);
    umask(mask);
    EXPECT_EQ(ModeOf(folder / "file"), 0640u);
    chmod((folder / "file").c_str(), 04604);
    std::filesystem::create_hard_link(folder / "file", folder / "hard");
    const Restore restore_most(g_most_bytes);
    const Restore restore_interrupt(g_interrupt);
    g_most_bytes = 5;
    g_interrupt = true;
    const std::string bytes = test_support::Bytes("longer\0than five bytes");
    g_transfers = 0;
    EXPECT_EQ(WriteError(folder / "file", bytes), 0);
    EXPECT_GT(g_transfers, 4);
    EXPECT_EQ(ReadFileBytes(folder / "file"), bytes);
    EXPECT_EQ(ModeOf(folder / "file"), 04604u);
    EXPECT_EQ(ReadFileBytes(folder / "hard"), "new");
    EXPECT_EQ(WriteError(folder / "file", {}), 0);
    EXPECT_EQ(ReadFileBytes(folder / "file"), "");
    EXPECT_EQ(FileCount(folder), 2u);
}

TEST(FilesTest, FollowsSymbolicLinks) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "sub");
    std::filesystem::create_symlink("sub/file", folder / "link");
    std::filesystem::create_symlink(folder / "link", folder / "link2");
    for (const char* content : {"dangling", "again"}) {
        EXPECT_EQ(WriteError(folder / "link2", content), 0);
        EXPECT_EQ(ReadFileBytes(folder / "sub/file"), content);
        EXPECT_TRUE(std::filesystem::is_symlink(folder / "link") && std::filesystem::is_symlink(folder / "link2"));
    }
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_EQ(WriteError(folder / "circle", "x"), ELOOP);
    EXPECT_EQ(FileCount(folder), 4u);
}

TEST(FilesTest, FailureLeavesTheOldContentAlone) {
    const TempFolder folder;
    WriteFileBytes(folder / "file", "old");
    const auto expect_old = [&](int error, const char* what) {
        EXPECT_EQ(WriteError(folder / "file", "new"), error) << what;
        EXPECT_EQ(ReadFileBytes(folder / "file"), "old") << what;
        EXPECT_EQ(FileCount(folder), 1u) << what;
    };
    {
        const Restore restore(g_fsyncs_until_failure);
        g_fsyncs_until_failure = 0;
        expect_old(EIO, "fsync of the file");
    }
    {
        const Restore restore(g_rename_error);
        g_rename_error = EXDEV;
        expect_old(EXDEV, "rename");
    }
    {  // no room: what is beyond the limit cannot be written
        struct rlimit limit {};
        getrlimit(RLIMIT_FSIZE, &limit);
        const struct rlimit tight { 2, limit.rlim_max };
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &tight);
        expect_old(EFBIG, "no room");
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    if (geteuid() != 0) {
        chmod(folder.path().c_str(), 0555);
        expect_old(EACCES, "read-only folder");
        chmod(folder.path().c_str(), 0755);
    }
    {  // the new content is in place, but may not outlast a crash
        const Restore restore(g_fsyncs_until_failure);
        g_fsyncs_until_failure = 1;
        EXPECT_EQ(WriteError(folder / "file", "new"), EIO);
        EXPECT_EQ(ReadFileBytes(folder / "file"), "new");
    }
    EXPECT_EQ(WriteError(folder / "none/file", "x"), ENOENT);
    EXPECT_EQ(WriteError(folder / "file/x", "x"), ENOTDIR);
    EXPECT_EQ(WriteError(folder.path(), "x"), EISDIR);
    EXPECT_EQ(WriteError(folder / "new/", "x"), ENOENT);
    EXPECT_EQ(WriteError("", "x"), ENOENT);
    EXPECT_EQ(WriteError(std::string("a\0b", 3), "x"), EINVAL);
    EXPECT_EQ(FileCount(folder), 1u);
}

// A device must stay what it is.
TEST(FilesTest, WritesToDevicesDirectly) {
    EXPECT_EQ(WriteError("/dev/null", "x"), 0);
    struct stat status {};
    ASSERT_EQ(stat("/dev/null", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
    EXPECT_EQ(WriteError("/dev/full", "x"), ENOSPC);
}

// A process killed at any moment leaves one of the two contents, whole.
TEST(FilesTest, AKilledWriterLeavesAWholeFile) {
    const TempFolder folder;
    const std::string contents[] = {std::string(300000, 'a'), std::string(200000, 'b')};
    WriteFileBytes(folder / "file", contents[0]);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            std::error_code error;
            for (int i = 0;; ++i) textkit::WriteFile(folder / "file", contents[i % 2], error);
        }
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(500 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string left = ReadFileBytes(folder / "file");
        EXPECT_TRUE(left == contents[0] || left == contents[1]) << left.size();
    }
}

}  // namespace
