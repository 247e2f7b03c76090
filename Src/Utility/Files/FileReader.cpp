#include "Utility/Files/FileReader.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <utility>

#include "Internal/LastError.h"
#include "Internal/MutexLock.h"
#include "Internal/OwnedStream.h"
#include "Utility/Runtime/LogWriter.h"

using utility::internal::MutexLock;
using Stream = utility::internal::OwnedStream;

namespace {

bool IsHeld(const CReadFile& reader, const char* file_name) {
    return strcasecmp(file_name, reader.m_sFileName.c_str()) == 0;
}

Stream Open(const char* file_name) {
    Stream stream(std::fopen(file_name, "rb"));
    if (stream == nullptr) {
        WriteLog(std::string("Failed open file  ") + file_name, nullptr, false);
    } else {
        // Reads go straight to the caller's buffer: nothing is read twice, and no stale copy of a file that has
        // changed since is left over from the read before.
        (void)std::setvbuf(stream.get(), nullptr, _IONBF, 0);
    }
    return stream;
}

long StreamSize(std::FILE* stream, const char* file_name) {
    struct stat status;
    if (fstat(fileno(stream), &status) == 0) return status.st_size;
    WriteError("_fstat( _fileno(m_fpFileRead) failed", nullptr);
    WriteError(file_name, nullptr);
    return 0;
}

// Makes `stream` the held file, under the lock, and gives back the one that was held. `name` comes ready made because
// nothing may fail halfway.
Stream Replace(CReadFile& reader, Stream stream, long size, std::string name) {
    reader.m_bOpening = true;
    Stream previous(std::exchange(reader.m_fpFileRead, stream.release()));
    reader.m_nFileSize = size;
    reader.m_sFileName = std::move(name);
    reader.m_bOpening = false;
    return previous;
}

// Memory of this machine in bytes; the greatest value where the system does not tell.
std::size_t PhysicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long page_size = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || page_size <= 0) return SIZE_MAX;
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(page_size);
}

// Whether to ask for memory for `count` bytes and a NUL. Systems that grant more memory than they have end the process
// once it is filled, and what the file does not fill is filled with zeros; so such a request is turned down here.
bool IsReasonable(std::size_t count, std::size_t file_size) {
    return count < PTRDIFF_MAX && (count <= file_size || count <= PhysicalMemory());
}

// Whether the stream stands at `offset` now, or cannot be positioned and stands where it stands.
bool MoveTo(std::FILE* stream, long offset) {
    return std::fseek(stream, offset, SEEK_SET) == 0 || errno == ESPIPE;
}

// Reads up to `count` bytes and returns how many came.
std::size_t ReadOn(std::FILE* stream, char* bytes, std::size_t count) {
    std::size_t got = 0;
    do {
        std::clearerr(stream);
        got += std::fread(bytes + got, 1, count - got, stream);
    } while (got < count && std::ferror(stream) != 0 && errno == EINTR);
    return got;
}

// Sets `text` to the bytes that come of the `count` at `offset`, but no NULs; false without the memory. The text grows
// piece by piece, so that each is filled with zeros, read and searched for NULs while it is in the cache.
bool AssignRange(std::FILE* stream, long offset, std::size_t count, std::string& text) {
    constexpr std::size_t kPiece = std::size_t{32} << 10;
    try {
        text.reserve(count);
    } catch (const std::exception&) {
        return false;
    }
    if (!MoveTo(stream, offset)) count = 0;
    std::size_t kept = 0;
    for (std::size_t done = 0; done < count;) {
        const std::size_t wanted = std::min(count - done, kPiece);
        text.resize(kept + wanted);
        char* const piece = text.data() + kept;
        const std::size_t got = ReadOn(stream, piece, wanted);
        const bool has_nul = std::memchr(piece, '\0', got) != nullptr;
        kept += has_nul ? static_cast<std::size_t>(std::remove(piece, piece + got, '\0') - piece) : got;
        if (got < wanted) break;
        done += got;
    }
    text.resize(kept);
    return true;
}

// The part of a read that needs the held file, and the lock on it: `take(stream, count, file_size)`, with a null stream
// where nothing is to be read.
template <typename Take>
std::size_t ReadHeld(CReadFile& reader, std::size_t count, bool whole_file, Take take) {
    const auto file_size = static_cast<std::size_t>(std::max(reader.m_nFileSize, 0L));
    if (count == 0 && whole_file) count = file_size;
    if (reader.m_fpFileRead == nullptr) count = 0;
    ++reader.m_nReadCount;
    const std::size_t result = take(count == 0 ? nullptr : reader.m_fpFileRead, count, file_size);
    --reader.m_nReadCount;
    return result;
}

// The same with the file of that name held; 0 where it cannot be opened.
template <typename Take>
std::size_t Read(CReadFile& reader, const char* file_name, std::size_t count, bool whole_file, Take take) {
    {
        const MutexLock lock(reader.m_mutexRead);
        if (IsHeld(reader, file_name)) return ReadHeld(reader, count, whole_file, take);
    }
    // Opened without the lock, since that may take long; so another thread may have done the same by the time the lock
    // is held again. The reader is then locked until the read is over: a file that was just put in place is not
    // taken away before it is read.
    Stream stream = Open(file_name);
    if (stream == nullptr) return 0;
    const long size = StreamSize(stream.get(), file_name);
    Stream previous;  // closed after the lock is gone
    std::string name = file_name;
    const MutexLock lock(reader.m_mutexRead);
    if (!IsHeld(reader, file_name)) previous = Replace(reader, std::move(stream), size, std::move(name));
    return ReadHeld(reader, count, whole_file, take);
}

}  // namespace

CReadFile::CReadFile() : m_fpFileRead(nullptr), m_nReadCount(0), m_bOpening(false), m_nFileSize(0) {
    pthread_mutex_init(&m_mutexRead, nullptr);
}

CReadFile::~CReadFile() {
    pthread_mutex_destroy(&m_mutexRead);
    if (m_fpFileRead != nullptr) std::fclose(m_fpFileRead);
}

std::size_t CReadFile::ReadFile(char const* file_name, char** buffer, long offset, std::size_t count, bool whole_file) {
    return Read(*this, file_name, count, whole_file, [=](std::FILE* stream, std::size_t size, std::size_t file_size) {
        if (!IsReasonable(size, file_size)) return std::size_t{0};
        char* const bytes = new (std::nothrow) char[size + 1];
        if (bytes == nullptr) return std::size_t{0};
        const std::size_t got = stream == nullptr || !MoveTo(stream, offset) ? 0 : ReadOn(stream, bytes, size);
        std::memset(bytes + got, 0, size + 1 - got);
        *buffer = bytes;
        return size;
    });
}

std::size_t CReadFile::ReadFile(char const* file_name, std::string& text, long offset, std::size_t count,
                                bool whole_file) {
    std::string bytes;  // not `text`, in which the name may lie
    const auto take = [&](std::FILE* stream, std::size_t size, std::size_t file_size) {
        return stream != nullptr && IsReasonable(size, file_size) && AssignRange(stream, offset, size, bytes) ? size
                                                                                                              : 0;
    };
    if (Read(*this, file_name, count, whole_file, take) != 0) {
        text = std::move(bytes);
        return text.size();
    }
    const std::string message = std::string("Error read file ") + file_name;  // first: the name may lie in `text`
    text.clear();
    utility::internal::SetLastErrorMessage(message);
    WriteError(message, nullptr);
    return 0;
}

std::size_t ReadFile(char const* file_name, char** buffer, long offset, std::size_t count, bool whole_file) {
    return CReadFile().ReadFile(file_name, buffer, offset, count, whole_file);
}

std::size_t ReadFile(char const* file_name, std::string& text, long offset, std::size_t count, bool whole_file) {
    return CReadFile().ReadFile(file_name, text, offset, count, whole_file);
}
