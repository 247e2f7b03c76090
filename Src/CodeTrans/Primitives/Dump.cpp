#include "CodeTrans/Primitives/Dump.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

void DumpBytes(const unsigned char* bytes, std::size_t count) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string line(2 * count + 1, '\n');
    for (std::size_t i = 0; i < count; ++i) {
        line[2 * i] = kDigits[bytes[i] >> 4];
        line[2 * i + 1] = kDigits[bytes[i] & 0x0F];
    }
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), stdout));
}

}  // namespace

void dump_utf8(unsigned char* text) {
    DumpBytes(text, std::strlen(reinterpret_cast<const char*>(text)));
}

void dump_unicode(wchar_t* text, unsigned long byte_count) {
    DumpBytes(reinterpret_cast<const unsigned char*>(text), byte_count);
}
