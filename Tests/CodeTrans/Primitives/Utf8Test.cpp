#include "CodeTrans/Primitives/Utf8.h"

#include "CodeTrans/Primitives/ConversionSupport.h"
#include "CodeTrans/Primitives/Dump.h"
#include "CodeTrans/Primitives/TableRoute.h"
#include "Internal/Bytes.h"
#include "Internal/Utf8Encoding.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Exactly, test_support::Hex;

// The result of the pointer form with the zero bytes that must follow it.
std::string EncodeIntoBuffer(const std::wstring& text) {
    unsigned char* utf8 = nullptr;
    const std::size_t length = unicode_to_utf8(text.data(), text.size(), &utf8);
    std::string bytes(reinterpret_cast<char*>(utf8), 3 * text.size() + 1);
    std::free(utf8);
    EXPECT_EQ(bytes.find_first_not_of('\0', length), std::string::npos);
    return bytes.substr(0, length);
}

// Decodes into 4 × characters + 2 bytes, which must be enough.
std::wstring DecodeIntoBuffer(const std::string& utf8, std::size_t characters) {
    std::vector<char> input = Exactly(utf8 + '\0'), output(4 * characters + 2, '\x55');
    auto* wide = reinterpret_cast<wchar_t*>(output.data());
    EXPECT_EQ(utf8_to_unicode(reinterpret_cast<unsigned char*>(input.data()), wide), 4 * characters);
    EXPECT_EQ(Hex({output.data() + 4 * characters, 2}), "00 00");
    return std::wstring(wide, characters);
}

// Decodes into 2 × units + 1 bytes, which must be enough.
std::wstring DecodeIntoUnits(const std::string& utf8, std::size_t units) {
    std::vector<char> input = Exactly(utf8 + '\0'), output(2 * units + 1, '\x55');
    EXPECT_EQ(utf8tou(input.data(), output.data()), units);
    EXPECT_EQ(output.back(), 0);
    std::wstring wide;
    for (std::size_t i = 0; i < 2 * units; i += 2) {
        wide += static_cast<wchar_t>(utility::internal::LoadUcs2(&output[i]));
    }
    return wide;
}

TEST(Utf8Test, ConvertsTheWholeBmpLikeTheCLibrary) {
    std::wstring wide;
    std::string utf8;
    for (wchar_t c = 1; c < 0x10000; ++c) {
        const auto expected = test_support::Iconv("WCHAR_T", "UTF-8", test_support::AsBytes({c}));
        if (!expected) continue;  // a surrogate
        unsigned char one[6] = {};
        const int length = unicode_to_utf8_one(static_cast<unsigned long>(c), one, 6);
        ASSERT_EQ(std::string(one, one + length), *expected);
        wchar_t decoded = 0;
        const std::vector<char> range = Exactly(*expected);
        ASSERT_EQ(UTF8Char_ToUnicode(range.data(), range.size(), decoded), range.size());
        ASSERT_EQ(decoded, c);
        wide += c;
        utf8 += *expected;
    }
    ASSERT_EQ(wide.size(), 65535u - 2048);
    EXPECT_TRUE(unicode_to_utf8(wide) == utf8);
    EXPECT_TRUE(EncodeIntoBuffer(wide) == utf8);
    EXPECT_TRUE(utf8_to_unicode(utf8.c_str()) == wide);
    EXPECT_TRUE(DecodeIntoBuffer(utf8, wide.size()) == wide);
    EXPECT_TRUE(DecodeIntoUnits(utf8, wide.size()) == wide);
}

// What the lenient and the strict decoder make of malformed text, behind runs of ASCII.
TEST(Utf8Test, SkipsOrReadsMalformedText) {
    // clang-format off
    const std::tuple<std::string, std::wstring, std::wstring> rows[] = {
        // Byte-order mark, beyond the BMP, no lead bytes, overlong, surrogate, a lead that swallows the next lead
        {"\xEF\xBB\xBFx", L"\xFEFFx", L"\xFEFFx"}, {"\xF0\x9F\x98\x80!", L"!", L"!"}, {"\x80\xBF\xF8\xFC\xFE\xFFx", L"x", L"x"},
        {"\xC1\x81\xE0\x81\x81", L"AA", L"AA"}, {"\xED\xA0\x80", L"\xD800", L"\xD800"}, {"\xC3\xE4\xB8\xAD", L"\xE4", L"\x4E2D"},
        // Another byte than a continuation: the wrong lead of four is skipped alone. Then texts cut short.
        {"\xC3(", L"\xE8", L"("}, {"\xE4(\xAD|", L"\x4A2D|", L"(|"}, {"\xE4\xB8(", L"\x4E28", L"("}, {"\xF0\x9F\x98z", L"z", L"z"},
        {"\xF0\xC3\xA9", L"\xE9", L"\xE9"}, {"", L"", L""}, {"\xE4\xB8", L"", L""}, {"x\xC3", L"x", L"x"}};
    // clang-format on
    for (auto [utf8, lenient, strict] : rows) {
        for (int ascii_bytes = 0; ascii_bytes < 9; ++ascii_bytes) {
            SCOPED_TRACE(Hex(utf8));
            EXPECT_EQ(utf8_to_unicode(Exactly(utf8 + '\0').data()), lenient);
            EXPECT_EQ(DecodeIntoBuffer(utf8, lenient.size()), lenient);
            EXPECT_EQ(DecodeIntoUnits(utf8, strict.size()), strict);
            utf8 = 'a' + utf8, lenient = L'a' + lenient, strict = L'a' + strict;
        }
    }
    EXPECT_EQ(utf8_to_unicode("a\xC0\x80z"), L"a");  // U+0000 ends the owned string only
    EXPECT_EQ(DecodeIntoBuffer("a\xC0\x80z", 3), std::wstring(L"a\0z", 3));
    EXPECT_EQ(UtfStr2Unicode("\xEF\xBB\xBF\xEF\xBB\xBF\xE4\xB8\xAD"), L"\xFEFF\x4E2D");
    EXPECT_EQ(UtfStr2Unicode(Exactly(std::string("\xEF\xBB\0", 3)).data()), L"");
}

// What the rules say, a character at a time: the code points of UTF-8 read leniently or strictly.
std::wstring DecodeSlowly(const std::string& utf8, bool strict) {
    std::wstring wide;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[pos + i]); };
        const std::size_t length = byte(0) < 0x80   ? 1
                                   : byte(0) < 0xC0 ? 0
                                   : byte(0) < 0xE0 ? 2
                                   : byte(0) < 0xF0 ? 3
                                                    : 0;
        bool right = length != 0 && length <= utf8.size() - pos;
        for (std::size_t i = 1; right && strict && i < length; ++i) right = (byte(i) & 0xC0) == 0x80;
        if (right) {
            unsigned code_point = length == 1 ? byte(0) : byte(0) & (0x7Fu >> length);
            for (std::size_t i = 1; i < length; ++i) code_point = code_point << 6 | (byte(i) & 0x3Fu);
            wide += static_cast<wchar_t>(code_point);
        }
        pos += right ? length : 1;
    }
    return wide;
}

// Loops over runs of alike characters and the plain ones agree, in buffers with no room to spare.
TEST(Utf8Test, ReadsAndWritesRunsAsCharacterByCharacter) {
    std::mt19937 random(3);
    const std::vector<std::string> groups = {"a b z",
                                             "中 文 字",
                                             "é © 中 a",
                                             "中 \xE4\xB8 \xC3 a \x80 \xC0\x80",
                                             "中 a 文b",
                                             "\xED\xA0\x80 \xFF €",
                                             "\x80 \xF0\x9F\x98\x80 中中中"};
    for (int round = 0; round < 4000; ++round) {
        std::string utf8;
        for (const std::size_t size = round % 8 == 0 ? 1900 + random() % 500 : random() % 90; utf8.size() < size;)
            utf8 += test_support::RandomRuns(random, groups);
        const std::wstring lenient = DecodeSlowly(utf8, false), strict = DecodeSlowly(utf8, true);
        ASSERT_EQ(DecodeIntoBuffer(utf8, lenient.size()), lenient) << Hex(utf8);
        ASSERT_EQ(utf8_to_unicode(Exactly(utf8 + '\0').data()), lenient.substr(0, lenient.find(L'\0'))) << Hex(utf8);
        ASSERT_EQ(DecodeIntoUnits(utf8, strict.size()), strict) << Hex(utf8);

        std::wstring wide = lenient;
        for (wchar_t& c : wide) c = random() % 50 == 0 ? static_cast<wchar_t>(random()) : c;
        std::string plain(3 * wide.size() + 1, 'x');
        const wchar_t* const end = wide.data() + wide.size();
        plain.erase(static_cast<std::size_t>(utility::internal::EncodeBmpPlainly(wide.data(), end, plain.data()) -
                                             plain.data()));
        std::string expected;
        for (const wchar_t c : wide) {
            unsigned char one[6];
            const int length = static_cast<std::uint32_t>(c) < 0x10000
                                   ? unicode_to_utf8_one(static_cast<unsigned long>(c), one, 6)
                                   : 0;
            expected.append(one, one + length);
        }
        ASSERT_EQ(Hex(plain), Hex(expected));
        ASSERT_EQ(Hex(EncodeIntoBuffer(wide)), Hex(expected));
        ASSERT_EQ(Hex(unicode_to_utf8(wide)), Hex(expected.substr(0, expected.find('\0'))));
    }
}

TEST(Utf8Test, EncodesOrDropsWhatIsNoBmpCharacter) {
    const std::wstring text = {L'a', 0xD800, 0x1F600, 0x10000, 0xFFFF, -1, L'\0', 0x7FF, 0x800};
    EXPECT_EQ(Hex(EncodeIntoBuffer(text)), "61 ED A0 80 EF BF BF 00 DF BF E0 A0 80");
    EXPECT_EQ(Hex(unicode_to_utf8(text)), "61 ED A0 80 EF BF BF");
    EXPECT_EQ(EncodeIntoBuffer(L""), "");
    unsigned char byte = 0, *utf8 = &byte;
    EXPECT_EQ(unicode_to_utf8(text.data(), SIZE_MAX / 3 + 1, &utf8), 0u);
    EXPECT_EQ(utf8, nullptr);
}

TEST(Utf8Test, EncodesOneCodePointInUpToSixBytes) {
    // clang-format off
    const std::pair<unsigned long, const char*> rows[] = {
        {0, "00"}, {0x10000, "F0 90 80 80"}, {0x1FFFFF, "F7 BF BF BF"}, {0x200000, "F8 88 80 80 80"},
        {0x3FFFFFF, "FB BF BF BF BF"}, {0x4000000, "FC 84 80 80 80 80"}, {0x7FFFFFFF, "FD BF BF BF BF BF"},
        {0x80000000, ""}, {0x100000041, ""}};
    // clang-format on
    for (const auto& [code_point, bytes] : rows) {
        std::string utf8(8, '\x55');
        auto* buffer = reinterpret_cast<unsigned char*>(utf8.data());
        const int length = unicode_to_utf8_one(code_point, buffer, 6);
        EXPECT_EQ(Hex(utf8.substr(0, static_cast<std::size_t>(length))), bytes);
        EXPECT_EQ(utf8[static_cast<std::size_t>(length)], 0x55) << bytes;
        EXPECT_EQ(unicode_to_utf8_one(code_point, buffer, 5), 0) << bytes;
    }
    EXPECT_EQ(unicode_to_utf8_one('A', nullptr, 6), 0);
}

// What is no complete character is U+FEFF. The length is the number of leading one bits, if that is 2 to 6.
TEST(Utf8Test, MeasuresOneCharacterOfARange) {
    wchar_t code_point = 0;
    EXPECT_EQ(UTF8Char_ToUnicode(nullptr, 0, code_point), 1u);
    EXPECT_EQ(code_point, 0xFEFF);
    for (unsigned lead = 0x80; lead < 0x100; ++lead) {
        std::size_t ones = 1;
        while ((lead << ones & 0x80) != 0) ++ones;
        for (const char* rest : {"", "(\x80\x80\x80", "\x80(\x80\x80", "\x80"}) {
            const std::vector<char> range = Exactly(static_cast<char>(lead) + std::string(rest));
            SCOPED_TRACE(Hex({range.data(), range.size()}));
            EXPECT_EQ(UTF8Char_ToUnicode(range.data(), range.size(), code_point), ones > 6 ? 1 : ones);
            const bool complete = ones == 2 && *rest == '\x80';
            EXPECT_EQ(code_point, complete ? (lead & 0x1F) << 6 : 0xFEFF);
        }
    }
}

TEST(DumpTest, WritesUpperCaseHexadecimalLines) {
    unsigned char text[] = "\xE4\xB8\x0F~";
    wchar_t wide[] = {0x4E2D, 0, 0x7FABCDEF};
    const auto dump = [&] { dump_utf8(text), dump_utf8(text + 4), dump_unicode(wide, 10); };
    const std::string units = test_support::kLowByteFirst ? "2D4E000000000000EFCD" : "00004E2D000000007FAB";
    EXPECT_EQ(test_support::PrintedBy(dump), "E4B80F7E\n\n" + units + "\n");
}

}  // namespace
