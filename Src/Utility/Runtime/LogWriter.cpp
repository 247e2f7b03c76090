#include "Utility/Runtime/LogWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <ctime>
#include <mutex>
#include <utility>

#include "Internal/EarlyInit.h"
#include "Internal/LocalTime.h"
#include "Internal/LogLine.h"
#include "Utility/Global.h"

using utility::internal::LocalNow;

UTILITY_EARLY_INIT std::string g_sLogPath;

namespace {

std::mutex log_path_mutex;

std::string FormatTime(const std::tm& time, const char* format) {
    char text[100];
    return std::string(text, std::strftime(text, sizeof text, format, &time));
}

std::string Stamp(const std::tm& time) {
    return FormatTime(time, "%Y-%m-%d %H:%M:%S");
}

// "[stamp]", the separator and the message up to its first NUL, as "%s" would print it.
std::string FormatLine(const std::string& stamp, char separator, const std::string& message) {
    std::string line;
    line.reserve(stamp.size() + message.size() + 4);
    line.append(1, '[').append(stamp).append(1, ']').append(1, separator);
    return line.append(message.c_str()).append(1, '\n');
}

// The directory of the setting, which the first call that finds it empty fills in. Callers in several threads may
// be that first call, hence the lock.
std::string SettledLogPath() {
    const std::lock_guard<std::mutex> lock(log_path_mutex);
    if (g_sLogPath.empty()) {
        char directory[1000] = {};
        if (getcwd(directory, sizeof directory) != nullptr) g_sLogPath = directory;
    }
    return g_sLogPath;
}

// The directory with the separator behind it.
std::string LogDirectory(const char* directory) {
    if (directory == nullptr) return SettledLogPath() + '/';
    std::string name = directory;
    if (name.empty() || (name.back() != '/' && name.back() != '\\')) name += '/';
    return name;
}

// Appends in one write, which the system keeps in one piece among threads and processes; buffered output may be cut
// anywhere. Only a write that falls short is taken up again. False if anything of the line may be missing.
bool AppendToFile(const std::string& file_name, const std::string& line) {
    const int file = open(file_name.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file < 0) return false;
    std::size_t written = 0;
    while (written < line.size()) {
        const ssize_t result = write(file, line.data() + written, line.size() - written);
        if (result > 0) {
            written += static_cast<std::size_t>(result);
        } else if (result == 0 || errno != EINTR) {
            break;
        }
    }
    return close(file) == 0 && written == line.size();
}

// Both lines in one piece as well, and at once: the process may be about to end.
void PrintToConsole(const std::string& line, const std::string& complaint) {
    const std::string text = line + complaint;
    (void)std::fwrite(text.data(), 1, text.size(), stdout);  // nowhere is left to complain to
    (void)std::fflush(stdout);
}

}  // namespace

void utility::internal::WriteLogLine(const std::string& message, const std::string& directory, bool is_error,
                                     const std::tm& time) {
    const std::string stamp = Stamp(time);
    const std::string file_name = directory + FormatTime(time, "%Y%m%d") + (is_error ? ".err" : ".log");
    if (!AppendToFile(file_name, FormatLine(stamp, '\t', message))) {
        PrintToConsole(FormatLine(stamp, ' ', message), "Cannot write log file " + file_name + "!\r\n");
    }
}

void WriteLog(std::string message, char const* directory, bool is_error) {
    if (!g_bLog) return;
    const int saved_errno = errno;  // the caller may still want to know why it failed
    utility::internal::WriteLogLine(message, LogDirectory(directory), is_error, LocalNow());
    errno = saved_errno;
}

void WriteError(std::string message, char const* directory) {
    WriteLog(std::move(message), directory, true);
}

void WriteLog(std::FILE* stream, std::string message) {
    const std::string line = FormatLine(Stamp(LocalNow()), ' ', message);
    if (stream == nullptr) {
        PrintToConsole(line, "Cannot write log file!\r\n");
    } else {
        (void)std::fwrite(line.data(), 1, line.size(), stream);
    }
}
