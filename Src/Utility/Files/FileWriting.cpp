#include "Utility/Files/FileWriting.h"

#include <cstdio>

#include "Internal/OwnedStream.h"

using utility::internal::OwnedStream;

namespace {

bool WriteText(const char* path, const std::string& text, const char* mode) {
    if (path == nullptr || *path == '\0') return false;
    const OwnedStream file(std::fopen(path, mode));
    if (file == nullptr) return false;
    (void)std::fputs(text.c_str(), file.get());
    return true;
}

}  // namespace

bool gfn_bWriteFile(char const* path, const std::string& text) {
    return WriteText(path, text, "wb");
}

bool gfn_bAddFile(char const* path, const std::string& text) {
    return WriteText(path, text, "a+");
}
