// Buffers whose size a function cannot know: what its comment asks for is enough, and no more than is needed. And
// texts: nothing in front of them or behind their NUL is read. The pages on either side of a buffer may not be touched.

#include <STLCodeTrans.h>
#include <TextKit.h>
#include <Utility.h>
#include <global_linux.h>
#include <sys/mman.h>
#include <unistd.h>

#include "Checks/TextOperations.h"
#include "Support/LogSupport.h"

namespace {

using namespace test_support;

// A few pages between two that nobody may touch.
class GuardedPages {
public:
    GuardedPages() {
        void* const all = mmap(nullptr, size_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (all == MAP_FAILED) std::abort();
        begin_ = static_cast<char*>(all) + page_;
        if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) std::abort();
    }
    ~GuardedPages() { munmap(begin_ - page_, size_ + 2 * page_); }
    GuardedPages(const GuardedPages&) = delete;
    GuardedPages& operator=(const GuardedPages&) = delete;

    // `size` bytes right in front of the page behind, or right behind the page in front.
    char* AtEnd(std::size_t size) const { return begin_ + size_ - size; }
    char* AtBegin() const { return begin_; }

private:
    const std::size_t page_ = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t size_ = 4 * page_;
    char* begin_;
};

// Texts that hold beginnings of all that the library knows, cut at every byte.
std::vector<std::string> Texts() {
    std::vector<std::string> texts = AllTexts("a<&\x81\xE4\xC3", 4);
    for (const std::string whole :
         {"<!--x--><script>y</script>&#99999999;&nbsp;%41\xEF\xBB\xBF", "\xD6\xD0\xB9\xFA\xA3\xC1\xA1\xA1\x80\xFE",
          "中文。２０２４年3月5日，a.b@c.cn<d@e> ^^q^^ \"k\":\"v\" [x](y)\r\n", "-1,234.5% 12:30 /a\\b.c.txt"}) {
        for (std::size_t size = 0; size <= whole.size(); ++size) texts.push_back(whole.substr(0, size));
        for (std::size_t pos = 0; pos < whole.size(); ++pos) texts.push_back(whole.substr(pos));
    }
    return texts;
}

class Buffers : public LoggedTest {
protected:
    Buffers() {
        g_bLog = false;
        EXPECT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
        SetTimeZone("UTC0");
    }
    ~Buffers() override { CodeTrans_Destroy(); }
    const GuardedPages pages_;
    const std::vector<std::string> texts_ = Texts();
};

TEST_F(Buffers, TextsAreNotReadBeyondTheirEnds) {
    for (const checks::TextOperation& operation : checks::TextOperations()) {
        SCOPED_TRACE(operation.name);
        for (const std::string& text : texts_) {
            const std::string expected = operation.run({text.c_str(), text.size()});
            for (char* const place : {pages_.AtEnd(text.size() + 1), pages_.AtBegin()}) {
                std::memcpy(place, text.c_str(), text.size() + 1);
                ASSERT_EQ(Hex(operation.run({place, text.size()})), Hex(expected)) << Hex(text);
            }
        }
    }
}

struct Output {
    const char* name;
    std::size_t (*need)(const std::string& text);  // bytes
    void (*run)(const std::string& text, char* output);
    bool is_tight = true;
};

char* Chars(const std::string& text) {
    return const_cast<char*>(text.c_str());
}
unsigned long Convert(unsigned long (*convert)(int, const char*, unsigned long, char*, unsigned long&), int encoding,
                      const std::string& text, char* output, std::size_t unit = 1) {
    unsigned long length = 0;
    return convert(encoding, text.data(), text.size() / unit, output, length);
}
template <std::size_t N>
std::size_t Is(const std::string&) {
    return N;
}
// The last step begins just in front of the limit and writes six bytes.
void HtmlWithALimit(const std::string& text, char* output) {
    const std::string html = std::string(text.size(), 'a') + "&#99999999;";
    unsigned long length = text.size() + 1;
    vHtmlToText(html.c_str(), html.size(), output, length);
}

// clang-format off
const Output kOutputs[] = {
    {"utf8tou", [](const std::string& t) { return 2 * t.size() + 1; }, [](const std::string& t, char* o) {
        utf8tou(Chars(t), o); }},
    {"utoGbk", [](const std::string& t) { return 2 * (t.size() / 2) + 2; }, [](const std::string& t, char* o) {
        utoGbk(t.data(), o, t.size() / 2); }},
    {"utf8toGbk", [](const std::string& t) { return t.size() + 2; }, [](const std::string& t, char* o) {
        utf8toGbk(Chars(t), o); }},
    {"utf8toGbk in place", [](const std::string& t) { return t.size() + 2; }, [](const std::string& t, char* o) {
        utf8toGbk(std::strcpy(o, t.c_str()), o); }},
    {"utf8_to_unicode", [](const std::string& t) { return 4 * t.size() + 4; },
         // two zero bytes and two for the alignment
        [](const std::string& t, char* o) { utf8_to_unicode(reinterpret_cast<unsigned char*>(Chars(t)),
            reinterpret_cast<wchar_t*>(o)); }, false},
    {"CodeTrans_ToUnicode, 1", [](const std::string& t) { return 4 * t.size() + 2; }, [](const std::string& t,
        char* o) { Convert(CodeTrans_ToUnicode, 1, t, o); }},
    {"CodeTrans_ToUnicode, 8", [](const std::string& t) { return t.size() + 1; }, [](const std::string& t, char* o) {
        Convert(CodeTrans_ToUnicode, 8, t, o); }},
    {"CodeTrans_ToUtf8, 1", [](const std::string& t) { return t.size() + 1; }, [](const std::string& t, char* o) {
        Convert(CodeTrans_ToUtf8, 1, t, o); }},
    {"CodeTrans_ToUtf8, 2", [](const std::string& t) { return 3 * t.size() + 1; }, [](const std::string& t, char* o) {
        Convert(CodeTrans_ToUtf8, 2, t, o); }},
    {"CodeTrans_ToUtf8, 8", [](const std::string& t) { return 3 * (t.size() / 4) + 1; }, [](const std::string& t,
        char* o) { Convert(CodeTrans_ToUtf8, 8, t, o, 4); }},
    {"CodeTrans_ToAnsi, 1", [](const std::string& t) { return t.size() + 1; }, [](const std::string& t, char* o) {
        Convert(CodeTrans_ToAnsi, 1, t, o); }},
    {"CodeTrans_ToAnsi, 2", [](const std::string& t) { return t.size() + 1; }, [](const std::string& t, char* o) {
        Convert(CodeTrans_ToAnsi, 2, t, o); }},
    {"CodeTrans_ToAnsi, 8", [](const std::string& t) { return 2 * (t.size() / 2) + 2; }, [](const std::string& t,
        char* o) { Convert(CodeTrans_ToAnsi, 8, t, o, 2); }},
    {"vHtmlToText", [](const std::string& t) { return t.size() + 6; },
        [](const std::string& t, char* o) { unsigned long n = 0; vHtmlToText(t.c_str(), t.size(), o, n); }, false},
             // a text never grows
    {"vHtmlToText with a limit", [](const std::string& t) { return t.size() + 1 + 6; }, HtmlWithALimit},
    {"iURIDecode", [](const std::string& t) { return t.size(); },
        [](const std::string& t, char* o) { int n = 0; iURIDecode(Chars(t), static_cast<int>(t.size()), o, n); }},
    {"str_normalization", [](const std::string& t) { return t.size() + 1; },
        [](const std::string& t, char* o) { std::memcpy(o, t.data(), t.size()); str_normalization(o, t.size(), true);
            }},
    {"Getchar", Is<3>, [](const std::string& t, char* o) { Getchar(t.c_str(), o); }},
    {"GetUTF8Char", Is<7>, [](const std::string& t, char* o) { GetUTF8Char(("\xFC" + t + "aaaaa").c_str(), o); }},
    {"sgets", [](const std::string& t) { return std::min(t.find_first_of("\r\n"), t.size()) + 1; },
        [](const std::string& t, char* o) { sgets(t.c_str(), o); }},
    {"PostfixSplit, stem", [](const std::string& t) { return t.size() + 1; }, [](const std::string& t, char* o) {
        char suffix[9]; PostfixSplit(t.c_str(), o, suffix); }},
    {"PostfixSplit, suffix", Is<9>,
        [](const std::string& t, char* o) { PostfixSplit((t + "\xB8\xDF\xCB\xD9\xB9\xAB\xC2\xB7").c_str(),
            std::vector<char>(t.size() + 9).data(), o); }},
    {"Delimiter2DictFormat", Is<4>, [](const std::string& t, char* o) { Delimiter2DictFormat(t.c_str()[0], o); }},
    {"GetXMLItemValue", [](const std::string& t) { return ("<a>" + t).size() - 2; },
        [](const std::string& t, char* o) { GetXMLItemValue(("<a>" + t).c_str(), "a", o); }},
    {"time2str", Is<27>, [](const std::string& t, char* o) { time2str((1L << 40) - static_cast<long>(t.size()), o,
        true); }},
    {"time2str, digits", Is<20>, [](const std::string& t, char* o) { time2str(1L + static_cast<long>(t.size()), o,
        false); }},
    {"TimeValue", Is<15>, [](const std::string&, char* o) { TimeValue(o); }},
    {"filter_data2str, 3", Is<21>, [](const std::string&, char* o) { double c = 0;
        filter_data2str(str2filter_data("-9223372036854775808", &c, 3), o, 3); }},
    {"filter_data2str, 4", Is<27>, [](const std::string& t, char* o) { double c = 0;
        const long time = (1L << 40) - static_cast<long>(t.size());
        std::memcpy(&c, &time, sizeof c); filter_data2str(&c, o, 4); }, false},  // years as far as a time goes
    {"filter_data2str, 5", Is<48>, [](const std::string&, char* o) { double c = 0;
        filter_data2str(str2filter_data("-3.4e38", &c, 5), o, 5); }},
    {"filter_data2str, 7", Is<318>, [](const std::string&, char* o) { double c = 0;
        filter_data2str(str2filter_data("-1.7e308", &c, 7), o, 7); }},
    {"filter_data2str, 0", Is<12>, [](const std::string&, char* o) { double c = 0;
        filter_data2str(str2filter_data("-2147483648", &c, 0), o, 0); }},
    {"int_compress", Is<4>, [](const std::string&, char* o) { int_compress((1 << 30) - 1,
        reinterpret_cast<unsigned char*>(o)); }},
    {"itoa", Is<12>, [](const std::string&, char* o) { itoa(-2147483647 - 1, o, 10); }},
    {"GetFullFileName", [](const std::string& t) { return 2 * t.size() + 2; }, [](const std::string& t, char* o) {
        GetFullFileName(o, t.c_str(), t.c_str()); }},
    {"GetAbsolutePath", [](const std::string& t) { return 2 * t.size() + 2; }, [](const std::string& t, char* o) {
        GetAbsolutePath(t.c_str(), t.c_str(), o); }},
    {"GetRelevatePath, directory", [](const std::string& t) { return t.size() + 1; },
        [](const std::string& t, char* o) { GetRelevatePath((t + "/x").c_str(), o, std::vector<char>(9).data()); }},
    {"GetRelevatePath, file", [](const std::string& t) { return t.size() - (t.find_last_of("/\\") + 1) + 1; },
        [](const std::string& t, char* o) { GetRelevatePath(t.c_str(), std::vector<char>(1000).data(), o); }},
    {"GetFilename", [](const std::string& t) { const std::string name = t.substr(t.find_last_of("/\\") + 1);
        return std::min(name.find('.'), name.size()) + 1; },
        [](const std::string& t, char* o) { GetFilename(t.c_str(), o); }},
    {"rewriting in place", [](const std::string& t) { return t.size() + 1; },
        [](const std::string& t, char* o) { for (const auto rewrite : {+[](char* s) { QuanJiao2BanJiao(s); },
            +[](char* s) { StrNormalize(s); },
            +[](char* s) { WordStandard(s); }, +[](char* s) { strupr(strrev(s)); }}) rewrite(std::strcpy(o,
                t.c_str())); }},
};
// clang-format on

TEST_F(Buffers, OutputsNeedWhatTheirCommentsSay) {
    for (const Output& output : kOutputs) {
        SCOPED_TRACE(output.name);
        bool is_last_byte_used = false;
        for (const std::string& text : texts_) {
            const std::size_t need = output.need(text);
            char* const place = pages_.AtEnd(need);
            for (const char fill : {'\x55', '\xAA'}) {
                std::memset(pages_.AtBegin(), fill, static_cast<std::size_t>(place - pages_.AtBegin()) + need);
                output.run(text, place);
                ASSERT_EQ(place[-1], fill) << Hex(text);
                is_last_byte_used |= need > 0 && place[need - 1] != fill;
            }
        }
        EXPECT_TRUE(is_last_byte_used || !output.is_tight);
    }
}

}  // namespace
