// The table of Docs/SideBySide.md: each row is called both ways, and the page must hold what came out.

#include <Global.h>
#include <STLCodeTrans.h>
#include <TextKit.h>
#include <Utility.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Support/TestSupport.h"

namespace {

using namespace std::string_literals;
using test_support::Hex;
using textkit::Encoding;

const textkit::CodeMaps kMaps = textkit::CodeMaps::Load(UTILITY_TEST_DATA_FILE).value_or(textkit::CodeMaps());

std::string Gbk(const std::string& text) {
    return textkit::Encode(text, Encoding::kGbk).bytes;
}
std::string Big5(const std::string& text) {
    return textkit::Encode(text, Encoding::kBig5, {}, kMaps).bytes;
}
std::string FromGbk(std::string_view bytes) {
    return textkit::Decode(bytes, Encoding::kGbk).text;
}

// Results as the page shows them: pieces between strokes, line ends as arrows, bytes that are no UTF-8 in hexadecimal.
std::string Shown(const std::string& text) {
    if (!textkit::IsValidUtf8(text)) return Hex(text);
    std::string shown = textkit::Replace(textkit::Replace(text, "\n", "↵"), "\uFFFD", "U+FFFD");
    return shown.empty() ? "(nothing)" : textkit::Replace(shown, "\u3000", "U+3000");
}
template <typename Range>
std::string Listed(const Range& pieces) {
    std::vector<std::string> shown;
    for (const std::string_view piece : pieces) shown.push_back(Shown(std::string(piece)));
    return shown.empty() ? "(nothing)" : textkit::Join(shown, " / ");
}

std::string FixedGbkToUtf8(const std::string& gbk) {
    std::string utf8;
    ANSIToUTF8(gbk.c_str(), utf8);
    return utf8;
}
std::string FixedUtf8ToGbk(const char* utf8) {
    std::string gbk;
    UTF8ToANSI(utf8, gbk);
    return gbk;
}
// The form of a table route: bytes up to the last that is written.
std::string FixedTableToGbk(std::string utf8) {
    std::vector<char> gbk(utf8.size() + 2, 'x');
    utf8toGbk(utf8.data(), gbk.data());
    return std::string(gbk.begin(), std::find(gbk.begin(), gbk.end(), '\0') + (gbk[0] == '\0' ? 2 : 0));
}
using Converter = unsigned long (*)(int, const char*, unsigned long, char*, unsigned long&);
std::string FixedConversion(Converter convert, int encoding, const std::string& bytes, unsigned long capacity) {
    std::vector<char> result(6 * bytes.size() + 64);
    unsigned long length = capacity;
    convert(encoding, bytes.c_str(), bytes.size(), result.data(), length);
    return {result.data(), length};
}
std::string FixedPage(const std::string& html) {
    std::vector<char> text(html.size() + 6);
    unsigned long length = 0;
    vHtmlToText(html.c_str(), html.size(), text.data(), length);
    return {text.data(), length};
}
std::string FixedFolding(std::string text) {
    text.resize(str_normalization(text.data(), text.size(), true));
    return text;
}
std::string FixedTokens(std::string text, const char* delimiters) {
    std::vector<std::string> tokens;
    CStrToken tokeniser(true);
    for (char* token = tokeniser.GetToken(text.data(), nullptr, delimiters); token != nullptr;
         token = tokeniser.GetToken(nullptr, nullptr, delimiters))
        tokens.emplace_back(token);
    return Listed(tokens);
}
using Splitter = bool (*)(const char*, std::vector<std::string>&, const char*);
std::string FixedSplit(Splitter split, const std::string& text, const char* delimiters) {
    std::vector<std::string> pieces;
    split(text.c_str(), pieces, delimiters);
    return Listed(pieces);
}
std::string FixedAttribute(const char* xml, const char* name) {
    std::string value;
    GetXMLPropertyValue(xml, name, value, nullptr);
    return value;
}
std::string FixedElement(const char* xml, const char* name) {
    std::string value;
    GetXMLItemValue(xml, name, value);
    return value;
}
std::string FixedMember(const char* json, const char* key) {
    std::string value;
    GetJsonItemValue(json, key, value);
    return value;
}
std::string FixedEmail(const char* line) {
    std::vector<_email> emails;
    ExtractEmail(line, emails);
    std::vector<std::string> shown;
    for (const _email& email : emails)
        shown.push_back(email.user + "@" + email.domain + ", name " + Shown(email.name) + ", prefix " +
                        Shown(email.prefix));
    return Listed(shown);
}
std::string Email(const char* line) {
    std::vector<std::string> shown;
    for (const auto& email : textkit::EmailAddresses(line))
        shown.push_back(email.address + ", name " + Shown(email.name));
    return Listed(shown);
}

TEST(SideBySideTest, ThePageShowsWhatComesOut) {
    SKIP_WITHOUT_GBK_LOCALE();
    const test_support::Restore log(g_bLog);
    g_bLog = false;
    const test_support::TempFolder folder;
    test_support::WriteFileBytes(folder / "nul", test_support::Bytes("a\0b"));
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    std::error_code error;
    std::string text;
    const std::string ten_thousand(10000, 'x');
    const char* const words[] = {"人民", "中华人民共和国", "中华"};
    const char* unsorted[] = {words[0], words[1], words[2]};
    long index = 0;
    const auto utf16 = [](const std::string& bytes) { return textkit::Decode(bytes, Encoding::kUtf16Le).text; };
    const auto trimmed = [](std::string blanks) { return gfn_bTrimWord(blanks), Shown(blanks); };
    const auto joined = [](const std::vector<std::string>& list) {
        std::string result;
        return std::string(Vector2Str(list, ",", result));
    };
    const auto replaced = [](std::string gbk, const std::string& from) {
        gfn_vReplaceSubstr(gbk, from.c_str(), "X");
        return gbk;
    };
    // The locale that a call leaves behind.
    const auto locale_after = [](const auto& call) {
        std::setlocale(LC_ALL, "C");
        call();
        return std::string(std::setlocale(LC_ALL, nullptr));
    };
    const auto name_of = [](int code) { return code == 8 ? "8, low byte first" : code == 2 ? "2, GBK" : "other"; };
    const auto detected = [](std::string_view bytes) {
        return std::string(textkit::EncodingName(textkit::Detect(bytes, kMaps).encoding));
    };
    const std::string utf16be = textkit::Encode("<html>", Encoding::kUtf16Be).bytes;

    const struct {
        const char *example, *fixed_call;
        std::string fixed_result;
        const char* new_call;
        std::string new_result;
    } rows[] = {
        // Encodings
        {"GBK 中, FF, 文", "ANSIToUTF8", Shown(FixedGbkToUtf8("\xD6\xD0\xFF\xCE\xC4")), "Decode",
         Shown(FromGbk("\xD6\xD0\xFF\xCE\xC4"))},
        {"the process's locale after a conversion", "ANSIToUTF8", locale_after([] { FixedGbkToUtf8("\xD6\xD0"); }),
         "Decode", locale_after([] { textkit::Decode("\xD6\xD0", Encoding::kGbk); })},
        {"A©B to GBK", "UTF8ToANSI", FixedUtf8ToGbk("A©B"), "Encode, kNumericReference",
         "`" + textkit::Encode("A©B", Encoding::kGbk, textkit::Unmappable::kNumericReference).bytes + "`"},
        {"A©B to GBK", "utf8toGbk", Shown(FromGbk(FixedTableToGbk("A©B"))), "Encode", Gbk("A©B")},
        {"€ to GBK", "utf8toGbk", Hex(FixedTableToGbk("€")), "Encode", Hex(Gbk("€"))},
        {"中🍞文 to wide characters and back", "utf8_to_unicode", unicode_to_utf8(utf8_to_unicode("中🍞文")),
         "Encode and Decode, kUtf16Le", utf16(textkit::Encode("中🍞文", Encoding::kUtf16Le).bytes)},
        {"UTF-8 C3 28", "utf8_to_unicode", unicode_to_utf8(utf8_to_unicode("\xC3(")), "Decode",
         Shown(textkit::Decode("\xC3(", Encoding::kUtf8).text)},
        {"GBK D6, line end, A", "GBKBig5_ToUnicode",
         utf16(FixedConversion(GBKBig5_ToUnicode, ENCODE_GBK, "\xD6\nA", 100)), "Decode", Shown(FromGbk("\xD6\nA"))},
        {"Big5 繁體", "CodeTrans_ToUtf8", FixedConversion(CodeTrans_ToUtf8, ENCODE_BIG5, Big5("繁體"), 0), "Decode",
         textkit::Decode(Big5("繁體"), Encoding::kBig5, kMaps).text},
        {"Big5 繁體 to GBK", "CodeTrans_ToAnsi",
         Shown(FromGbk(FixedConversion(CodeTrans_ToAnsi, ENCODE_BIG5, Big5("繁體"), 0))), "Decode and Encode",
         FromGbk(Gbk(textkit::Decode(Big5("繁體"), Encoding::kBig5, kMaps).text))},
        {"中文 into four bytes", "CodeTrans_ToUtf8", Shown(FixedConversion(CodeTrans_ToUtf8, ENCODE_UTF8, "中文", 4)),
         "Decode", textkit::Decode("中文", Encoding::kUtf8).text},
        {"plain ASCII", "CodeTrans_CodeDetect", name_of(CodeTrans_CodeDetect("plain", 5)), "Detect", detected("plain")},
        {"\\<html> in big-endian UTF-16", "CodeTrans_CodeDetect",
         name_of(CodeTrans_CodeDetect(utf16be.data(), utf16be.size())), "Detect", detected(utf16be)},
        // Pages and folding
        {"`a<script async>f()</script>b`", "vHtmlToText", FixedPage("a<script async>f()</script>b"), "PageText",
         textkit::PageText("a<script async>f()</script>b")},
        {"`AT&amp;T &copy;1&#x4E2D;2`", "vHtmlToText", FixedPage("AT&amp;T &copy;1&#x4E2D;2"), "PageText",
         textkit::PageText("AT&amp;T &copy;1&#x4E2D;2")},
        {"`<b>汉</b>字<p>100%25`", "vHtmlToText", FixedPage("<b>汉</b>字<p>100%25"), "PageText",
         Shown(textkit::PageText("<b>汉</b>字<p>100%25"))},
        {"UTF-8 Ａ，中文", "str_normalization", Shown(FixedFolding("Ａ，中文")), "Fold", textkit::Fold("Ａ，中文")},
        // Strings
        {"开会，散会 at ，", "CStrToken", FixedTokens("开会，散会", "，"), "SplitAny",
         Listed(textkit::SplitAny("开会，散会", "，"))},
        {"开会，散会 at ，", "gfn_bSplitOR", FixedSplit(gfn_bSplitOR, "开会，散会", "，"), "SplitAny",
         Listed(textkit::SplitAny("开会，散会", "，"))},
        {"10,000 bytes, a comma and y at commas: pieces", "gfn_bSplitOR",
         FixedSplit(gfn_bSplitOR, ten_thousand + ",y", ",") == ten_thousand ? "1" : "2", "SplitAny",
         Listed(textkit::SplitAny(ten_thousand + ",y", ",")) == ten_thousand + " / y" ? "2" : "1"},
        {"a,,b at commas", "gfn_bSplit", FixedSplit(gfn_bSplit, "a,,b", ","), "Split",
         Listed(textkit::Split("a,,b", ","))},
        {"a, nothing, b and nothing with commas", "Vector2Str", joined({"a", "", "b", ""}), "Join",
         textkit::Join({"a", "", "b", ""}, ",")},
        {"UTF-8 U+3000 题 U+3000", "gfn_bTrimWord", trimmed("　题　"), "Trim", std::string(textkit::Trim("　题　"))},
        {"GBK 拱、 with 啊 replaced by X", "gfn_vReplaceSubstr", Shown(FromGbk(replaced(Gbk("拱、"), Gbk("啊")))),
         "Decode, Replace", textkit::Replace("拱、", "啊", "X")},
        {"中华人民共和国万岁 in 人民, 中华人民共和国, 中华", "MaxMatching",
         std::to_string(MaxMatching("中华人民共和国万岁", unsorted, 3, &index)) + " bytes", "Dictionary",
         std::to_string(textkit::Dictionary({words, words + 3}).Longest("中华人民共和国万岁").length) + " bytes"},
        // Files
        {"a file of a, NUL, b: bytes", "ReadFile into a string",
         std::to_string(::ReadFile((folder / "nul").c_str(), text, 0, 0, true)), "ReadFile",
         std::to_string(textkit::ReadFile(folder / "nul", error).size())},
        {"/proc/version", "ReadFile into a string",
         ::ReadFile("/proc/version", text, 0, 0, true) == 0 ? "nothing" : "its bytes", "ReadFile",
         textkit::ReadFile("/proc/version", error).empty() ? "nothing" : "its bytes"},
        {"/dev/full", "gfn_bWriteFile", gfn_bWriteFile("/dev/full", "x") ? "true" : "false", "WriteFile",
         textkit::WriteFile("/dev/full", "x", error)
             ? "true"
             : "false"s + (error == std::errc::no_space_on_device ? ", no space" : "")},
        {"a, NUL, b written: bytes", "gfn_bWriteFile",
         gfn_bWriteFile((folder / "out").c_str(), test_support::Bytes("a\0b"))
             ? std::to_string(std::filesystem::file_size(folder / "out"))
             : "",
         "WriteFile",
         textkit::WriteFile(folder / "out", test_support::Bytes("a\0b"), error)
             ? std::to_string(std::filesystem::file_size(folder / "out"))
             : ""},
        // Items and addresses
        {"`<a id=\"1\">x</a>`, a", "GetXMLItemValue", Shown(FixedElement("<a id=\"1\">x</a>", "a")), "XmlItem",
         std::string(textkit::XmlItem("<a id=\"1\">x</a>", "a").value_or(""))},
        {"`<a><a>x</a>y</a>`, a", "GetXMLItemValue", "`" + FixedElement("<a><a>x</a>y</a>", "a") + "`", "XmlItem",
         "`" + std::string(textkit::XmlItem("<a><a>x</a>y</a>", "a").value_or("")) + "`"},
        {"`<e pid=\"7\" id=\"8\"/>`, id", "GetXMLPropertyValue", FixedAttribute("<e pid=\"7\" id=\"8\"/>", "id"),
         "XmlAttribute", std::string(textkit::XmlAttribute("<e pid=\"7\" id=\"8\"/>", "e", "id").value_or(""))},
        {"`{\"n\": 5, \"m\": \"x\"}`, n", "GetJsonItemValue", FixedMember(R"({"n": 5, "m": "x"})", "n"), "JsonItem",
         textkit::JsonItem(R"({"n": 5, "m": "x"})", "n").value_or("")},
        {"`{\"k\": \"\\u4e2d文\"}`, k", "GetJsonItemValue", "`" + FixedMember(R"({"k": "\u4e2d文"})", "k") + "`",
         "JsonItem", textkit::JsonItem(R"({"k": "\u4e2d文"})", "k").value_or("")},
        {"`{\"k\" : \"v\"}`, k", "GetJsonItemValue", Shown(FixedMember(R"({"k" : "v"})", "k")), "JsonItem",
         textkit::JsonItem(R"({"k" : "v"})", "k").value_or("")},
        {"`收件人：张三 <zs@example.com>`", "ExtractEmail", FixedEmail("收件人：张三 <zs@example.com>"),
         "EmailAddresses", Email("收件人：张三 <zs@example.com>")},
        {"`=?gbk?B?1cXI/Q==?= <zs@example.com>`", "ExtractEmail", FixedEmail("=?gbk?B?1cXI/Q==?= <zs@example.com>"),
         "EmailAddresses", Email("=?gbk?B?1cXI/Q==?= <zs@example.com>")},
        {"`mail zs@example.com. Or call @ noon`", "ExtractEmail", FixedEmail("mail zs@example.com. Or call @ noon"),
         "EmailAddresses", Email("mail zs@example.com. Or call @ noon")},
    };
    CodeTrans_Destroy();
    std::setlocale(LC_ALL, "C");

    const std::string page = textkit::ReadFile(UTILITY_TEST_SOURCE_DIR "/Docs/SideBySide.md", error);
    for (const auto& row : rows) {
        EXPECT_NE(row.fixed_result, row.new_result);
        const std::string line = "| "s + row.example + " | `" + row.fixed_call + "` | " + row.fixed_result + " | `" +
                                 row.new_call + "` | " + row.new_result + " |";
        EXPECT_NE(page.find(line), std::string::npos) << line;
    }
}

}  // namespace
