#include "Utility/Paths/PathNames.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <string_view>
#include <tuple>
#include <utility>

namespace {

constexpr std::size_t kLongestResult = 4095;
constexpr std::size_t kCurrentDirectorySize = 1000;
constexpr const char* kSeparators = "/\\";
constexpr std::size_t kNone = std::string_view::npos;

// Writes the parts, one behind the other, or nothing if they are too long. The first part may lie in the
// buffer.
void Write(std::initializer_list<std::string_view> parts, char* buffer) {
    std::size_t size = 0;
    for (const std::string_view part : parts) {
        size += part.size();
        if (size > kLongestResult) {
            *buffer = '\0';
            return;
        }
    }
    for (const std::string_view part : parts) {
        std::memmove(buffer, part.data(), part.size());
        buffer += part.size();
    }
    *buffer = '\0';
}

struct SplitPath {
    bool has_separator;
    std::string_view directory;  // without the separator
    std::string_view file_name;
};

SplitPath SplitAtLastSeparator(std::string_view path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == kNone) return {false, {}, path};
    return {true, path.substr(0, separator), path.substr(separator + 1)};
}

// Makes each directory of a path and goes into it. Not by strtok, which keeps its place for the whole
// process.
void MakeAndEnter(std::string_view directories) {
    while (!directories.empty()) {
        const std::size_t size = std::min(directories.find_first_of(kSeparators), directories.size());
        if (size > 0) {
            const std::string name(directories.substr(0, size));
            std::ignore = mkdir(name.c_str(), 0777);
            std::ignore = chdir(name.c_str());
        }
        directories.remove_prefix(std::min(size + 1, directories.size()));
    }
}

}  // namespace

void GetFullFileName(char* full_name, const char* directory, const char* file_name) {
    if (directory == nullptr || *directory == '\0') {
        Write({file_name}, full_name);
    } else {
        Write({directory, "/", file_name}, full_name);
    }
}

char* GetAbsolutePath(const char* directory, const char* file_name, char* path) {
    Write({directory, "/", file_name}, path);
    return path;
}

void GetPathFile(const char* path, std::string& directory, std::string& file_name, std::string& extension) {
    const std::string_view whole(path);
    const std::size_t dot = whole.rfind('.');
    const SplitPath split = SplitAtLastSeparator(whole.substr(0, dot));
    extension = dot == kNone ? std::string_view() : whole.substr(dot + 1);
    file_name = split.file_name;
    directory =
        split.has_separator ? split.directory.substr(0, split.directory.find_last_not_of(kSeparators) + 1) : ".";
}

char* GetRelevatePath(const char* path, char* directory, char* file_name) {
    const SplitPath split = SplitAtLastSeparator(path);
    char current[kCurrentDirectorySize];
    if (split.has_separator) {
        Write({split.directory}, directory);
    } else {
        Write({getcwd(current, sizeof current) == nullptr ? "" : current}, directory);
    }
    Write({split.file_name}, file_name);
    return file_name;
}

char* GetFilename(const char* path, char* name) {
    const std::string_view file_name = SplitAtLastSeparator(path).file_name;
    Write({file_name.substr(0, file_name.find('.'))}, name);
    return name;
}

std::string getFilePath(const char* path) {
    const SplitPath split = SplitAtLastSeparator(path);
    return split.has_separator ? std::string(path, split.directory.size() + 1) : std::string();
}

bool IsExtIncluded(const char* extension, const std::vector<std::string>& extensions) {
    return std::any_of(extensions.begin(), extensions.end(), [extension](const std::string& entry) {
        return strncasecmp(extension, entry.c_str(), entry.size()) == 0;
    });
}

const char* gfn_GetFilePath(const char* base_directory, const char* relative_path, std::string& full_path) {
    std::string full = std::string(base_directory) + relative_path;
    std::ignore = chdir(base_directory);
    MakeAndEnter(SplitAtLastSeparator(relative_path).directory);
    full_path = std::move(full);
    return full_path.c_str();
}
