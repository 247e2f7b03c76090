#include "CodeTrans/Html/HtmlToText.h"

#include <strings.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <tuple>

#include "CodeTrans/Primitives/Utf8.h"
#include "Support/TestSupport.h"

namespace {

using test_support::Bytes;
using test_support::Hex;

// The rules one after the other with the searches of the C library, squeezed afterwards.
std::string SlowText(const std::string& html, std::size_t length, std::size_t capacity) {
    const char* p = html.c_str();
    const char* const end = p + length;
    std::string out;
    const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    const auto take = [&](const std::string& text, const char* behind) { out += text, p = behind; };
    const auto is_upper_hex = [](char c) {
        return c != '\0' && std::strchr("0123456789ABCDEF", c) != nullptr;
    };
    if (length >= 3 && html.compare(0, 3, "\xEF\xBB\xBF") == 0) p += 3;
    while (p < end && (capacity == 0 || out.size() < capacity)) {
        const std::ptrdiff_t after = end - p - 1;
        const char* q = nullptr;
        if (*p == '<' && after >= 1 && (is_letter(p[1]) || p[1] == '/' || p[1] == '!' || p[1] == '?')) {
            std::size_t skip = 1;
            if (after >= 4 && std::strncmp(p + 1, "!--", 3) == 0) {
                q = std::strstr(p, "-->");
                skip = 3;
            } else if (after >= 15 && strncasecmp(p + 1, "script>", 7) == 0) {
                q = std::strstr(p + 7, "</s");
                if (q == nullptr) q = std::strstr(p + 7, "</S");
                if (q != nullptr && q < end) q = std::strchr(q, '>');
            } else if (q = std::strchr(p, '>'); q != nullptr && q - p >= 500) {
                q = nullptr;
            }
            if (q != nullptr && q < end) {
                take(" ", q + skip);
                continue;
            }
        } else if (*p == '&' && after >= 1 && (q = std::strchr(p + 1, ';')) != nullptr) {
            if (p[1] == '#' && q - p <= 10 && after >= 2) {
                const auto value = static_cast<unsigned long>(std::atol(p + 2));
                unsigned char utf8[6];
                const int count = unicode_to_utf8_one(value, utf8, 6);
                const std::string character(utf8, utf8 + count);
                take(value >= 127 && value <= 254 ? " " : character, q + 1);
                continue;
            }
            if (const bool less = std::strncmp(p, "&lt;", 4) == 0; less || std::strncmp(p, "&gt;", 4) == 0) {
                take(less ? "<" : ">", p + 4);
                continue;
            }
            if (is_letter(p[1]) && q - p < 10 && q < end) {
                take(" ", q + 1);
                continue;
            }
        } else if (*p == '%' && after >= 2 && is_upper_hex(p[1]) && is_upper_hex(p[2])) {
            take(std::string(1, static_cast<char>(std::stoi(std::string(p + 1, 2), nullptr, 16))), p + 3);
            continue;
        } else if (*p == '\0' && after >= 1 && p[1] == '\0') {
            ++p;
            continue;
        } else if (after >= 5 && std::strncmp(p, "nbsp;", 5) == 0) {
            take(!out.empty() && out.back() == ' ' ? " " : "", p + 5);
            continue;
        }
        take(*p == ' ' && !out.empty() && out.back() == ' ' ? "" : std::string(1, *p), p + 1);
    }
    out.resize(std::strlen(out.c_str()));
    out.erase(std::unique(out.begin(), out.end(), [](char a, char b) { return a == ' ' && b == ' '; }),
              out.end());
    return out.substr(!out.empty() && out[0] == ' ' ? 1 : 0);
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
    const std::tuple<std::string, std::string> rows[] = {{"a<b>c", "a c"},
                                                         {"a < b", "a < b"},
                                                         {"x<!-- note -->y<!-->z", "x y z"},
                                                         {"<!-- <b>x", "<!-- x"},
                                                         {"<script>var a=1;</script>after", "after"},
                                                         {"a<SCRIPT>x<y</SCRIPT>b", "a b"},
                                                         {"<script type=\"x\">a</script>b", "a b"},
                                                         {"&lt;p&gt; &amp;&#65;&#20013;&#160;b", "<p> A中 b"},
                                                         {"a&#x41;b", "a"},
                                                         {"a&#-5;b&#255;c&#127;d&#126;", "abÿc d~"},
                                                         {"%41%4a", "A%4a"},
                                                         {"a   b\r\n\t c", "a b\r\n\t c"},
                                                         {"anbsp;b nbsp;cnbsp;", "ab cnbsp;"},
                                                         {"\xEF\xBB\xBF中&copy", "中&copy"},
                                                         {Bytes("a\0b"), "a"}};
    for (const auto& [html, text] : rows) {
        EXPECT_EQ(Text(html, html.size(), 0), text) << html;
    }
    EXPECT_EQ(Text("plain text", 10, 3), "pla");
    EXPECT_EQ(Text(Bytes("<script></S>abcdefg\0</s"), 20, 0), "abcdefg");
}

// Random texts from what the rules look for, counted to any of their bytes, with any capacity.
TEST(HtmlToTextTest, AgreesWithTheSlowForm) {
    const std::string tokens[] = {"<b",
                                  "<",
                                  ">",
                                  "/",
                                  "!",
                                  "?",
                                  "<!--",
                                  "-->",
                                  "--",
                                  "<script>",
                                  "<sCRIPT>",
                                  "<script\x1E",
                                  "</s",
                                  "</S",
                                  "</script>",
                                  "&lt;",
                                  "&gt;",
                                  "&amp;",
                                  "&nbsp;",
                                  "nbsp;",
                                  "&",
                                  "#",
                                  "&#",
                                  ";",
                                  "65",
                                  "160",
                                  "20013",
                                  "99999999",
                                  "-5",
                                  "+9",
                                  "\t7",
                                  "&longname;",
                                  "&longname",
                                  "x",
                                  " ",
                                  "  ",
                                  "\r\n",
                                  "%41",
                                  "%20",
                                  "%4a",
                                  "%00",
                                  "%",
                                  Bytes("\0"),
                                  Bytes("\0\0"),
                                  "\xEF\xBB\xBF",
                                  "\xD6\xD0",
                                  std::string(490, 'y'),
                                  "12345678"};
    std::mt19937 random(20240229);
    for (int i = 0; i < 300000; ++i) {
        std::string html;
        for (std::size_t left = random() % 14; left > 0; --left) html += tokens[random() % std::size(tokens)];
        const std::size_t length = random() % 2 == 0 ? html.size() : random() % (html.size() + 1);
        const std::size_t capacity = random() % 2 == 0 ? 0 : random() % (html.size() + 2);
        ASSERT_EQ(Hex(Text(html, length, capacity)), Hex(SlowText(html, length, capacity)))
            << Hex(html) << " length " << length << " capacity " << capacity;
    }
}

// Fastest of three runs over a megabyte of one text, in seconds.
double Seconds(const std::string& piece, const std::string& tail) {
    std::string html;
    while (html.size() < 1 << 20) html += piece;
    html += tail;
    std::string text(html.size() + 6, '\0');
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        unsigned long count = 0;
        vHtmlToText(html.c_str(), html.size(), text.data(), count);
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

TEST(HtmlToTextTest, HostilePagesCostNoMoreThanOrdinaryOnes) {
    const double ordinary = Seconds("<p class=\"x\">Some words, &quot;中文&quot;</p>\n", "");
    for (const char* const piece :
         {"<!--", "&", "<script>", "<b", "&a", "&#1", "</s<script>", "n", "<!-- -- ->"}) {
        for (const char* const tail : {"", "</S"})
            EXPECT_LT(Seconds(piece, tail), 20 * ordinary) << piece << tail;
    }
}

TEST(UriTest, PercentEscapes) {
    const std::tuple<std::string, std::string> rows[] = {{"%41%4a+%e4%B8", "AJ+\xE4\xB8"},
                                                         {"%4", "%4"},
                                                         {"a%", "a%"},
                                                         {"%%41", "T1"},
                                                         {"", ""},
                                                         {"%zz%\xD6"
                                                          "1",
                                                          "Sa"}};
    for (const auto& [uri, text] : rows) {
        std::string bytes = uri;
        int count = -1;
        EXPECT_EQ(iURIDecode(bytes.data(), static_cast<int>(bytes.size()), bytes.data(), count), 0);
        EXPECT_EQ(Hex(bytes.substr(0, static_cast<std::size_t>(count))), Hex(text)) << uri;
    }
    int count = -1;
    iURIDecode(nullptr, -1, nullptr, count);
    EXPECT_EQ(count, 0);
}

}  // namespace
