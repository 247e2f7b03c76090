#include "Input.h"

#include <Utility.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace pagetext {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string ReadToEnd(std::FILE* file, std::string& bytes) {
    char block[65536];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, n);
    return std::ferror(file) != 0 ? std::strerror(errno) : "";
}

}  // namespace

std::string ReadPage(const std::string& name, std::string& bytes) {
    bytes.clear();
    if (name == "-") return ReadToEnd(stdin, bytes);
    // ReadFile tells failure from an empty file by no reason, so the file is tried first.
    const std::unique_ptr<std::FILE, CloseFile> probe(std::fopen(name.c_str(), "rb"));
    struct stat status {};
    if (probe == nullptr || fstat(fileno(probe.get()), &status) != 0) return std::strerror(errno);
    if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
    if (!S_ISREG(status.st_mode) || status.st_size == 0) return ReadToEnd(probe.get(), bytes);

    char* buffer = nullptr;
    const auto length = static_cast<std::size_t>(ReadFile(name.c_str(), &buffer, 0, 0, true));
    const std::unique_ptr<char[]> owner(buffer);
    if (length == 0) return std::strerror(buffer == nullptr ? ENOMEM : EIO);
    // Where the size is not that of the content (a file cut short meanwhile, some files of the system), the rest of the
    // buffer is NUL bytes that nobody wrote.
    if (std::fseek(probe.get(), static_cast<long>(length) - 1, SEEK_SET) != 0 || std::fgetc(probe.get()) == EOF) {
        std::rewind(probe.get());
        return ReadToEnd(probe.get(), bytes);
    }
    bytes.assign(buffer, length);
    return {};
}

}  // namespace pagetext
