// Conversions by table between GBK, UTF-8, UCS-2 and wide strings; buffers as large as the comments ask for.

#include <STLCodeTrans.h>

#include "FuzzSupport.h"

namespace {

// Table route: no code point is lost that GBK has, and the text round-trips once it is made of such.
void CheckTableRoute(const std::string& utf8) {
    fuzz::Exact input(utf8), units(2 * utf8.size() + 1), gbk(utf8.size() + 2);
    const std::size_t count = utf8tou(input.get(), units.get());
    FUZZ_CHECK(count <= utf8.size());
    utf8toGbk(input.get(), gbk.get());
    fuzz::Exact again(2 * count + 2);
    utoGbk(units.get(), again.get(), count);
    const std::size_t length = std::strlen(again.get());
    FUZZ_CHECK(std::strlen(gbk.get()) == length && std::memcmp(gbk.get(), again.get(), length) == 0);
}

void CheckWide(const std::string& utf8) {
    const std::wstring wide = utf8_to_unicode(utf8.c_str());
    FUZZ_CHECK(wide.size() <= utf8.size());
    const std::string back = unicode_to_utf8(wide);
    FUZZ_CHECK(utf8_to_unicode(back.c_str()) == wide);
    wchar_t code_point = 0;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const std::size_t step = UTF8Char_ToUnicode(utf8.data() + pos, utf8.size() - pos, code_point);
        FUZZ_CHECK(step >= 1 && step <= 6);
        pos += step;
    }
}

void CheckFolding(const std::string& text, bool keep) {
    fuzz::Exact folded(text);
    const unsigned long length = str_normalization(folded.get(), text.size(), keep);
    FUZZ_CHECK(length <= text.size());
    const std::string once(folded.get(), length);
    FUZZ_CHECK(str_normalization(folded.get(), length, keep) <= length);
}

void CheckRoutes(const std::string& text) {
    std::string gbk, utf8;
    std::wstring wide;
    FUZZ_CHECK(UTF8ToANSI(text.c_str(), gbk) == 1 && gbk.size() <= text.size());
    const std::size_t length = ANSIToUTF8(text.c_str(), utf8);
    FUZZ_CHECK(length == utf8.size() && length <= 3 * text.size());
    if (ANSIToUnicode(text, wide) != static_cast<std::size_t>(-1)) {
        FUZZ_CHECK(UnicodeToANSI(wide, gbk) != static_cast<std::size_t>(-1) && gbk == text.c_str());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool keep = input.Number(1) != 0;
    const std::string text = input.Text();
    CheckTableRoute(text);
    CheckWide(text);
    CheckRoutes(text);
    CheckFolding(text + '\0' + input.Rest(), keep);
    return 0;
}
