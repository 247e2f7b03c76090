#include "Utility/Runtime/CommandRunner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <tuple>

#include "Internal/LastError.h"
#include "Internal/LocalTime.h"
#include "Internal/LogLine.h"
#include "Utility/Global.h"
#include "Utility/Runtime/LogWriter.h"

namespace {

// A command and the line for its end, with all that the process which writes it must not ask for: the
// settings and the time zone may be in use, and locked for ever, in a process that was forked while another
// thread held them.
class BackgroundCommand {
public:
    // To be made after the start was logged, which settles the directory of the log.
    BackgroundCommand(const std::string& command, const std::string& end_message)
        : command_(command), end_message_(end_message) {
        if (g_bLog) log_directory_ = g_sLogPath + '/';
        utility::internal::BreakDown(start_, local_start_);
    }

    // False if no process can be made.
    bool Start() const {
        // The only stream that the new process may write to. Flushing all of them would wait for a thread
        // that is reading its input.
        std::fflush(stdout);
        sigset_t all, before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);  // until the new process is rid of the caller's handlers
        const pid_t child = fork();
        if (child == 0) {
            DropSignalHandlers();
            pthread_sigmask(SIG_SETMASK, &before, nullptr);
            RunInGrandchild();
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        if (child < 0) return false;
        int status = 0;
        pid_t ended;
        do {
            ended = waitpid(child, &status, 0);
        } while (ended < 0 && errno == EINTR);
        // Where the host ignores SIGCHLD, or waits for all children itself, the child is gone: take it as
        // well.
        return ended < 0 || status == 0;
    }

private:
    static void DropSignalHandlers() {
        for (int signal = 1; signal < NSIG; ++signal) {
            struct sigaction action;
            if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
            action.sa_handler = SIG_DFL;
            action.sa_flags = 0;
            sigaction(signal, &action, nullptr);
        }
    }

    // Never returns to the caller's code, in either process.
    [[noreturn]] void RunInGrandchild() const {
        const pid_t grandchild = fork();
        if (grandchild != 0) _exit(grandchild > 0 ? 0 : 1);
        try {
            // NOLINTNEXTLINE(cert-env33-c): a shell is what the caller asks for
            std::ignore = std::system(command_.c_str());
            if (!log_directory_.empty()) {
                const std::time_t elapsed = std::max(std::time(nullptr) - start_, std::time_t{0});
                utility::internal::WriteLogLine(end_message_, log_directory_, false,
                                                utility::internal::Later(local_start_, elapsed));
            }
        } catch (...) {
            // No memory for the line.
        }
        _exit(0);
    }

    std::string command_;
    std::string end_message_;
    std::string log_directory_;  // with the separator; empty if nothing is to be logged
    std::time_t start_ = std::time(nullptr);
    std::tm local_start_{};
};

void Report(const std::string& message) {
    utility::internal::SetLastErrorMessage(message);
    WriteLog(message, nullptr, false);
}

}  // namespace

// NOLINTNEXTLINE(cert-fio38-c,misc-non-copyable-objects)
int system_run(char const* command, pthread_mutex_t /*mutex*/) {
    constexpr const char* kForkFailed = "error in fork!";
    constexpr const char* kEnd = " End!";
    const std::string line = command;  // a copy: it may be the last-error message
    std::string message = line + " start!";
    Report(message);
    if (!BackgroundCommand(line, message + kEnd).Start()) {
        message = kForkFailed;
        utility::internal::SetLastErrorMessage(message);
        WriteError(message, nullptr);
    }
    Report(message + kEnd);
    return 1;
}
