#include "Utility/CompactStorage/StaticStr.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

#include "Internal/HeapBlock.h"
#include "Internal/LittleEndian.h"

using utility::internal::HeapBlock;
using utility::internal::LoadLittleEndian;
using utility::internal::StoreLittleEndian;

namespace {

static_assert(sizeof(std::size_t) == 8, "the size in the file form has eight bytes");

constexpr std::size_t kInitialCapacity = 10240;
constexpr std::size_t kMargin = 1024;
constexpr std::size_t kMaxSize = PTRDIFF_MAX - kMargin;  // so that a size with the margin does not wrap
// The block has one byte more than its capacity, for the NUL behind a pool whose last string a damaged file
// left open.
constexpr std::size_t kEndMark = 1;

HeapBlock BlockOf(const CStaticStr& pool) {
    return {pool.m_pBuf, pool.m_pBuf == nullptr ? 0 : pool.m_nCapacity + kEndMark};
}

void Install(const HeapBlock& block, CStaticStr& pool) {
    pool.m_pBuf = block.bytes;
    pool.m_nCapacity = block.bytes == nullptr ? 0 : block.size - kEndMark;
}

}  // namespace

CStaticStr::CStaticStr() : m_pBuf(nullptr), m_nSize(0), m_nCapacity(0) {
    HeapBlock block;
    if (Resize(block, kInitialCapacity + kEndMark)) {
        Install(block, *this);
        m_pBuf[0] = '\0';
    }
}

CStaticStr::~CStaticStr() {
    std::free(m_pBuf);
}

CStaticStr::CStaticStr(CStaticStr&& other) noexcept
    : m_pBuf(std::exchange(other.m_pBuf, nullptr)),
      m_nSize(std::exchange(other.m_nSize, 0)),
      m_nCapacity(std::exchange(other.m_nCapacity, 0)) {}

CStaticStr& CStaticStr::operator=(CStaticStr&& other) noexcept {
    CStaticStr moved(std::move(other));  // first, so that a pool may be moved to itself
    std::swap(m_pBuf, moved.m_pBuf);
    std::swap(m_nSize, moved.m_nSize);
    std::swap(m_nCapacity, moved.m_nCapacity);
    return *this;
}

int CStaticStr::AddString(char const* text) {
    if (m_nSize > INT_MAX) return -1;
    const std::size_t length = std::strlen(text);
    if (m_nSize + length >= m_nCapacity) {
        // A text that lies in the pool moves with it.
        const bool inside = m_pBuf != nullptr && !std::less<>()(text, m_pBuf) && std::less<>()(text, m_pBuf + m_nSize);
        const std::size_t text_offset = inside ? static_cast<std::size_t>(text - m_pBuf) : 0;
        HeapBlock block = BlockOf(*this);
        if (!Resize(block, m_nSize + length + kMargin + kEndMark)) return -1;
        Install(block, *this);
        if (inside) text = m_pBuf + text_offset;
    }
    const std::size_t offset = std::exchange(m_nSize, m_nSize + length + 1);
    std::memmove(m_pBuf + offset, text, length);
    m_pBuf[offset + length] = m_pBuf[m_nSize] = '\0';  // the latter for GetStr at the size, which always works
    return static_cast<int>(offset);
}

char const* CStaticStr::GetStr(int offset) const {
    return m_pBuf + offset;
}

void CStaticStr::Write(std::FILE* stream) const {
    unsigned char size_bytes[8];
    StoreLittleEndian<std::uint64_t>(m_nSize, size_bytes);
    (void)std::fwrite(size_bytes, 1, sizeof size_bytes, stream);
    if (m_nSize > 0) (void)std::fwrite(m_pBuf, 1, m_nSize, stream);
}

void CStaticStr::Read(std::FILE* stream) {
    unsigned char size_bytes[8];
    if (std::fread(size_bytes, 1, sizeof size_bytes, stream) != sizeof size_bytes) return;
    const std::size_t size = LoadLittleEndian<std::uint64_t>(size_bytes);
    const std::size_t held = m_nSize;
    HeapBlock block = BlockOf(*this);
    const std::size_t final_size = size > m_nCapacity ? size + kMargin + kEndMark : block.size;
    std::size_t arrived = 0;
    const bool is_believed = size <= kMaxSize && ReadGrowing(stream, size, final_size, block, arrived);
    Install(block, *this);
    m_nSize = is_believed ? size : 0;
    if (m_pBuf == nullptr) return;
    const std::size_t known = std::min(m_nSize, std::max(arrived, held));
    std::memset(m_pBuf + known, 0, m_nSize - known + kEndMark);
}
