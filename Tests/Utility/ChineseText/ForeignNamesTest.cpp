#include "CodeTrans/Primitives/TableRoute.h"
#include "Internal/NameLists.h"
#include "Support/TestSupport.h"
#include "Utility.h"
#include "Utility/ChineseText/CharacterLists.h"

namespace {

using namespace utility::internal;
using test_support::Character, test_support::Exactly, test_support::Hex, test_support::Words;

std::string ToGbk(std::string utf8) {
    std::string gbk(utf8.size() + 2, '\0');
    utf8toGbk(utf8.data(), gbk.data());
    return gbk.c_str();
}

// How many characters of `text` the list holds, by the first occurrence of all their bytes.
std::size_t SlowCount(std::string_view list, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t size; !text.empty(); text.remove_prefix(size)) {
        size = IsAscii(ToByte(text[0])) || text.size() == 1 ? 1 : 2;
        const std::size_t found = list.find(text.substr(0, size));
        count += found != std::string::npos && (found % 2 == 0 || IsAscii(ToByte(text[0])));
    }
    return count;
}

// Stem and suffix, written to buffers of the least size.
std::pair<std::string, std::string> Split(const std::string& name) {
    const std::vector<char> word = Exactly(name + '\0');
    std::vector<char> stem(word.size()), suffix(9);
    EXPECT_TRUE(PostfixSplit(word.data(), stem.data(), suffix.data()));
    return {stem.data(), suffix.data()};
}

// Every code of two bytes, alone and behind characters that choose the list or, 64 of them, the way of
// counting.
TEST(CharacterListsTest, EveryUnitIsFoundByItsFirstOccurrence) {
    const std::string any_list = "aq\xB0\xB0\xA1z\xB0\xB0\xA1\xB0z\xC1\xC2\xC3\xC2\xC3z\x81", many(64, 'a');
    const std::pair<std::string_view, std::string> lists[] = {{kWesternNameCharacters.view(), ToGbk("芭芭")},
                                                              {kCoreWesternNameCharacters.view(), ToGbk("娃娃")},
                                                              {kJapaneseNameCharacters.view(), ToGbk("藤藤")}};
    for (unsigned code = 0x0101; code < 65536; code += code % 256 == 255 ? 2 : 1) {
        const std::string unit = Character(code);
        for (const auto& [list, two_of_this_list_only] : lists) {
            std::string word = two_of_this_list_only + unit;
            ASSERT_EQ(GetForeignCharCount(word.data()), 2 + SlowCount(list, unit)) << Hex(unit);
        }
        ASSERT_EQ(GetCharCount(any_list.c_str(), unit.c_str(), 0), SlowCount(any_list, unit)) << Hex(unit);
        ASSERT_EQ(GetCharCount(any_list.c_str(), (many + unit).c_str(), 0), 64 + SlowCount(any_list, unit));
        const bool is_suffix = code >= 0x8000 && SlowCount(kPlaceSuffixCharacters.view(), unit) == 1;
        ASSERT_EQ(Split(unit).second, is_suffix ? unit : "") << Hex(unit);
    }
    EXPECT_EQ(GetCharCount("\xB0\xA1", "\xB0\xA1\xB0\xA1", 3), 2u);  // the last character is read whole
}

TEST(ForeignNamesTest, CountsAndTypes) {
    // clang-format off
    const std::tuple<std::string, std::size_t, int, bool, bool> rows[] = {
        {"", 0, 0, true, true}, {"a", 0, 0, false, true}, {"ab", 0, 0, false, false}, {"佐藤", 2, 2, true, true},
        {"史密斯", 3, 0, true, true}, {"山田太郎", 2, 0, false, false}, {"伊万", 2, 1, true, true}, {"伊万x", 2, 1, false, true},
        {"逊芙迦赖雍辛丝敬植", 0, 0, false, false}};  // in the lists, but spelled earlier across two others
    // clang-format on
    for (const auto& [text, count, type, all_foreign, foreign] : rows) {
        std::string word = ToGbk(text);
        EXPECT_EQ(std::tuple(GetForeignCharCount(word.data()), GetForeignType(word.data()), IsAllForeign(word.data()),
                             IsForeign(word.data())),
                  std::tuple(count, type, all_foreign, foreign))
            << text;
    }
}

// The figures that stand beside the rule: of each file, every second word was held back.
TEST(ForeignNamesTest, TellsNamesFromOrdinaryWords) {
    for (const auto& [file, tuned_with, held_back] :
         {std::tuple("ForeignNames.txt", 89, 94), {"OrdinaryWords.txt", 14, 19}}) {
        const std::string folder = UTILITY_TEST_SOURCE_DIR "/Tests/Utility/ChineseText/";
        int count = 0, accepted[2] = {0, 0};
        for (std::string& word : Words(ToGbk(test_support::ReadFileBytes(folder + file))))
            accepted[count++ % 2] += IsForeign(word.data());
        EXPECT_EQ(std::tuple(count, accepted[0], accepted[1]), std::tuple(200, tuned_with, held_back));
    }
}

TEST(PlaceSuffixesTest, FirstWordThenCharacter) {
    const std::pair<std::string, std::string> rows[] = {
        {"新疆维吾尔", "自治区"}, {"京珠", "高速公路"}, {"海淀", "区"}, {"北京", ""}, {"x", ""}, {"", ""}};
    for (const auto& [stem, suffix] : rows)
        EXPECT_EQ(Split(ToGbk(stem + suffix)), std::pair(ToGbk(stem), ToGbk(suffix))) << stem;
    for (const std::string& word : Words(std::string(kPlaceSuffixWords.view())))
        EXPECT_EQ(Split("x" + word), std::pair(std::string("x"), word));
}

// Full-width forms stand in Unicode as far from U+FF00 as the ASCII marks from the blank.
TEST(DictionaryFormsTest, MarksAreSpelledFullWidth) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool known = std::string_view(".,;:?!%(){+}[]/=").find(ToChar(byte)) != std::string_view::npos;
        std::string expected = {'\xEF', ToChar(byte < 0x60 ? 0xBC : 0xBD), ToChar(0x80 | ((byte - 0x20) & 0x3F))};
        if (byte == '.') expected = "。";
        if (!known) expected = ToChar(byte);
        char form[4] = {'#', '#', '#', '#'};
        EXPECT_EQ(Delimiter2DictFormat(ToChar(byte), form), known) << byte;
        EXPECT_EQ(std::string(form, expected.size() + 1), expected + '\0') << byte;
    }
    EXPECT_EQ(MaxPrefix("abc", "abd") + MaxPrefix("", "a") + MaxPrefix("\xD6\xD0x", "\xD6\xD0"), 4u);
}

}  // namespace
