#ifndef UTILITY_TESTS_STREAMSUPPORT_H
#define UTILITY_TESTS_STREAMSUPPORT_H

// Open streams with known content, and what a stream holds in the end.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace test_support {

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, StreamCloser>;

// A nameless file open for reading and writing, at its beginning.
inline Stream StreamOf(std::string_view bytes = {}) {
    Stream stream(std::tmpfile());
    if (stream == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size())
        std::abort();
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
