#include "Utility/Runtime/BufferManager.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

#include "Internal/MutexLock.h"

using utility::internal::MutexLock;

namespace {

constexpr std::size_t kKeepUnit = 2000;
constexpr std::size_t kBatch = 5 * kKeepUnit;
constexpr std::size_t kThreshold = 10 * kKeepUnit;

// Frees the entries that the list holds now, one by one: needs no memory, which is what a full release is there to
// gain.
void FreeAll(CBufferManager& manager) {
    std::size_t count = 0;
    {
        const MutexLock lock(manager.m_mutexBuf);
        count = manager.m_vBuffers.size();
    }
    for (std::size_t i = 0; i < count; ++i) {
        char* buffer = nullptr;
        {
            const MutexLock lock(manager.m_mutexBuf);
            if (i < manager.m_vBuffers.size()) std::swap(buffer, manager.m_vBuffers[i]);
        }
        delete[] buffer;
    }
}

}  // namespace

CBufferManager::CBufferManager() : m_nReleasing(0) {
    pthread_mutex_init(&m_mutexBuf, nullptr);
}

CBufferManager::~CBufferManager() {
    // Not by ReleaseBuf, which needs memory of its own.
    for (char* const buffer : m_vBuffers) delete[] buffer;
    pthread_mutex_destroy(&m_mutexBuf);
}

char* CBufferManager::AddBuffer(char* buffer) {
    ReleaseBuf(false);
    const MutexLock lock(m_mutexBuf);
    m_vBuffers.push_back(buffer);
    return buffer;
}

char* CBufferManager::AddBuffer(char const* text) {
    const std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::memcpy(copy.get(), text, size);
    AddBuffer(copy.get());
    return copy.release();
}

// Entries are taken and set to null under the lock, so that two releases never free the same one, however they overlap,
// and freed without it, so that others can append meanwhile. A batch leaves the list in the same locked step that
// decides on it: no index changes under a release that is going on.
void CBufferManager::ReleaseBuf(bool full) {
    std::vector<char*> batch;
    {
        const MutexLock lock(m_mutexBuf);
        if (!full) {
            if (m_nReleasing > 0 || m_vBuffers.size() <= kThreshold) return;
            const auto end = m_vBuffers.begin() + kBatch;
            batch.assign(m_vBuffers.begin(), end);
            m_vBuffers.erase(m_vBuffers.begin(), end);
        }
        ++m_nReleasing;
    }
    for (char* const buffer : batch) delete[] buffer;
    if (full) FreeAll(*this);
    const MutexLock lock(m_mutexBuf);
    --m_nReleasing;
}
