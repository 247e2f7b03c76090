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
        std::setvbuf(stream.get(), nullptr, _IONBF, 0);
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

// A buffer for `count` bytes and a NUL, or null. Systems that grant more memory than they have end the process once it
// is filled, and what the file does not fill is filled with zeros; so such a request is turned down here.
std::unique_ptr<char[]> AllocateBuffer(std::size_t count, std::size_t file_size) {
    if (count >= PTRDIFF_MAX || (count > file_size && count > PhysicalMemory())) return nullptr;
    return std::unique_ptr<char[]>(new (std::nothrow) char[count + 1]);
}

// Reads up to `count` bytes at `offset` and returns how many came.
std::size_t ReadRange(std::FILE* stream, long offset, char* bytes, std::size_t count) {
    if (std::fseek(stream, offset, SEEK_SET) != 0 && errno != ESPIPE) return 0;
    std::size_t got = 0;
    do {
        std::clearerr(stream);
        got += std::fread(bytes + got, 1, count - got, stream);
    } while (got < count && std::ferror(stream) != 0 && errno == EINTR);
    return got;
}

// The part of a read that needs the held file, and the lock on it.
std::size_t ReadHeld(CReadFile& reader, char** buffer, long offset, std::size_t count, bool whole_file) {
    const auto file_size = static_cast<std::size_t>(std::max(reader.m_nFileSize, 0L));
    if (count == 0 && whole_file) count = file_size;
    if (reader.m_fpFileRead == nullptr) count = 0;
    std::unique_ptr<char[]> bytes = AllocateBuffer(count, file_size);
    if (bytes == nullptr) return 0;
    ++reader.m_nReadCount;
    const std::size_t got = count == 0 ? 0 : ReadRange(reader.m_fpFileRead, offset, bytes.get(), count);
    --reader.m_nReadCount;
    std::memset(bytes.get() + got, 0, count + 1 - got);
    *buffer = bytes.release();
    return count;
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
    {
        const MutexLock lock(m_mutexRead);
        if (IsHeld(*this, file_name)) return ReadHeld(*this, buffer, offset, count, whole_file);
    }
    // Opened without the lock, since that may take long; so another thread may have done the same by the time the lock
    // is held again. The reader is then locked until the read is over: a file that was just put in place is not
    // taken away before it is read.
    Stream stream = Open(file_name);
    if (stream == nullptr) return 0;
    const long size = StreamSize(stream.get(), file_name);
    Stream previous;  // closed after the lock is gone
    std::string name = file_name;
    const MutexLock lock(m_mutexRead);
    if (!IsHeld(*this, file_name)) previous = Replace(*this, std::move(stream), size, std::move(name));
    return ReadHeld(*this, buffer, offset, count, whole_file);
}

std::size_t CReadFile::ReadFile(char const* file_name, std::string& text, long offset, std::size_t count,
                                bool whole_file) {
    char* bytes = nullptr;
    const std::size_t size = ReadFile(file_name, &bytes, offset, count, whole_file);
    const std::unique_ptr<char[]> owner(bytes);
    if (size != 0) {
        try {
            text.assign(bytes, std::remove(bytes, bytes + size, '\0'));
            return text.size();
        } catch (const std::exception&) {
            // No memory for a second copy: a read that failed.
        }
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
