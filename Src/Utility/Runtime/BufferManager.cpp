#include "Utility/Runtime/BufferManager.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>

#include "Internal/MutexLock.h"

using utility::internal::MutexLock;

namespace {

constexpr std::size_t kKeepUnit = 2000;
constexpr std::size_t kBatch = 5 * kKeepUnit;
constexpr std::size_t kThreshold = 10 * kKeepUnit;

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

// What is due leaves the list in one step under the lock, together with the decision to free it. So two releases can
// never meet on the same entry, however they overlap, and no index changes under a release that is going on.
void CBufferManager::ReleaseBuf(bool full) {
    std::vector<char*> due;
    {
        const MutexLock lock(m_mutexBuf);
        if (full) {
            due = m_vBuffers;
            std::fill(m_vBuffers.begin(), m_vBuffers.end(), nullptr);
        } else {
            if (m_nReleasing > 0 || m_vBuffers.size() <= kThreshold) return;
            const auto end = m_vBuffers.begin() + kBatch;
            due.assign(m_vBuffers.begin(), end);
            m_vBuffers.erase(m_vBuffers.begin(), end);
        }
        ++m_nReleasing;
    }
    for (char* const buffer : due) delete[] buffer;
    const MutexLock lock(m_mutexBuf);
    --m_nReleasing;
}
