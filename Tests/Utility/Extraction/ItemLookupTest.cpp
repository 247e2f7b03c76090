#include "Utility/Extraction/ItemLookup.h"

#include "Support/TestSupport.h"

namespace {

// The value and, unless the result is null, the position it points at.
std::string Show(const char* text, const char* result, const std::string& value) {
    return result == nullptr ? value : value + " @" + std::to_string(result - text);
}

// The same from an expression with two groups, the value and its closing delimiter.
std::string Expected(const std::string& text, const std::regex& expression) {
    std::smatch match;
    if (!std::regex_search(text, match, expression)) return "";
    return match.str(1) + (match.length(2) == 0 ? "" : " @" + std::to_string(match.position(2)));
}

TEST(ItemLookup, AgreesWithRegularExpressionsOnEveryShortText) {
    const std::regex item("<n>([^]*?)(</n>|$)"), json("\"n\":[^\"]*\"([^\"]*)(\"|$)"), property("n=\"([^\"]*)(\"|$)");
    const char* const kTokens[] = {"<n>", "</n>", "n=\"", "\"n\":", "\"", "<", "4"};
    for (const std::string& digits : test_support::AllTexts("0123456", 4)) {
        std::string value = "left over", text;
        for (const char digit : digits) text += kTokens[digit - '0'];
        const char* const t = text.c_str();
        ASSERT_EQ(Show(t, GetJsonItemValue(t, "n", value), value), Expected(text, json)) << text;
        ASSERT_EQ(GetJsonItemInt(t, "n"), std::atoi(value.c_str())) << text;
        ASSERT_EQ(Show(t, GetXMLItemValue(t, "n", value), value), Expected(text, item)) << text;
        ASSERT_EQ(GetXMLItemInt(t, "n"), std::atoi(value.c_str())) << text;
        const bool is_found = text.find("<n>") != std::string::npos;
        std::vector<char> buffer(is_found ? text.size() - 2 : 1, '?');  // no byte more than it may need
        ASSERT_EQ(GetXMLItemValue(t, "n", buffer.data()), is_found) << text;
        ASSERT_EQ(buffer.data(), value);
        for (std::size_t limit = 0; limit <= text.size(); ++limit) {
            ASSERT_EQ(Show(t, GetXMLPropertyValue(t, "n", value, t + limit), value),
                      text.find("n=\"") <= limit ? Expected(text, property) : "");
        }
    }
}

TEST(ItemLookup, FindsAnyNameAnywhere) {
    std::string value;
    for (std::size_t start = 3990; start < 4100; ++start) {  // across the border of a search window
        for (const std::string& name : {std::string(), std::string("%s%n"), std::string(99, 'n')}) {
            const std::string text =
                std::string(start, '<') + "<" + name + "> -42x</" + name + "></>" + name + "=\"v\"";
            EXPECT_EQ(GetXMLItemInt(text.c_str(), name.c_str()), -42) << start;
            const char* const at = text.c_str() + text.size() - name.size() - 4;
            EXPECT_EQ(GetXMLPropertyValue(text.c_str(), name.c_str(), value, at), at + name.size() + 3);
            EXPECT_EQ(GetXMLPropertyValue(text.c_str(), name.c_str(), value, at - 1), nullptr);
            EXPECT_EQ(GetXMLPropertyValue(at, name.c_str(), value, text.c_str()), nullptr);
        }
    }
    EXPECT_EQ(GetXMLItemInt(nullptr, "n"), 0);
}

}  // namespace
