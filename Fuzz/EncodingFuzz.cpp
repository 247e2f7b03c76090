// Detection and conversion with the real tables, for any code, capacity and bytes.

#include <TextKit.h>

#include "FuzzSupport.h"

namespace {

using Convert = unsigned long (*)(int, const char*, unsigned long, char*, unsigned long&);

// The output grows to what the comment asks for; the result is a prefix of that without a limit.
void CheckCapacity(Convert convert, int encoding, const std::string& text, unsigned long need, unsigned long capacity) {
    fuzz::Exact input(text), whole(need + 1), part((capacity == 0 ? need : std::min(capacity, need)) + 1);
    unsigned long whole_length = need, part_length = capacity;
    const unsigned long all = convert(encoding, input.get(), text.size(), whole.get(), whole_length);
    const unsigned long some = convert(encoding, input.get(), text.size(), part.get(), part_length);
    FUZZ_CHECK(some <= all && all <= need && std::memcmp(whole.get(), part.get(), some) == 0);
}

void CheckUnsized(int encoding, const std::string& text) {
    // As many bytes as any answer of the detector needs, of them a NUL behind the text.
    const std::string padded = text + std::string(3 * text.size() + 1, '\0');
    fuzz::Exact input(padded), wide(4 * text.size() + 2), gbk(2 * text.size() + 2), utf8(3 * text.size() + 1);
    unsigned long length = 0;
    const bool is_wide = encoding == ENCODE_UNICODE;
    const unsigned long limit = is_wide ? text.size() / 4 : text.size();
    FUZZ_CHECK(CodeTrans_ToAnsi(encoding, input.get(), is_wide ? text.size() / 2 : limit, gbk.get(), length) == length);
    length = 0;
    FUZZ_CHECK(CodeTrans_ToUtf8(encoding, input.get(), limit, utf8.get(), length) == length);
    FUZZ_CHECK(length == 0 || utf8.get()[length] == '\0');
    length = 4 * text.size();
    FUZZ_CHECK(CodeTrans_ToUnicode(encoding, input.get(), text.size(), wide.get(), length) <= 4 * text.size());
}

// GBK text without a byte 80 goes to UCS-2 and back.
void CheckRoundTrip(const std::string& text) {
    if (textkit::Decode(text, textkit::Encoding::kGbk).replaced != 0 || text.find('\x80') != std::string::npos) return;
    fuzz::Exact units(2 * text.size()), gbk(text.size() * 2 + 2);
    unsigned long length = 2 * text.size();
    GBKBig5_ToUnicode(ENCODE_GBK, text.data(), text.size(), units.get(), length);
    utoGbk(units.get(), gbk.get(), length / 2);
    FUZZ_CHECK(std::string(gbk.get(), text.size()) == text && CodeTrans_iTransErrCnt == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int loaded = CodeTrans_Initialize(UTILITY_FUZZ_DATA_FILE);
    FUZZ_CHECK(loaded == 0);
    fuzz::Input input(data, size);
    const auto capacity = static_cast<unsigned long>(input.Number(300));
    const int any_code = static_cast<int>(input.Number(20)) - 5;
    const std::string text = input.Rest();
    const int detected = CodeTrans_CodeDetect(text.data(), text.size());
    FUZZ_CHECK(detected >= 0 && (detected <= ENCODE_BIG5 || detected == ENCODE_UNICODE));
    for (const int encoding : {ENCODE_GBK, ENCODE_BIG5, any_code})
        CheckCapacity(GBKBig5_ToUnicode, encoding, text, 2 * text.size(), std::max(1ul, capacity));
    CheckCapacity(CodeTrans_ToUnicode, ENCODE_UNICODE, text, text.size(), capacity);
    CheckCapacity(CodeTrans_ToUtf8, ENCODE_UTF8, text, text.size(), capacity);
    for (const int encoding : {ENCODE_GBK, ENCODE_BIG5})
        CheckCapacity(CodeTrans_ToUtf8, encoding, text, 3 * text.size(), capacity);
    for (const int encoding : {0, 1, 2, 3, 8, any_code}) CheckUnsized(encoding, text);
    CheckRoundTrip(text);
    return 0;
}
