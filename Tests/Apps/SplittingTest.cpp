#include "Splitting.h"

#include <gtest/gtest.h>

#include <string>

#include "Support/TestSupport.h"

namespace {

TEST(SplittingTest, SentencesEndAtChineseAndWesternMarks) {
    const std::vector<std::string_view> expected = {"他说：“走吧！”", "真的吗？！", "It is 3.14.",
                                                    "Yes (really!)",  "甲；乙。",   "没有句号"};
    EXPECT_EQ(pagetext::Sentences("他说：“走吧！”真的吗？！It is 3.14. Yes (really!)\n\n甲；乙。 没有句号"), expected);
    EXPECT_TRUE(pagetext::Sentences(" \n ").empty());
}

TEST(SplittingTest, TokensKeepNumbersWhole) {
    const std::vector<std::string> expected = {"价格", "1,284.50", "元", "3.14", "ok", "中文"};
    EXPECT_EQ(pagetext::Tokens("价格：1,284.50 元（3.14, ok）。中文"), expected);
}

TEST(SplittingTest, AddressesStandInTextOrder) {
    const std::vector<std::string> expected = {"li.lei@example.org", "b-2@mail.example.com", "b-2@mail.example.com"};
    EXPECT_EQ(pagetext::EmailAddresses(test_support::Bytes(
                  "联系：Li.Lei@Example.ORG。\0 @ 或者<b-2@mail.example.com>, B-2@mail.example.com.")),
              expected);
}

}  // namespace
