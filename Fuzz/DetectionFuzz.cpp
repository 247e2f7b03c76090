// Hostile data files: any bytes behind the two maps may be records. Whatever loads must detect and convert.

#include <STLCodeTrans.h>
#include <unistd.h>

#include <fstream>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMapBytes = 98304;
    fuzz::Input input(data, size);
    const std::size_t cut = input.Number(9);
    const std::string text = input.Text(), records = input.Rest();
    static const std::string path = "/tmp/utility-detection-fuzz-" + std::to_string(getpid());
    {
        std::ofstream out(path, std::ios::binary);
        out << std::string(cut == 9 ? kMapBytes / 2 : kMapBytes, 'm') << records;
    }
    const int result = CodeTrans_Initialize(path.c_str());
    std::remove(path.c_str());
    FUZZ_CHECK(result == 0 || (result >= -4 && result <= -1) || result == -127);
    const int code = CodeTrans_CodeDetect(text.data(), text.size());
    FUZZ_CHECK(result == 0 || code == ENCODE_UNKNOWN);
    for (const int encoding : {ENCODE_GBK, ENCODE_BIG5}) {
        fuzz::Exact units(2 * text.size() + 1);
        unsigned long length = 2 * text.size();
        FUZZ_CHECK(GBKBig5_ToUnicode(encoding, text.data(), text.size(), units.get(), length) == length);
        FUZZ_CHECK(length <= 2 * text.size() && length % 2 == 0);
    }
    CodeTrans_Destroy();
    return 0;
}
