#include "CodeTrans/Primitives/LocaleRoute.h"

#include "CodeTrans/Primitives/ConversionSupport.h"
#include "CodeTrans/Primitives/Utf8.h"
#include "Support/TestSupport.h"

namespace {

using test_support::AsBytes, test_support::Character, test_support::Iconv, test_support::PrintedBy;

constexpr char kMessage[] = "Can't set the specified locale zh_CN.gbk! ";

// While it lives, the C library finds no locale to set.
class NoLocales {
public:
    NoLocales() {
        if (const char* before = std::getenv("LOCPATH")) before_ = before;
        setenv("LOCPATH", empty_.path().c_str(), 1);
        EXPECT_NE(std::setlocale(LC_ALL, "C"), nullptr);
        EXPECT_EQ(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    }
    ~NoLocales() { before_.empty() ? unsetenv("LOCPATH") : setenv("LOCPATH", before_.c_str(), 1); }

private:
    test_support::TempFolder empty_;
    std::string before_;
};

// Results and outputs for every code of two bytes and every code point behind an ASCII byte, and for text
// that ends early.
std::vector<std::string> ConvertAll() {
    // clang-format off
    std::vector<std::string> gbk_texts = {
        "", "ab", test_support::Bytes("a\0b"), "a\xD6\xD0\xD6", "a\xD6 b", "a\xFF\xD6\xD0", "a\x80z"};
    std::vector<std::wstring> wide_texts = {
        L"", {L'a', 0, L'b'}, L"a\x4E2D\xAC00z", {L'a', 0x1F600}, {L'a', -1}, {L'a', 0xE0000, 0xE007F, L'b'}};
    // clang-format on
    for (unsigned code = 0x8000; code < 0x10000; ++code) gbk_texts.push_back('x' + Character(code));
    for (wchar_t c = 0; c < 0x10000; ++c) wide_texts.push_back({L'x', c});
    std::vector<std::string> all;
    for (const std::string& text : gbk_texts) {
        std::wstring wide = L"stale";
        all.push_back(std::to_string(ANSIToUnicode(text, wide)));
        all.back() += AsBytes(wide);
    }
    for (const std::wstring& text : wide_texts) {
        std::string gbk = "stale";
        all.push_back(std::to_string(UnicodeToANSI(text, gbk)));
        all.back() += gbk;
    }
    return all;
}

// The C library's GBK and the table, which were not made from each other, agree on everything.
TEST(LocaleRouteTest, GivesTheSameWithAndWithoutTheLocale) {
    SKIP_WITHOUT_GBK_LOCALE();
    std::vector<std::string> by_locale, by_table;
    EXPECT_EQ(PrintedBy([&] { by_locale = ConvertAll(); }), "");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "zh_CN.gbk");
    const NoLocales nowhere;
    PrintedBy([&] { by_table = ConvertAll(); });
    EXPECT_EQ(by_locale.size(), 7 + 0x8000 + 6 + 0x10000u);
    EXPECT_TRUE(by_locale == by_table);
}

// What the C library makes of the text by itself: count or error value, and what its cleared buffer holds.
bool IsTheCLibrarys(const std::string& gbk) {
    std::wstring buffer(gbk.size() + 1, L'\0'), wide = L"stale";
    const std::size_t count = std::mbstowcs(buffer.data(), gbk.c_str(), gbk.size());
    return ANSIToUnicode(gbk, wide) == count && wide == buffer.c_str();
}
bool IsTheCLibrarys(const std::wstring& wide) {
    std::string buffer(6 * wide.size() + 1, '\0'), gbk = "stale";
    const std::size_t count = std::wcstombs(buffer.data(), wide.c_str(), 6 * wide.size());
    return UnicodeToANSI(wide, gbk) == count && gbk == buffer.c_str();
}

// UTF-8 by way of the wide string.
bool IsTheCLibrarysFromUtf8(const std::string& utf8) {
    const std::wstring wide = UtfStr2Unicode(utf8.c_str());
    std::string expected(6 * wide.size() + 1, '\0'), gbk = "stale";
    std::wcstombs(expected.data(), wide.c_str(), 6 * wide.size());
    return UTF8ToANSI(utf8.c_str(), gbk) == 1 && gbk == expected.c_str();
}

// Every text of two bytes, and those behind or before every other byte of `others`.
void CheckShortTexts(const std::string& others) {
    ASSERT_NE(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    for (unsigned pair = 0; pair < 0x10000; ++pair) {
        const std::string text = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
        ASSERT_TRUE(IsTheCLibrarys(text)) << pair;
        for (const char other : others) {
            ASSERT_TRUE(IsTheCLibrarys(text + other)) << pair << ' ' << int{other};
            ASSERT_TRUE(IsTheCLibrarys(other + text)) << pair << ' ' << int{other};
        }
    }
}

TEST(LocaleRouteTest, GivesWhatTheCLibraryGives) {
    SKIP_WITHOUT_GBK_LOCALE();
    CheckShortTexts("a\x80\xD6\xFF");
    for (std::uint32_t c = 0; c < 0x12000; ++c) {
        const auto character = static_cast<wchar_t>(c < 0x11000 ? c : c - 0x11000 + 0xE0000 - 0x800);
        ASSERT_TRUE(IsTheCLibrarys(std::wstring{character}) && IsTheCLibrarys(std::wstring{0x4E2D, character, 'z'}))
            << c;
    }
    // Longer ones: a wrong byte or character here and there, or none.
    std::mt19937 random(5);
    const std::vector<std::string> groups = {"a b z", "\xD6\xD0 \xB0\xA1 \x81\x40", "a \xC4\xE3 b"};
    for (int round = 0; round < 30000; ++round) {
        std::string gbk;
        for (const std::size_t size = round % 50 == 0 ? 3000 : random() % 80; gbk.size() < size;)
            gbk += test_support::RandomRuns(random, groups);
        if (!gbk.empty() && random() % 2 == 0) gbk[random() % gbk.size()] = static_cast<char>(random());
        ASSERT_TRUE(IsTheCLibrarys(gbk)) << test_support::Hex(gbk);
        std::wstring wide;
        ANSIToUnicode(gbk, wide);
        if (!wide.empty() && random() % 2 == 0)
            wide[random() % wide.size()] = static_cast<wchar_t>(random() >> random() % 32);
        ASSERT_TRUE(IsTheCLibrarys(wide)) << round;
        // By way of UTF-8 and back, as the two steps do it.
        std::string utf8, back, expected;
        ANSIToUTF8(gbk.c_str(), utf8);
        ANSIToUnicode(gbk, wide);
        ASSERT_EQ(utf8, unicode_to_utf8(wide));
        UTF8ToANSI(utf8.c_str(), back);
        UnicodeToANSI(utf8_to_unicode(utf8.c_str()), expected);
        ASSERT_EQ(back, expected);
    }
}

// Runs of every length up to more than a block of 64 bytes, alone and with something unusual at every place.
TEST(LocaleRouteTest, GivesWhatTheCLibraryGivesAtTheEdgesOfRuns) {
    SKIP_WITHOUT_GBK_LOCALE();
    ASSERT_NE(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    const std::vector<std::string> odd_utf8 = {
        "\xC3\xA9",         "\xC2\xA9", "\xE2\x82\xAC", "\xEA\xB0\x80", "\xE3\x80\x80", "\xEF\xBB\xBF",
        "\xF0\x9F\x98\x80", "\xC0\x80", "\xE0\x81\x81", "\xE0\x80\x80", "\xE4\xB8",     "\xE4",
        "\xE4\xB8\xE4",     "\xD0",     "\x80",         "\xFF"};
    const std::vector<std::string> odd_gbk = {"\x80", "\xFF", "\xD6", "\x81\x40", "\x81\x7F", "\xA2\xE3", "\xD6 "};
    const std::wstring odd_wide = {0xE9, 0xA9, 0x20AC, 0xAC00, 0x3000, 0x1F600, 0xE0001, 0x80, -1, 0x7FFFFF80};
    for (std::size_t length = 0; length <= 70; ++length) {
        const std::string ascii(length, 'a');
        std::string gbk = "\xD6\xD0" + ascii;
        for (std::size_t i = 0; i < 70 - length / 2; ++i) gbk += i % 9 == 8 ? "\x81\x40 b" : "\xB9\xFA";
        std::wstring wide;
        std::string utf8;
        ASSERT_TRUE(IsTheCLibrarys(gbk)) << length;
        ANSIToUnicode(gbk, wide);
        ANSIToUTF8(gbk.c_str(), utf8);
        ASSERT_TRUE(IsTheCLibrarys(wide) && IsTheCLibrarysFromUtf8(utf8) && utf8 == unicode_to_utf8(wide)) << length;
        for (std::size_t pos = 0; pos <= utf8.size(); ++pos) {
            const std::string& odd = odd_utf8[(pos + length) % odd_utf8.size()];
            ASSERT_TRUE(IsTheCLibrarysFromUtf8(utf8.substr(0, pos) + odd)) << length << ' ' << pos;
            ASSERT_TRUE(IsTheCLibrarysFromUtf8(utf8.substr(0, pos) + odd + utf8.substr(pos))) << length << ' ' << pos;
        }
        for (std::size_t pos = 0; pos <= gbk.size(); ++pos) {
            const std::string text = gbk.substr(0, pos) + odd_gbk[(pos + length) % odd_gbk.size()] + gbk.substr(pos);
            ASSERT_TRUE(IsTheCLibrarys(text)) << length << ' ' << pos;
            ANSIToUTF8(text.c_str(), utf8);
            std::wstring converted;
            ANSIToUnicode(text, converted);
            ASSERT_EQ(utf8, unicode_to_utf8(converted)) << length << ' ' << pos;
        }
        for (std::size_t pos = 0; pos <= wide.size(); ++pos) {
            std::wstring text = wide;
            ASSERT_TRUE(IsTheCLibrarys(text.insert(pos, 1, odd_wide[(pos + length) % odd_wide.size()]))) << pos;
        }
    }
}

TEST(LocaleRouteTest, GivesWhatTheCLibraryGivesForEveryThreeBytes) {
    SKIP_WITHOUT_GBK_LOCALE();
    std::string all;
    for (unsigned byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    CheckShortTexts(all);
}

// All of GBK in one text, there and back, and texts that are cut where GBK ends.
void CheckTexts() {
    std::string all_gbk, text;
    for (wchar_t c = 1; c < 0x10000; ++c) all_gbk += Iconv("WCHAR_T", "GBK", AsBytes({c})).value_or("");
    ASSERT_EQ(all_gbk.size(), 127 + 1 + 2 * 21791u);
    const std::size_t length = ANSIToUTF8((all_gbk + '\xD6').c_str(), text);
    EXPECT_EQ(text.size(), length);
    EXPECT_TRUE(text == Iconv("GBK", "UTF-8", all_gbk));
    EXPECT_EQ(UTF8ToANSI(text.c_str(), text), 1);
    EXPECT_TRUE(text == all_gbk);
    UTF8ToANSI("\xEF\xBB\xBF\xF0\x9F\x98\x80\xE4\xB8\xAD\xC2\xA9z", text);
    EXPECT_EQ(test_support::Hex(text), "D6 D0");
}

TEST(LocaleRouteTest, ConvertsTextsByTheTable) {
    const NoLocales nowhere;
    EXPECT_EQ(PrintedBy(CheckTexts), std::string(kMessage) + kMessage + kMessage);
}

// A thread with a locale of its own stands for the C libraries that set a locale of any name.
TEST(LocaleRouteTest, TrustsTheConversionRatherThanTheName) {
    SKIP_WITHOUT_GBK_LOCALE();
    EXPECT_EQ(PrintedBy(CheckTexts), "");
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(plain);
    EXPECT_NE(std::setlocale(LC_ALL, "zh_CN.gbk"), nullptr);
    EXPECT_EQ(PrintedBy(CheckTexts), std::string(kMessage) + kMessage + kMessage);
    uselocale(before);
    freelocale(plain);
    EXPECT_EQ(PrintedBy(CheckTexts), "");
}

}  // namespace
