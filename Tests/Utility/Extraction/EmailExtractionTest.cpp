#include "Utility/Extraction/EmailExtraction.h"

#include "Support/TestSupport.h"

namespace {

// One line for each record.
std::string Extract(const std::string& text) {
    std::vector<_email> emails(2);
    ExtractEmail(text.c_str(), emails);
    std::string lines;
    for (const auto& [user, domain, prefix, name, type] : emails)
        lines += user + '|' + domain + '|' + prefix + '|' + name + '|' + type + '\n';
    return lines;
}

TEST(EmailExtraction, ReadsBackwardsLikeARegularExpression) {
    const std::regex backwards(
        "([a-z0-9._-]*)[<\" \t]*[, \t-]*([a-z0-9\", ._\t-]*)"
        "((?:[^:;,\x80-\xFF]|(?!\xBC\xEF|\xE3\x9A|\x82\x80)[\x80-\xFF][^:;,])*)");
    for (const char* alphabet : {"a\"<>:, \xEF\xBC", "-<\xEF\xBC\x9A\xE3\x80\x82"}) {
        for (const std::string& text : test_support::AllTexts(alphabet, 5)) {
            std::match_results<std::string::const_reverse_iterator> match;
            std::regex_search(text.crbegin(), text.crend(), match, backwards);
            const auto group = [&match](std::size_t i) {
                return std::string(match[i].second.base(), match[i].first.base());
            };
            ASSERT_EQ(Extract(text + '@'), group(1) + "||" + group(3) + '|' + group(2) + "|send\n")
                << test_support::Hex(text);
        }
    }
}

TEST(EmailExtraction, SplitsHeaderLines) {
    constexpr const char* kRows[][2] = {
        {"收件人: nobody", ""},
        {"收件人: A_1@b.cn; C@d.CN", "a_1|b.cn|||recv\nc|d.cn|||recv\n"},
        {"To: John <John.Smith@MAILHOST.Org>", "john.smith|mailhost.org|| John|send\n"},
        {"\"John Smith\" <j@m.org>\r\n,k@m", "j|m.org||\"John Smith|send\nk|m|||send\n"},
        {"发件人: 张三 <z@m.cn>", "z|m.cn| 张三||send\n"},  // six bytes: the blank is a step of its own
        {":收<z@m.cn>", "z|m.cn|\x94\xB6||recv\n"},         // three: the first is a step with the colon
        {"收件人：张三<z@m.cn>", "z|m.cn|收件人：张三||recv\n"},
        {"密送,抄送: a@b 收", "a|b|||copy_to\n"},
        {"密: a@b 抄", "a|b|||secret_to\n"},
        {"\xCA\xD5: a@b@c", "a|b|||send\n|c|||send\n"},            // 收 in GBK
        {"a@b\" c@d >,;\r\n e@f\"@", "a|b|||send\ne|f|||send\n"},  // a quote hides what it holds
    };
    for (const auto& [text, expected] : kRows) EXPECT_EQ(Extract(text), expected) << text;
}

}  // namespace
