// Conversions by table and by locale between GBK, UTF-8, UCS-2 and wide strings; buffers as large as the comments ask.

#include "FuzzSupport.h"

namespace {

// Both ways to GBK agree, also when they work in place, and text that has a GBK form comes back from it.
void CheckTableRoute(const std::string& utf8) {
    fuzz::Exact input(utf8), units(2 * utf8.size() + 1), gbk(utf8.size() + 2), in_place(utf8 + '\0');
    const std::size_t count = utf8tou(input.get(), units.get());
    FUZZ_CHECK(count <= utf8.size());
    utf8toGbk(input.get(), gbk.get());
    utf8toGbk(in_place.get(), in_place.get());
    fuzz::Exact again(2 * count + 2);
    utoGbk(units.get(), again.get(), count);
    FUZZ_CHECK(gbk.Text() == again.Text() && gbk.Text() == in_place.Text());
}

void CheckWide(const std::string& utf8) {
    const std::wstring wide = utf8_to_unicode(utf8.c_str());
    FUZZ_CHECK(wide.size() <= utf8.size());
    const std::string back = unicode_to_utf8(wide);
    FUZZ_CHECK(utf8_to_unicode(back.c_str()) == wide);
    fuzz::Exact input(utf8), output(4 * utf8.size() + 2);  // from new, so aligned
    const std::size_t written = utf8_to_unicode(input.bytes(), reinterpret_cast<wchar_t*>(output.get()));
    FUZZ_CHECK(written % 4 == 0 && written >= 4 * wide.size() && written <= 4 * utf8.size());
    FUZZ_CHECK(std::memcmp(output.get(), wide.data(), 4 * wide.size()) == 0);
    wchar_t code_point = 0;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const std::size_t step = UTF8Char_ToUnicode(utf8.data() + pos, utf8.size() - pos, code_point);
        FUZZ_CHECK(step >= 1 && step <= 6);
        pos += step;
    }
}

void CheckCodePoints(const std::vector<int>& values) {
    std::vector<wchar_t> wide(values.begin(), values.end());
    unsigned char* utf8 = nullptr;
    const std::size_t length = unicode_to_utf8(wide.data(), wide.size(), &utf8);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(utf8, &std::free);
    FUZZ_CHECK(length <= 3 * wide.size() && utf8[length] == '\0');
    for (const int value : values) {
        fuzz::Exact sequence(6);
        const auto code = static_cast<unsigned>(value);
        const int size = unicode_to_utf8_one(code, sequence.bytes(), 6);
        FUZZ_CHECK((size == 0) == (code > 0x7FFFFFFF) && size <= 6);
        wchar_t back = 0;
        if (size != 0) FUZZ_CHECK(UTF8Char_ToUnicode(sequence.get(), 6, back) == static_cast<std::size_t>(size));
        if (size != 0) FUZZ_CHECK(back == (size <= 3 ? value : 0xFEFF));
    }
}

// GBK text comes back from wide strings and UTF-8, by either route. Byte 80 is the euro sign, which the table route
// gives as 00 80.
void CheckGbk(const std::string& text) {
    std::string gbk, utf8;
    std::wstring wide;
    FUZZ_CHECK(UTF8ToANSI(text.c_str(), gbk) == 1 && gbk.size() <= text.size());
    const std::size_t length = ANSIToUTF8(text.c_str(), utf8);
    FUZZ_CHECK(length == utf8.size() && length <= 3 * text.size());
    const std::size_t converted = ANSIToUnicode(text, wide);
    const std::string done = gbk = text.substr(0, text.find('\0'));
    if (converted == static_cast<std::size_t>(-1)) return;
    FUZZ_CHECK(UnicodeToANSI(wide, gbk) == done.size() && gbk == done);
    FUZZ_CHECK(UTF8ToANSI(utf8.c_str(), gbk) == 1 && gbk == done);
    if (wide.find(0x20AC) != std::wstring::npos) return;
    fuzz::Exact by_table(utf8.size() + 2);
    utf8toGbk(utf8.data(), by_table.get());
    FUZZ_CHECK(by_table.Text() == done);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string text = input.Text();
    CheckTableRoute(text);
    CheckWide(text);
    CheckGbk(text);
    CheckCodePoints(input.Integers());
    return 0;
}
