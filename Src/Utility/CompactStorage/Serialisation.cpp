#include "Utility/CompactStorage/Serialisation.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "Internal/LittleEndian.h"

using utility::internal::LoadLittleEndian;
using utility::internal::StoreLittleEndian;

int int_compress(int value, unsigned char* code) {
    if (value < 0 || value >= 1 << 30) return 0;
    const int following = value < 1 << 6 ? 0 : value < 1 << 14 ? 1 : value < 1 << 22 ? 2 : 3;
    for (int i = 0; i <= following; ++i) code[i] = static_cast<unsigned char>(value >> 8 * (following - i));
    code[0] = static_cast<unsigned char>(code[0] | following << 6);
    return following + 1;
}

int int_uncompress(unsigned char* code, int* value) {
    const int following = code[0] >> 6;
    int result = code[0] & 0x3F;
    for (int i = 1; i <= following; ++i) result = result << 8 | code[i];
    *value = result;
    return following + 1;
}

std::size_t tstring_save(const std::string& text, std::FILE* stream) {
    const auto length = static_cast<std::uint32_t>(text.size());
    unsigned char length_bytes[4];
    StoreLittleEndian(length, length_bytes);
    (void)std::fwrite(length_bytes, 1, sizeof length_bytes, stream);
    return std::fwrite(text.data(), 1, length, stream);
}

void tstring_load(std::string& text, std::FILE* stream) {
    text.clear();
    unsigned char length_bytes[4];
    if (std::fread(length_bytes, 1, sizeof length_bytes, stream) != sizeof length_bytes) return;
    char piece[4096];
    bool in_text = true;
    for (std::size_t left = LoadLittleEndian<std::uint32_t>(length_bytes); left > 0;) {
        const std::size_t got = std::fread(piece, 1, std::min(left, sizeof piece), stream);
        if (got == 0) break;
        if (in_text) {
            const std::size_t length = strnlen(piece, got);
            text.append(piece, length);
            in_text = length == got;
        }
        left -= got;
    }
}

int WriteBuf(char** buffer, int& used, int& capacity, int value, bool swap) {
    constexpr int kFree = 10;
    constexpr int kMargin = 1024;
    if (capacity - used < kFree) {
        if (used > INT_MAX - kMargin) return used;
        void* const block = std::realloc(*buffer, static_cast<std::size_t>(used) + kMargin);
        if (block == nullptr) return used;
        *buffer = static_cast<char*>(block);
        capacity = used + kMargin;
    }
    unsigned char bytes[4];
    StoreLittleEndian(static_cast<std::uint32_t>(value), bytes);
    if (swap) std::reverse(bytes, bytes + sizeof bytes);
    std::memcpy(*buffer + used, bytes, sizeof bytes);
    return used += static_cast<int>(sizeof bytes);
}
