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
    if (length == 0) return "cannot be read";
    // A file cut short meanwhile would show as NUL bytes at its end.
    if (static_cast<std::size_t>(get_file_size(name.c_str())) < length) return "changed while it was read";
    bytes.assign(buffer, length);
    return {};
}

}  // namespace pagetext
