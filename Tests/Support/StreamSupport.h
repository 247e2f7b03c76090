#ifndef UTILITY_TESTS_STREAMSUPPORT_H
#define UTILITY_TESTS_STREAMSUPPORT_H

// Open streams with known content, and what a stream holds in the end.

#include <cstdio>
#include <memory>
#include <string>

namespace test_support {

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

inline Stream Open(const char* path, const char* mode) {
    return Stream(std::fopen(path, mode), std::fclose);
}

// A nameless file open for reading and writing, at its beginning.
inline Stream StreamOf(const std::string& bytes = {}) {
    Stream stream(std::tmpfile(), std::fclose);
    (void)std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
    std::rewind(stream.get());
    return stream;
}

// Everything in the file, which is at its beginning afterwards.
inline std::string BytesIn(const Stream& stream) {
    std::string bytes;
    std::rewind(stream.get());
    for (int c; (c = std::getc(stream.get())) != EOF;) bytes += static_cast<char>(c);
    std::rewind(stream.get());
    return bytes;
}

}  // namespace test_support

#endif
