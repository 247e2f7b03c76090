#include "Utility/TextKit/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <new>
#include <utility>

namespace textkit {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;  // some systems refuse more in one call

std::error_code LastError() {
    return {errno, std::generic_category()};
}

// Repeats a system call that a signal interrupted.
template <typename Call>
auto Repeat(Call call) {
    decltype(call()) result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

class Descriptor {
public:
    Descriptor(const std::string& path, int flags, mode_t mode = 0)
        : number_(Repeat([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); })) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    // An interrupted close has closed.
    bool Close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || close(number) == 0 || errno == EINTR;
    }

private:
    int number_;
};

bool HasNul(const std::string& path, std::error_code& error) {
    error.clear();
    if (path.find('\0') != path.npos) error = std::make_error_code(std::errc::invalid_argument);
    return error.value() != 0;
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t most = std::min(bytes.size(), kMostAtOnce);
        const ssize_t written = Repeat([&] { return write(descriptor, bytes.data(), most); });
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Some file systems and devices have nothing to write out.
bool WriteOut(int descriptor) {
    return Repeat([=] { return fsync(descriptor); }) == 0 || errno == EINVAL || errno == ENOTSUP;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? "./" : path.substr(0, slash + 1);
}

// Where the symbolic links at `path` lead, also if nothing is there; empty, and errno set, where they run in a circle.
std::string Target(std::string path) {
    constexpr int kMostLinks = 40;
    for (int links = 0; links < kMostLinks; ++links) {
        std::string target(256, '\0');
        for (ssize_t length;; target.resize(2 * target.size())) {
            length = readlink(path.c_str(), target.data(), target.size());
            if (length < 0) return path;
            if (static_cast<std::size_t>(length) == target.size()) continue;
            target.resize(static_cast<std::size_t>(length));
            break;
        }
        path = target[0] == '/' ? target : FolderOf(path).append(target);
    }
    errno = ELOOP;
    return {};
}

// A name in the folder that no other process or thread is likely to take; O_EXCL settles the rest.
std::string TemporaryName(const std::string& folder, unsigned attempt) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    char name[64];
    std::snprintf(name, sizeof name, ".textkit-%lx-%lx-%x", static_cast<unsigned long>(getpid()),
                  static_cast<unsigned long>(now.tv_nsec), attempt);
    return folder + name;
}

// Gives the new file what the old one has. The set-ID bits go only with the owner.
bool TakeOver(const struct stat& old, int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) return false;
    const bool same_owner =
        (status.st_uid == old.st_uid && status.st_gid == old.st_gid) || fchown(descriptor, old.st_uid, old.st_gid) == 0;
    return fchmod(descriptor, old.st_mode & (same_owner ? 07777 : 0777)) == 0;
}

// Fills the new file, open under the name `temporary`, and gives it the name `path`; removes it where that fails. `old` is
// null where there is no old file.
bool FillAndRename(const std::string& temporary, Descriptor& file, const struct stat* old, std::string_view bytes,
                   const std::string& path) {
    const bool done = (old == nullptr || TakeOver(*old, file.number())) && WriteAll(file.number(), bytes) &&
                      WriteOut(file.number()) && file.Close() && std::rename(temporary.c_str(), path.c_str()) == 0;
    if (done) return true;
    const int reason = errno;
    unlink(temporary.c_str());
    errno = reason;
    return false;
}

bool ReplaceFile(const std::string& path, const struct stat* old, std::string_view bytes) {
    const std::string target = Target(path);
    if (target.empty() && !path.empty()) return false;
    const std::string folder = FolderOf(target);
    constexpr unsigned kMostAttempts = 100;
    for (unsigned attempt = 0; attempt < kMostAttempts; ++attempt) {
        const std::string temporary = TemporaryName(folder, attempt);
        // What nobody else may read is not readable meanwhile, either.
        Descriptor file(temporary, O_WRONLY | O_CREAT | O_EXCL, old == nullptr ? 0666 : 0600);
        if (!file && errno == EEXIST) continue;
        if (!file || !FillAndRename(temporary, file, old, bytes, target)) return false;
        const Descriptor opened_folder(folder, O_RDONLY | O_DIRECTORY);
        // A folder that may be written but not read cannot be written out.
        return opened_folder ? WriteOut(opened_folder.number()) : errno == EACCES;
    }
    return false;
}

bool WriteDirectly(const std::string& path, std::string_view bytes) {
    Descriptor file(path, O_WRONLY);
    return file && WriteAll(file.number(), bytes) && file.Close();
}

}  // namespace

std::string ReadFile(int descriptor, std::error_code& error) {
    error.clear();
    constexpr std::size_t kSmallest = 4096;
    struct stat status {};
    std::string bytes;
    const bool has_size = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0;
    const std::size_t expected = has_size ? static_cast<std::size_t>(status.st_size) : 0;
    if (expected >= bytes.max_size() / 2) throw std::bad_alloc();
    bytes.resize(std::max(expected + 1, kSmallest));  // one more, to see the end
    std::size_t size = 0;
    for (;;) {
        if (size == bytes.size()) bytes.resize(2 * size);
        const std::size_t most = std::min(bytes.size() - size, kMostAtOnce);
        const ssize_t got = Repeat([&] { return read(descriptor, &bytes[size], most); });
        if (got < 0) {
            error = LastError();
            return {};
        }
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

std::string ReadFile(const std::string& path, std::error_code& error) {
    if (HasNul(path, error)) return {};
    const Descriptor file(path, O_RDONLY);
    if (file) return ReadFile(file.number(), error);
    error = LastError();
    return {};
}

Decoded ReadTextFile(const std::string& path, std::error_code& error, const CodeMaps& maps) {
    const std::string bytes = ReadFile(path, error);
    if (error) return {};
    return Decode(bytes, DetectPage(bytes, maps).encoding, maps);
}

bool WriteFile(const std::string& path, std::string_view bytes, std::error_code& error) {
    if (HasNul(path, error)) return false;
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    bool done = false;
    if (!exists && errno == ENOENT) {
        done = ReplaceFile(path, nullptr, bytes);
    } else if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
    } else if (exists) {
        done = S_ISREG(status.st_mode) ? ReplaceFile(path, &status, bytes) : WriteDirectly(path, bytes);
    }
    if (!done) error = LastError();
    return done;
}

}  // namespace textkit
