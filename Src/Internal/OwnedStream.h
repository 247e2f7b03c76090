#ifndef UTILITY_INTERNAL_OWNEDSTREAM_H
#define UTILITY_INTERNAL_OWNEDSTREAM_H

#include <cstdio>
#include <memory>

namespace utility::internal {

struct StreamCloser {
    void operator()(std::FILE* stream) const { (void)std::fclose(stream); }
};

// A stream that is closed with its scope.
using OwnedStream = std::unique_ptr<std::FILE, StreamCloser>;

}  // namespace utility::internal

#endif
