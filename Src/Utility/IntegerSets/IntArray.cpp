#include "Utility/IntegerSets/IntArray.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "Internal/HeapBlock.h"
#include "Internal/LittleEndian.h"

using utility::internal::HeapBlock;
using utility::internal::LoadLittleEndian;
using utility::internal::StoreLittleEndian;

namespace {

static_assert(sizeof(int) == 4, "values of the file form have four bytes");

constexpr int kMargin = 1024;
constexpr std::size_t kValueSize = sizeof(int);

struct Values {
    const int* begin;
    const int* end;
};

// The part of `range` that lies inside the pool.
Values ValuesAt(const CIntArray& pool, const _tIntArray& range) {
    const int start = std::clamp(range.nStart, 0, pool.m_nCount);
    const int end = std::clamp(range.nEnd, start, pool.m_nCount);
    return {pool.m_pData + start, pool.m_pData + end};
}

int* NewValues(std::size_t count) {
    return static_cast<int*>(std::malloc(count * kValueSize));
}

// Turns bytes of a file into values, in place.
void DecodeInPlace(int* values, int count) {
    for (int i = 0; i < count; ++i) {
        unsigned char bytes[kValueSize];
        std::memcpy(bytes, values + i, kValueSize);
        values[i] = static_cast<int>(LoadLittleEndian<std::uint32_t>(bytes));
    }
}

}  // namespace

CIntArray::CIntArray() : m_pData(NewValues(kMargin)), m_nCount(0), m_nCapacity(m_pData != nullptr ? kMargin : 0) {}

CIntArray::~CIntArray() {
    std::free(m_pData);
}

CIntArray::CIntArray(CIntArray&& other) noexcept
    : m_pData(std::exchange(other.m_pData, nullptr)),
      m_nCount(std::exchange(other.m_nCount, 0)),
      m_nCapacity(std::exchange(other.m_nCapacity, 0)) {}

CIntArray& CIntArray::operator=(CIntArray&& other) noexcept {
    CIntArray moved(std::move(other));  // first, so that a pool may be moved to itself
    std::swap(m_pData, moved.m_pData);
    std::swap(m_nCount, moved.m_nCount);
    std::swap(m_nCapacity, moved.m_nCapacity);
    return *this;
}

int CIntArray::GenerateIntList(const std::vector<int>& values, _tIntArray& range) {
    range = {m_nCount, m_nCount};
    // A pool that was read may hold more than a pool may grow to.
    if (static_cast<std::size_t>(m_nCount) + values.size() > INT_MAX - kMargin) return 0;
    const int length = static_cast<int>(values.size());
    if (m_nCount + length > m_nCapacity) {
        const int capacity = m_nCount + length + kMargin;
        void* const data = std::realloc(m_pData, static_cast<std::size_t>(capacity) * kValueSize);
        if (data == nullptr) return 0;
        m_pData = static_cast<int*>(data);
        m_nCapacity = capacity;
    }
    std::copy(values.begin(), values.end(), m_pData + m_nCount);
    m_nCount += length;
    range.nEnd = m_nCount;
    return length;
}

std::size_t CIntArray::Write(std::FILE* stream) const {
    unsigned char bytes[kMargin * kValueSize];
    StoreLittleEndian(static_cast<std::uint32_t>(m_nCount), bytes);
    (void)std::fwrite(bytes, kValueSize, 1, stream);
    std::size_t written = 0;
    for (int pos = 0; pos < m_nCount;) {
        const int end = pos + std::min(m_nCount - pos, kMargin);
        unsigned char* next = bytes;
        for (; pos < end; ++pos, next += kValueSize) {
            StoreLittleEndian(static_cast<std::uint32_t>(m_pData[pos]), next);
        }
        written += std::fwrite(bytes, kValueSize, static_cast<std::size_t>(next - bytes) / kValueSize, stream);
        if (written != static_cast<std::size_t>(pos)) break;
    }
    return written;
}

std::size_t CIntArray::Read(std::FILE* stream) {
    std::free(std::exchange(m_pData, nullptr));
    m_nCount = m_nCapacity = 0;
    unsigned char count_bytes[kValueSize];
    if (std::fread(count_bytes, kValueSize, 1, stream) != 1) return 0;
    const int count = static_cast<int>(LoadLittleEndian<std::uint32_t>(count_bytes));
    if (count <= 0) return 0;
    const std::size_t size = static_cast<std::size_t>(count) * kValueSize;
    HeapBlock block;
    std::size_t arrived;
    if (!ReadGrowing(stream, size, size, block, arrived)) {
        std::free(block.bytes);
        return 0;
    }
    std::memset(block.bytes + arrived, 0, size - arrived);
    m_pData = static_cast<int*>(static_cast<void*>(block.bytes));
    m_nCount = m_nCapacity = count;
    DecodeInPlace(m_pData, count);
    return arrived / kValueSize;
}

int CIntArray::GetValue(int position) const {
    return position >= 0 && position < m_nCount ? m_pData[position] : -1;
}

std::size_t CIntArray::GetVector(_tIntArray range, std::vector<int>& values) const {
    values.clear();
    if (range.nStart < range.nEnd) {
        values.reserve(static_cast<std::size_t>(static_cast<long>(range.nEnd) - range.nStart));
    }
    for (int position = range.nStart; position < range.nEnd; ++position) {
        values.push_back(GetValue(position));
    }
    return values.size();
}

bool CIntArray::Or(const int* sorted, int length, const _tIntArray& range) const {
    auto [value, end] = ValuesAt(*this, range);
    for (int i = 0; i < length && value < end;) {
        if (sorted[i] == *value) return true;
        if (sorted[i] < *value) {
            ++i;
        } else {
            ++value;
        }
    }
    return false;
}

bool CIntArray::IsExist(int value, const _tIntArray& range) const {
    const auto [begin, end] = ValuesAt(*this, range);
    return std::find(begin, end, value) != end;
}

bool CIntArray::And(const int* sorted, int length, const _tIntArray& range) const {
    const auto [begin, end] = ValuesAt(*this, range);
    const int* value = begin;
    for (int i = 0; i < length && value < end; ++i) {
        if (*value < sorted[i]) return false;
        if (*value == sorted[i]) ++value;
    }
    return value - begin >= static_cast<long>(range.nEnd) - range.nStart;
}
