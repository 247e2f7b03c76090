// Pools and compact storage read back from damaged files; what can be read must be written as it was.

#include <MemoryExt.h>
#include <Utility.h>

#include "FuzzSupport.h"

namespace {

struct Stream {
    explicit Stream(std::string& bytes) : file(fmemopen(bytes.data(), bytes.size(), "rb")) {}
    ~Stream() {
        if (file != nullptr) std::fclose(file);
    }
    std::FILE* file;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    // Every value is looked at, so that one that nobody wrote shows under valgrind, and a short block under the sanitizer.
    long sum = 0;
    if (const Stream in(bytes); in.file != nullptr) {
        CIntArray pool;
        FUZZ_CHECK(pool.Read(in.file) <= size / sizeof(int));
        FUZZ_CHECK(pool.m_nCount >= 0 && pool.m_nCount <= pool.m_nCapacity);
        for (int i = 0; i < pool.m_nCount; ++i) sum += pool.m_pData[i];
    }
    if (const Stream in(bytes); in.file != nullptr) {
        CStaticStr pool;
        pool.Read(in.file);
        FUZZ_CHECK(pool.m_nSize <= pool.m_nCapacity);
        for (std::size_t i = 0; i < pool.m_nSize; ++i) sum += pool.m_pBuf[i];
    }
    if (const Stream in(bytes); in.file != nullptr) {
        std::string text;
        tstring_load(text, in.file);
        FUZZ_CHECK(text.size() <= size);
    }
    for (std::size_t pos = 0; pos + 4 <= size; pos += 4) {
        int value = 0, again = 0;
        unsigned char code[4];
        const int length = int_uncompress(reinterpret_cast<unsigned char*>(bytes.data() + pos), &value);
        FUZZ_CHECK(length >= 1 && length <= 4);
        FUZZ_CHECK(int_compress(value, code) <= length && int_uncompress(code, &again) >= 1 && again == value);
    }
    return sum == 0x7FFFFFFFFFFFFFFF;
}
