#ifndef UTILITY_TESTS_FAULTINJECTION_H
#define UTILITY_TESTS_FAULTINJECTION_H

// Faults in what the library asks of the C library: allocations that fail, and streams that break off. malloc, fopen
// and read of FaultInjection.cpp take the place of the C library's in the whole program, and do what those do as long
// as no fault is asked for. Faults meet the calling thread alone.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace faults {

// Within its life the `nth` allocation fails, counted from 1, and if `persist` all after it, be it by malloc, calloc,
// realloc or operator new.
class FailingAllocation {
public:
    FailingAllocation(long nth, bool persist);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    bool Failed() const;  // whether the program came so far
    // Blocks allocated since and not freed; negative where older ones were freed.
    long Leaked() const;
};

// What is wrong with a stream.
struct Weakness {
    std::size_t longest_transfer = SIZE_MAX;  // of bytes in one read; what a write falls short is an error of its own
    long failing_at = -1;                     // the position at which a transfer fails
    int error = 0;                            // with this errno
    bool is_passing = false;                  // once only
};

// A stream over `content`, which its owner keeps.
std::FILE* Open(std::string& content, const char* mode, const Weakness& weakness);

// Within its life each read, pread and write of a descriptor is so weak. The position is that in the file for pread,
// and counts from the beginning of that life for the others.
class WeakTransfers {
public:
    explicit WeakTransfers(const Weakness& weakness);
    ~WeakTransfers();
    WeakTransfers(const WeakTransfers&) = delete;
    WeakTransfers& operator=(const WeakTransfers&) = delete;
};

// Within its life fopen gives such streams over a copy of `content`, whatever the name.
class WeakFiles {
public:
    WeakFiles(const std::string& content, const Weakness& weakness);
    ~WeakFiles();
    WeakFiles(const WeakFiles&) = delete;
    WeakFiles& operator=(const WeakFiles&) = delete;

private:
    std::string content_;
};

}  // namespace faults

#endif
