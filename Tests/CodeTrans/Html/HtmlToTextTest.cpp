#include "CodeTrans/Html/HtmlToText.h"

#include <strings.h>

#include <limits>

#include "CodeTrans/Primitives/Utf8.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Bytes, test_support::Hex;

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The rules one after the other with the searches of the C library, squeezed afterwards.
std::string SlowText(const std::string& html, std::size_t length, std::size_t capacity) {
    const char *p = html.c_str(), *const end = p + length;
    std::string out, text;
    if (length >= 3 && html.compare(0, 3, "\xEF\xBB\xBF") == 0) p += 3;
    while (p < end && (capacity == 0 || out.size() < capacity)) {
        const std::ptrdiff_t after = end - p - 1;
        const bool after_blank = !out.empty() && out.back() == ' ';
        const char* const semicolon = *p == '&' && after >= 1 ? std::strchr(p, ';') : nullptr;
        const char* behind = nullptr;
        std::string as = " ";
        if (*p == '<' && after >= 1 && (IsLetter(p[1]) || (p[1] != '\0' && std::strchr("/!?", p[1]) != nullptr))) {
            const bool comment = after >= 4 && std::strncmp(p, "<!--", 4) == 0;
            const bool script = after >= 15 && strncasecmp(p, "<script>", 8) == 0;
            const char* q = std::strstr(p, comment ? "-->" : script ? "</s" : ">");
            if (script && q == nullptr) q = std::strstr(p, "</S");
            if (script && q != nullptr && q < end) q = std::strchr(q, '>');
            if (q != nullptr && q < end && (comment || script || q - p < 500)) behind = q + (comment ? 3 : 1);
        } else if (semicolon != nullptr && p[1] == '#' && semicolon - p <= 10 && after >= 2) {
            const auto value = static_cast<unsigned long>(std::atol(p + 2));
            unsigned char utf8[6];
            if (value < 127 || value > 254) as.assign(utf8, utf8 + unicode_to_utf8_one(value, utf8, 6));
            behind = semicolon + 1;
        } else if (semicolon != nullptr && (std::strncmp(p, "&lt;", 4) == 0 || std::strncmp(p, "&gt;", 4) == 0)) {
            as = p[1] == 'l' ? "<" : ">";
            behind = p + 4;
        } else if (semicolon != nullptr && IsLetter(p[1]) && semicolon - p < 10 && semicolon < end) {
            behind = semicolon + 1;
        } else if (*p == '%' && after >= 2 && std::strspn(p + 1, "0123456789ABCDEF") >= 2) {
            as = static_cast<char>(std::stoi(std::string(p + 1, 2), nullptr, 16));
            behind = p + 3;
        } else if (after >= 5 && std::strncmp(p, "nbsp;", 5) == 0) {
            if (!after_blank) as.clear();
            behind = p + 5;
        }
        if (behind == nullptr) {
            const bool dropped = (*p == ' ' && after_blank) || (*p == '\0' && after >= 1 && p[1] == '\0');
            as.assign(dropped ? 0 : 1, *p);
            behind = p + 1;
        }
        out += as;
        p = behind;
    }
    for (const char c : out.substr(0, out.find('\0')))
        if (c != ' ' || (!text.empty() && text.back() != ' ')) text += c;
    return text;
}

// Through buffers of exactly the stated sizes, so that a sanitizer sees one byte too many.
std::string Text(const std::string& html, std::size_t length, std::size_t capacity) {
    const bool has_nul = html.find('\0') != std::string::npos;  // then no other need follow
    const auto input = std::make_unique<char[]>(html.size() + (has_nul ? 0 : 1));
    html.copy(input.get(), html.size());
    const auto output = std::make_unique<char[]>((capacity == 0 ? length : capacity) + 6);
    unsigned long count = capacity;
    EXPECT_EQ(vHtmlToText(input.get(), length, output.get(), count), 0);
    EXPECT_EQ(std::strlen(output.get()), count);
    return {output.get(), count};
}

TEST(HtmlToTextTest, WorkedByHand) {
    // clang-format off
    const std::pair<std::string, std::string> rows[] = {
        {"a<b>c", "a c"}, {"a < b", "a < b"}, {"x<!-- note -->y<!-->z", "x y z"}, {"<!-- <b>x", "<!-- x"},
        {"<script>var a=1;</script>after", "after"}, {"a<SCRIPT>x<y</SCRIPT>b", "a b"},
        {"<script type=\"x\">a</script>b", "a b"}, {"&lt;p&gt; &amp;&#65;&#20013;&#160;b", "<p> A中 b"},
        {"a&#x41;b", "a"}, {"a&#-5;b&#255;c&#127;d&#126;", "abÿc d~"}, {"%41%4a", "A%4a"},
        {"a   b\r\n\t c", "a b\r\n\t c"}, {"anbsp;b nbsp;cnbsp;", "ab cnbsp;"},
        {"\xEF\xBB\xBF中&copy", "中&copy"}};
    // clang-format on
    for (const auto& [html, text] : rows) EXPECT_EQ(Text(html, html.size(), 0), text) << html;
    EXPECT_EQ(Text("plain text", 10, 3), "pla");
    EXPECT_EQ(Text(Bytes("<script></S>abcdefg\0</s"), 20, 0), "abcdefg");
    EXPECT_EQ(Text("<script></S>abcdefg</s", 20, 0), "<script> abcdefg<");
}

// Random texts from what the rules look for, counted to any of their bytes, with any capacity.
TEST(HtmlToTextTest, AgreesWithTheSlowForm) {
    std::vector<std::string> tokens = test_support::Words(
        "< > / ! ? # & ; % x - -- <b <!-- --> <script> <sCRIPT> <script\x1E </s </S </script> &lt; &gt; "
        "&amp; &nbsp; "
        "nbsp; &# 65 160 20013 12345678 99999999 -5 +9 &longname; &longname %41 %20 %4a %00 \xEF\xBB\xBF "
        "\xD6\xD0");
    const std::string others[] = {" ", "  ", "\r\n", "\t7", Bytes("\0"), Bytes("\0\0"), std::string(490, 'y')};
    tokens.insert(tokens.end(), std::begin(others), std::end(others));
    std::mt19937 random(20240229);
    for (int i = 0; i < 300000; ++i) {
        std::string html;
        for (std::size_t left = random() % 14; left > 0; --left) html += tokens[random() % tokens.size()];
        const std::size_t length = random() % 2 == 0 ? html.size() : random() % (html.size() + 1);
        const std::size_t capacity = random() % 2 == 0 ? 0 : random() % (html.size() + 2);
        ASSERT_EQ(Hex(Text(html, length, capacity)), Hex(SlowText(html, length, capacity)))
            << Hex(html) << " length " << length << " capacity " << capacity;
    }
}

// Processor time of the fastest of three runs over a megabyte of one text.
std::clock_t Time(const std::string& piece, const std::string& tail) {
    std::string html;
    while (html.size() < 1 << 20) html += piece;
    html += tail;
    std::clock_t fastest = std::numeric_limits<std::clock_t>::max();
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        Text(html, html.size(), 0);
        fastest = std::min(fastest, std::clock() - start);
    }
    return fastest;
}

TEST(HtmlToTextTest, HostilePagesCostNoMoreThanOrdinaryOnes) {
    const std::clock_t ordinary = Time("<p class=\"x\">Some words, &quot;中文&quot;</p>\n", "");
    for (const char* const piece : {"<!--", "&", "<script>", "<b", "&a", "&#1", "</s<script>", "n", "<!-- -- ->"}) {
        for (const char* const tail : {"", "</S"}) EXPECT_LT(Time(piece, tail), 20 * ordinary) << piece;
    }
}

TEST(HtmlToTextTest, UriEscapes) {
    const std::pair<std::string, std::string> rows[] = {
        {"%41%4a+%e4%B8", "AJ+\xE4\xB8"}, {"%4", "%4"}, {"a%", "a%"}, {"%%41", "T1"}, {"%zz%\xD6\x31", "Sa"}};
    for (const auto& [uri, text] : rows) {
        std::string bytes = uri;
        int count = -1;
        EXPECT_EQ(iURIDecode(bytes.data(), static_cast<int>(bytes.size()), bytes.data(), count), 0);
        EXPECT_EQ(Hex(bytes.substr(0, static_cast<std::size_t>(count))), Hex(text)) << uri;
    }
}

}  // namespace
