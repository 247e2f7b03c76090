#include "CodeTrans/CodeMaps/Conversion.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "CodeTrans/CodeMaps/Detection.h"
#include "CodeTrans/CodeMaps/EncodingCodes.h"
#include "CodeTrans/CodeMaps/LoadedTables.h"
#include "CodeTrans/Primitives/LocaleRoute.h"
#include "CodeTrans/Primitives/TableRoute.h"
#include "CodeTrans/Primitives/Utf8.h"
#include "Internal/Bytes.h"

std::size_t CodeTrans_iTransErrCnt = 0;

namespace {

using namespace utility::internal;

constexpr unsigned kNoCharacter = 0xFEFF;

int Resolve(int encoding, const char* input, unsigned long length) {
    return encoding == ENCODE_UNKNOWN ? CodeTrans_CodeDetect(input, length) : encoding;
}

// A null text becomes an empty one.
void ReplaceNull(const char*& input, unsigned long& length) {
    if (input != nullptr) return;
    input = "";
    length = 0;
}

// `wanted`, no more than a capacity that is not 0.
unsigned long Limited(unsigned long wanted, unsigned long capacity) {
    return capacity == 0 ? wanted : std::min(wanted, capacity);
}

unsigned long Store(const char* bytes, unsigned long count, char* output, unsigned long& output_length) {
    std::memmove(output, bytes, count);
    output[count] = '\0';
    return output_length = count;
}

unsigned long Nothing(unsigned long& output_length) {
    return output_length = 0;
}

const std::uint16_t* MapFor(int encoding) {
    if (encoding == ENCODE_GBK) return g_tables.gbk_to_unicode.get();
    if (encoding == ENCODE_BIG5) return g_tables.big5_to_unicode.get();
    return nullptr;
}

// Writes 32-bit characters and two zero bytes at an address that need not be aligned for them.
unsigned long Utf8ToWideBytes(const char* utf8, char* output) {
    const std::unique_ptr<wchar_t[]> wide(new (std::nothrow) wchar_t[std::strlen(utf8) + 1]);
    if (!wide) return 0;
    // The decoder reads only; its parameter is not const for its other callers' sake.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<char*>(utf8));
    const std::size_t written = utf8_to_unicode(bytes, wide.get());
    std::memcpy(output, wide.get(), written + 2);
    return written;
}

unsigned long WideBytesToUtf8(const char* wide_bytes, unsigned long characters, char* output,
                              unsigned long& output_length) {
    const std::unique_ptr<wchar_t[]> wide(new (std::nothrow) wchar_t[characters]);
    if (!wide) return Nothing(output_length);
    std::memcpy(wide.get(), wide_bytes, characters * sizeof(wchar_t));
    unsigned char* utf8 = nullptr;
    const std::size_t length = unicode_to_utf8(wide.get(), characters, &utf8);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(utf8, &std::free);
    if (utf8 == nullptr) return Nothing(output_length);
    return Store(reinterpret_cast<const char*>(utf8), length, output, output_length);
}

}  // namespace

unsigned long GBKBig5_ToUnicode(int encoding, const char* input, unsigned long length, char* output,
                                unsigned long& output_length) {
    CodeTrans_iTransErrCnt = 0;
    if (g_tables.gbk_to_unicode == nullptr || input == nullptr) return Nothing(output_length);
    const std::uint16_t* const map = MapFor(encoding);
    const unsigned long capacity = output_length;
    unsigned long written = 0;
    for (unsigned long pos = 0; pos < length && capacity - written >= 2; written += 2) {
        const unsigned char lead = ToByte(input[pos++]);
        unsigned unit = lead;
        if (!IsAscii(lead)) {
            if (pos == length) {
                unit = kNoCharacter;
                ++CodeTrans_iTransErrCnt;
            } else {
                const unsigned char trail = ToByte(input[pos++]);
                unit = map != nullptr ? map[MapIndex(lead, trail)] : 0;
            }
        }
        StoreUcs2(unit, output + written);
    }
    return output_length = written;
}

unsigned long CodeTrans_ToUnicode(int encoding, const char* input, unsigned long length, char* output,
                                  unsigned long& output_length) {
    ReplaceNull(input, length);
    switch (encoding = Resolve(encoding, input, length)) {
        case ENCODE_UTF8:
            return Utf8ToWideBytes(input, output);
        case ENCODE_GBK:
        case ENCODE_BIG5:
            return GBKBig5_ToUnicode(encoding, input, length, output, output_length);
        case ENCODE_UNICODE:
            return Store(input, Limited(length, output_length), output, output_length);
        default:
            return Nothing(output_length);
    }
}

unsigned long CodeTrans_ToUtf8(int encoding, const char* input, unsigned long length, char* output,
                               unsigned long& output_length) {
    ReplaceNull(input, length);
    switch (Resolve(encoding, input, length)) {
        case ENCODE_UTF8:
            return Store(input, Limited(length, output_length), output, output_length);
        case ENCODE_GBK:
        case ENCODE_BIG5: {
            std::string utf8;
            ANSIToUTF8(input, utf8);
            return Store(utf8.data(), Limited(utf8.size(), output_length), output, output_length);
        }
        case ENCODE_UNICODE:
            return WideBytesToUtf8(input, Limited(length, output_length), output, output_length);
        default:
            return Nothing(output_length);
    }
}

unsigned long CodeTrans_ToAnsi(int encoding, const char* input, unsigned long length, char* output,
                               unsigned long& output_length) {
    ReplaceNull(input, length);
    switch (Resolve(encoding, input, length)) {
        case ENCODE_UTF8: {
            std::string gbk;
            UTF8ToANSI(input, gbk);
            return Store(gbk.data(), gbk.size(), output, output_length);
        }
        case ENCODE_GBK:
        case ENCODE_BIG5:
            return Store(input, length, output, output_length);
        case ENCODE_UNICODE:
            utoGbk(input, output, length);
            return output_length = length;
        default:
            return Nothing(output_length);
    }
}
