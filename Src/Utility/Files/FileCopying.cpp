#include "Utility/Files/FileCopying.h"

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "Internal/MutexLock.h"
#include "Internal/OwnedStream.h"
#include "Utility/Runtime/LogWriter.h"

using utility::internal::MutexLock;
using utility::internal::OwnedStream;

namespace {

constexpr std::size_t kLargestBuffer = std::size_t{1} << 20;
constexpr long kSourceUnknown = -1;
constexpr long kWrongLength = -2;

std::optional<MutexLock> LockIfGiven(pthread_mutex_t* mutex) {
    if (mutex == nullptr) return std::nullopt;
    // NOLINTNEXTLINE(cert-fio38-c,misc-non-copyable-objects): only its address is taken
    return std::optional<MutexLock>(std::in_place, *mutex);
}

OwnedStream OpenOrReport(const char* path, const char* mode, const char* message) {
    OwnedStream stream(std::fopen(path, mode));
    if (stream == nullptr) {
        WriteError(message, nullptr);
        WriteError(path, nullptr);
    }
    return stream;
}

// Moves to the end of the stream and returns its position there; -1 if that fails, also because of bytes
// written before that the disk does not take. (ftell alone would count those.)
long MoveToEnd(std::FILE* stream) {
    return std::fseek(stream, 0, SEEK_END) == 0 ? std::ftell(stream) : -1;
}

// Copies up to `count` bytes from where the streams stand and returns how many were written.
std::size_t CopyBytes(std::FILE* source, std::FILE* destination, std::size_t count, unsigned char* buffer,
                      std::size_t buffer_size) {
    std::size_t copied = 0;
    while (copied < count) {
        const std::size_t wanted = std::min(buffer_size, count - copied);
        const std::size_t got = std::fread(buffer, 1, wanted, source);
        const std::size_t written = std::fwrite(buffer, 1, got, destination);
        copied += written;
        if (written < wanted) break;  // the end of the source, or an error on either side
    }
    return copied;
}

}  // namespace

bool FileCopy(char const* source_path, char const* destination_path, std::size_t buffer_size) {
    const OwnedStream source = OpenOrReport(source_path, "rb", "Error read file");
    if (source == nullptr) return false;
    const OwnedStream destination = OpenOrReport(destination_path, "wb", "Error write file");
    if (destination == nullptr) return false;
    if (buffer_size >= BUFSIZ) {
        // The streams' own buffers would only cut each piece in two.
        std::setvbuf(source.get(), nullptr, _IONBF, 0);
        std::setvbuf(destination.get(), nullptr, _IONBF, 0);
    }
    FileCopy(source.get(), destination.get(), buffer_size, nullptr, 0);
    return true;
}

long FileCopy(std::FILE* source, std::FILE* destination, std::size_t buffer_size, pthread_mutex_t* mutex,
              std::size_t limit) {
    buffer_size = std::min(buffer_size, kLargestBuffer);
    const std::unique_ptr<unsigned char[]> buffer(new (std::nothrow) unsigned char[buffer_size]);
    if (buffer_size == 0 || buffer == nullptr) return kWrongLength;
    long start;
    {
        const auto lock = LockIfGiven(mutex);
        start = MoveToEnd(destination);
        (void)std::fseek(source, 0, SEEK_SET);  // a pipe is read from where it stands
        CopyBytes(source, destination, limit == 0 ? SIZE_MAX : limit, buffer.get(), buffer_size);
    }
    const long end = MoveToEnd(destination);
    struct stat status;
    if (fstat(fileno(source), &status) != 0) return kSourceUnknown;
    const std::size_t expected = limit == 0 ? static_cast<std::size_t>(status.st_size) : limit;
    if (start < 0 || end < start || static_cast<std::size_t>(end - start) != expected) return kWrongLength;
    return end;
}

std::size_t FileCopy(std::FILE* source, std::FILE* destination, std::size_t start, std::size_t end,
                     unsigned char* buffer, std::size_t buffer_size, pthread_mutex_t* mutex) {
    if (buffer_size == 0 || end <= start || start > LONG_MAX) return 0;
    const auto lock = LockIfGiven(mutex);
    if (std::fseek(source, static_cast<long>(start), SEEK_SET) != 0) return 0;
    return CopyBytes(source, destination, end - start, buffer, buffer_size);
}
