#undef _FORTIFY_SOURCE  // or the C library's headers define read() themselves
#include "Reliability/FaultInjection.h"

#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

thread_local bool t_is_watched = false;
thread_local long t_until_failure = 0, t_live_blocks = 0;
thread_local bool t_persists = false, t_has_failed = false;

thread_local std::string* t_file_content = nullptr;
thread_local faults::Weakness t_file_weakness;

bool Fails() {
    if (!t_is_watched) return false;
    const bool fails = t_has_failed ? t_persists : --t_until_failure == 0;
    t_has_failed |= fails;
    if (fails) errno = ENOMEM;
    return fails;
}

void* Counted(void* block) {
    if (t_is_watched && block != nullptr) ++t_live_blocks;
    return block;
}

struct Cookie {
    std::string* content;
    faults::Weakness weakness;
    std::size_t position;
};

// The bytes that one transfer may move, or -1 with errno.
long Allowed(Cookie& cookie, std::size_t size) {
    faults::Weakness& weakness = cookie.weakness;
    std::size_t allowed = std::min(size, weakness.longest_transfer);
    if (weakness.failing_at < 0) return static_cast<long>(allowed);
    const auto failing_at = static_cast<std::size_t>(weakness.failing_at);
    if (cookie.position < failing_at) return static_cast<long>(std::min(allowed, failing_at - cookie.position));
    if (weakness.is_passing) weakness.failing_at = -1;
    errno = weakness.error;
    return -1;
}

thread_local bool t_transfers_are_weak = false;
thread_local Cookie t_transfers;

// Moves as many bytes as are allowed at `position`, by `transfer(count)`.
template <typename Transfer>
ssize_t Weakly(std::size_t position, std::size_t size, Transfer transfer) {
    if (!t_transfers_are_weak) return transfer(size);
    t_transfers.position = position;
    const long allowed = Allowed(t_transfers, size);
    const ssize_t moved = allowed < 0 ? -1 : transfer(static_cast<std::size_t>(allowed));
    if (moved > 0) t_transfers.position += static_cast<std::size_t>(moved);
    return moved;
}

ssize_t Read(void* cookie_pointer, char* buffer, std::size_t size) {
    Cookie& cookie = *static_cast<Cookie*>(cookie_pointer);
    const std::size_t left = cookie.content->size() - std::min(cookie.content->size(), cookie.position);
    const long allowed = Allowed(cookie, std::min(size, left));
    if (allowed <= 0) return allowed;
    std::memcpy(buffer, cookie.content->data() + cookie.position, static_cast<std::size_t>(allowed));
    cookie.position += static_cast<std::size_t>(allowed);
    return allowed;
}

ssize_t Write(void* cookie_pointer, const char* buffer, std::size_t size) {
    Cookie& cookie = *static_cast<Cookie*>(cookie_pointer);
    const long allowed = Allowed(cookie, size);
    if (allowed < 0) return 0;  // as such a stream tells an error
    cookie.content->resize(std::max(cookie.content->size(), cookie.position));
    cookie.content->replace(cookie.position, static_cast<std::size_t>(allowed), buffer,
                            static_cast<std::size_t>(allowed));
    cookie.position += static_cast<std::size_t>(allowed);
    return allowed;
}

int Seek(void* cookie_pointer, off64_t* offset, int whence) {
    Cookie& cookie = *static_cast<Cookie*>(cookie_pointer);
    const std::size_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? cookie.position : cookie.content->size();
    const long position = static_cast<long>(base) + *offset;
    if (position < 0) {
        errno = EINVAL;
        return -1;
    }
    *offset = position;
    cookie.position = static_cast<std::size_t>(position);
    return 0;
}

int Close(void* cookie) {
    delete static_cast<Cookie*>(cookie);
    return 0;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    return Fails() ? nullptr : Counted(__libc_malloc(size));
}
void* calloc(std::size_t count, std::size_t size) {
    return Fails() ? nullptr : Counted(__libc_calloc(count, size));
}
void* realloc(void* block, std::size_t size) {
    if (Fails()) return nullptr;
    void* const moved = __libc_realloc(block, size);
    return block == nullptr ? Counted(moved) : moved;
}
void free(void* block) {
    if (t_is_watched && block != nullptr) --t_live_blocks;
    __libc_free(block);
}

ssize_t read(int file, void* buffer, std::size_t size) {
    return Weakly(t_transfers.position, size,
                  [&](std::size_t count) { return syscall(SYS_read, file, buffer, count); });
}
ssize_t pread(int file, void* buffer, std::size_t size, off_t offset) {
    return Weakly(static_cast<std::size_t>(offset), size,
                  [&](std::size_t count) { return syscall(SYS_pread64, file, buffer, count, offset); });
}
ssize_t write(int file, const void* buffer, std::size_t size) {
    return Weakly(t_transfers.position, size,
                  [&](std::size_t count) { return syscall(SYS_write, file, buffer, count); });
}

std::FILE* fopen(const char* name, const char* mode) {
    if (t_file_content != nullptr) return faults::Open(*t_file_content, mode, t_file_weakness);
    static const auto open = reinterpret_cast<std::FILE* (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "fopen"));
    return open(name, mode);
}
}

namespace faults {

FailingAllocation::FailingAllocation(long nth, bool persist) {
    t_until_failure = nth;
    t_persists = persist;
    t_live_blocks = 0;
    t_has_failed = false;
    t_is_watched = true;
}

FailingAllocation::~FailingAllocation() {
    t_is_watched = false;
}

bool FailingAllocation::Failed() const {
    return t_has_failed;
}

long FailingAllocation::Leaked() const {
    return t_live_blocks;
}

std::FILE* Open(std::string& content, const char* mode, const Weakness& weakness) {
    if (mode[0] == 'w') content.clear();
    auto* const cookie = new Cookie{&content, weakness, 0};
    return fopencookie(cookie, mode, {Read, Write, Seek, Close});
}

WeakTransfers::WeakTransfers(const Weakness& weakness) {
    t_transfers = {nullptr, weakness, 0};
    t_transfers_are_weak = true;
}

WeakTransfers::~WeakTransfers() {
    t_transfers_are_weak = false;
}

WeakFiles::WeakFiles(const std::string& content, const Weakness& weakness) : content_(content) {
    t_file_content = &content_;
    t_file_weakness = weakness;
}

WeakFiles::~WeakFiles() {
    t_file_content = nullptr;
}

}  // namespace faults
