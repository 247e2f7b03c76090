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
#include "Internal/DoubleByteRuns.h"
#include "Internal/Words.h"

std::size_t CodeTrans_iTransErrCnt = 0;

namespace {

using namespace utility::internal;

constexpr unsigned kNoCharacter = 0xFEFF;

// In one atomic step, so that calls in several threads do not race for the host's plain variable.
void SetErrorCount(std::size_t count) {
    __atomic_store_n(&CodeTrans_iTransErrCnt, count, __ATOMIC_RELAXED);
}

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

const PairTable<std::uint16_t>* MapFor(int encoding) {
    if (encoding == ENCODE_GBK) return g_tables.gbk_to_unicode.get();
    if (encoding == ENCODE_BIG5) return g_tables.big5_to_unicode.get();
    return nullptr;
}

class Ucs2PairWriter {
public:
    Ucs2PairWriter(const PairTable<std::uint16_t>& map, char* out, const char* out_end)
        : map_(map), out_(out), out_end_(out_end) {}

    char*& out() { return out_; }
    // For 12 units, and the 16 bytes of ASCII that are read without looking at the room in between.
    bool HasRoom() const { return out_end_ - out_ >= 32; }
    unsigned Four(std::uint64_t indexes) {
        for (unsigned i = 0; i < 4; ++i) StoreWord(map_[indexes >> 16 * i & 0xFFFF], out_ + 2 * i);
        return 0;  // a pair that is no character gives a unit, too
    }
    bool AllFour(std::uint64_t indexes) {
        Four(indexes);
        Took(4);
        return true;
    }
    void Took(unsigned pairs) { out_ += 2 * pairs; }
    void Ascii8(const char* bytes) { Widen8ToUcs2(bytes, out_); }
    void TookAscii(unsigned bytes) { out_ += 2 * bytes; }

private:
    const PairTable<std::uint16_t>& map_;
    char* out_;
    const char* out_end_;
};

// Writes 32-bit characters and two zero bytes at an address that need not be aligned for them.
unsigned long Utf8ToWideBytes(const char* utf8, char* output) {
    const std::unique_ptr<wchar_t[]> wide(new wchar_t[std::strlen(utf8) + 1]);
    // The decoder reads only; its parameter is not const for its other callers' sake.
    auto* bytes = reinterpret_cast<unsigned char*>(const_cast<char*>(utf8));
    const std::size_t written = utf8_to_unicode(bytes, wide.get());
    std::memcpy(output, wide.get(), written + 2);
    return written;
}

unsigned long WideBytesToUtf8(const char* wide_bytes, unsigned long characters, char* output,
                              unsigned long& output_length) {
    const std::unique_ptr<wchar_t[]> wide(new wchar_t[characters]);
    std::memcpy(wide.get(), wide_bytes, characters * sizeof(wchar_t));
    unsigned char* utf8 = nullptr;
    const std::size_t length = unicode_to_utf8(wide.get(), characters, &utf8);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(utf8, &std::free);
    if (utf8 == nullptr) throw std::bad_alloc();
    return Store(reinterpret_cast<const char*>(utf8), length, output, output_length);
}

}  // namespace

unsigned long GBKBig5_ToUnicode(int encoding, const char* input, unsigned long length, char* output,
                                unsigned long& output_length) {
    SetErrorCount(0);
    if (g_tables.gbk_to_unicode == nullptr || input == nullptr) return Nothing(output_length);
    static constexpr PairTable<std::uint16_t> kNoPairs{};
    const PairTable<std::uint16_t>* const found = MapFor(encoding);
    const PairTable<std::uint16_t>& map = found != nullptr ? *found : kNoPairs;
    const char *in = input, *const in_end = input + length;
    char* const out_end = output + std::min(output_length / 2, length) * 2;
    Ucs2PairWriter writer(map, output, out_end);
    in = ReadDoubleByteRuns(in, in_end, writer, [](const char*) { return false; });
    char*& out = writer.out();
    while (in != in_end && out != out_end) {
        if (in_end - in >= 8 && out_end - out >= 16 && ReadEightAlike(in, writer)) continue;
        const unsigned char lead = ToByte(*in++);
        unsigned unit = lead;
        if (!IsAscii(lead)) {
            if (in == in_end) {
                unit = kNoCharacter;
                SetErrorCount(1);
            } else {
                unit = map[PairIndex(lead, ToByte(*in++))];
            }
        }
        StoreUcs2(unit, out);
        out += 2;
    }
    return output_length = static_cast<unsigned long>(out - output);
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
