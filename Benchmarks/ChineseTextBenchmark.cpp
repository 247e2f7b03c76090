// Folding, counting and classifying of GBK text, against forms that look each character up with strstr.

#include <cstring>
#include <string>
#include <vector>

#include "ChineseText/CharacterClass.h"
#include "ChineseText/CharacterLists.h"
#include "ChineseText/CharacterStepping.h"
#include "ChineseText/ForeignNames.h"
#include "ChineseText/TextTidying.h"
#include "ChineseText/WordStandard.h"
#include "Common/Contest.h"
#include "Internal/EncodedList.h"
#include "Internal/NameLists.h"
#include "Normalisation/StringFolding.h"

namespace {

using namespace bench;
using utility::internal::Gbk;
using utility::internal::Utf8;

// One character as a string, and its length.
struct Unit {
    explicit Unit(const char* text) : length(Getchar(text, bytes)) {}
    char bytes[3];
    std::size_t length;
    unsigned char trail() const { return static_cast<unsigned char>(bytes[1]); }
};

bool Holds(const char* list, const char* unit) {
    const char* const found = std::strstr(list, unit);
    return found != nullptr && (found - list) % 2 == 0;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// The half-width form of a full-width digit or letter, or NUL.
char HalfWidth(const Unit& unit) {
    if (unit.length != 2 || unit.bytes[0] != '\xA3') return '\0';
    const char ascii = static_cast<char>(unit.trail() - 0x80);
    const bool folds = (ascii >= '0' && ascii <= '9') || (Lower(ascii) >= 'a' && Lower(ascii) <= 'z');
    return unit.trail() >= 0x80 && folds ? ascii : '\0';
}

void PlainNormalization(char* text) {
    static constexpr auto kOpening = Gbk("（【");
    static constexpr auto kClosing = Gbk("）】");
    static constexpr auto kQuotes = Gbk("“”‘＇");
    static const std::string kSeparators =
        std::string(Gbk("＼｜，．。、－—").view()) + "\xAA\xA4" + std::string(Gbk("　").view());
    char* out = text;
    for (const char* in = text; *in != '\0';) {
        const Unit unit(in);
        in += unit.length;
        if (unit.length == 1) {
            *out++ = std::strstr(",/_", unit.bytes) != nullptr ? '\t' : Lower(unit.bytes[0]);
        } else if (Holds(kOpening.c_str(), unit.bytes)) {
            *out++ = '(';
        } else if (Holds(kClosing.c_str(), unit.bytes)) {
            *out++ = ')';
        } else if (Holds(kQuotes.c_str(), unit.bytes)) {
            *out++ = '"';
        } else if (Holds(kSeparators.c_str(), unit.bytes)) {
            *out++ = '\t';
        } else if (const char half = HalfWidth(unit); half != '\0') {
            *out++ = Lower(half);
        } else {
            *out++ = unit.bytes[0];
            *out++ = unit.bytes[1];
        }
    }
    *out = '\0';
}

void PlainQuanJiao2BanJiao(char* text) {
    static constexpr auto kFull = Utf8(
        "、。—～‘’“”〔〕〈〉〖〗（）＊＋，－．／：；＜＝＞？［］＿｀｛｜｝˙–―﹐﹑﹒﹔"
        "﹕﹖﹗﹙﹚﹛﹜﹝﹞﹟﹠﹡﹢﹣﹤﹥﹦﹨﹩﹪﹫");
    static const char kHalf[] = ",.-~''\"\"()<>[]()*+,-./:;<=>?[]_'{|}.--,,.;:?!(){}()#&*+-<>=\\$%@";
    char* out = text;
    for (const char* in = text; *in != '\0';) {
        const Unit unit(in);
        in += unit.length;
        const char* const found = std::strstr(kFull.c_str(), unit.bytes);
        const std::size_t offset = found == nullptr ? 1 : static_cast<std::size_t>(found - kFull.c_str());
        if (const char half = HalfWidth(unit); half != '\0') {
            *out++ = half;
        } else if (offset % 2 == 0 && offset / 2 < sizeof kHalf - 1) {
            *out++ = kHalf[offset / 2];
        } else {
            for (std::size_t i = 0; i < unit.length; ++i) *out++ = unit.bytes[i];
        }
    }
    *out = '\0';
}

bool IsAlphanumeric(const char* unit) {
    return *unit != '\0' &&
           std::strstr("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", unit) != nullptr;
}

void PlainWordStandard(char* text) {
    char* out = text;
    for (const char* in = text; *in != '\0';) {
        const Unit unit(in);
        in += unit.length;
        if (const char half = HalfWidth(unit); half != '\0') {
            *out++ = Lower(half);
        } else if (IsAlphanumeric(unit.bytes) || std::strstr("+-{};\r\n", unit.bytes) != nullptr) {
            *out++ = Lower(unit.bytes[0]);
        } else if (unit.length == 2 && unit.bytes[0] == '\xA3' && unit.trail() >= 0xBB) {
            *out++ = ';';
        } else if (unit.length == 2) {
            *out++ = unit.bytes[0];
            *out++ = unit.bytes[1];
        } else {
            const char next[] = {in[0], '\0'};
            if (unit.bytes[0] == ' ' && IsAlphanumeric(next)) *out++ = ' ';
        }
    }
    *out = '\0';
}

template <typename Rewrite>
auto Rewriting(const std::string& text, Rewrite rewrite) {
    return [&text, rewrite] {
        return [&text, rewrite, copy = std::vector<char>(text.size() + 1)]() mutable {
            std::memcpy(copy.data(), text.c_str(), text.size() + 1);
            rewrite(copy.data());
            return static_cast<const char*>(copy.data());
        };
    };
}

template <typename Ours>
void AddRewriting(const char* operation, Kind kind, std::size_t size, Ours ours, void (*plain)(char*)) {
    const std::string& text = Text(kind, "GBK", size);
    Contest(operation, kind, size, text.size(), [&text, plain] { return std::string(Rewriting(text, plain)()()); })
        .Add("ours", Rewriting(text, ours))
        .Add("strstr", Rewriting(text, plain));
}

std::size_t PlainCount(const char* list, const char* text) {
    std::size_t count = 0;
    while (*text != '\0') {
        const Unit unit(text);
        text += unit.length;
        count += unit.length == 1 ? std::strstr(list, unit.bytes) != nullptr : Holds(list, unit.bytes);
    }
    return count;
}

void AddCounting(const char* name, const char* list, Kind kind, std::size_t size) {
    const std::string& text = Text(kind, "GBK", size);
    const auto text_of = [](std::size_t count) { return std::to_string(count); };
    Contest(std::string("GetCharCount-") + name, kind, size, text.size(),
            [=, &text] { return text_of(PlainCount(list, text.c_str())); })
        .Add(
            "ours", [=, &text] { return [=, &text] { return GetCharCount(list, text.c_str(), 0); }; }, text_of)
        .Add(
            "strstr", [=, &text] { return [=, &text] { return PlainCount(list, text.c_str()); }; }, text_of);
}

// Whether each character of the text starts with a byte of the list, or is that byte.
bool PlainIsAll(const char* leads, const char* text) {
    while (*text != '\0') {
        const Unit unit(text);
        const char lead[] = {unit.bytes[0], '\0'};
        if (std::strstr(leads, lead) == nullptr) return false;
        text += unit.length;
    }
    return true;
}

std::string Bytes(unsigned first, unsigned last) {
    std::string bytes;
    for (; first <= last; ++first) bytes += static_cast<char>(first);
    return bytes;
}

// A text of which all characters are of the class, repeated to the size.
void AddClass(const char* operation, bool (*ours)(unsigned char*), const std::string& leads, const std::string& piece,
              std::size_t size) {
    std::string text;
    while (text.size() + piece.size() <= size) text += piece;
    const auto text_of = [](bool is) { return std::string(is ? "yes" : "no"); };
    Contest(operation, "of-its-class", NameOfSize(size), text.size(), [] { return std::string("yes"); })
        .Add(
            "ours",
            [=] { return [=, copy = text]() mutable { return ours(reinterpret_cast<unsigned char*>(copy.data())); }; },
            text_of)
        .Add(
            "strstr", [=] { return [=] { return PlainIsAll(leads.c_str(), text.c_str()); }; }, text_of);
}

void AddClasses(std::size_t size) {
    const auto chinese = [](const char* utf8) { return Convert("GBK", "UTF-8", utf8); };
    AddClass("IsAllChinese", IsAllChinese, Bytes(0xB0, 0xF7), chinese("图书馆的读者"), size);
    AddClass("IsAllNonChinese", IsAllNonChinese, Bytes(1, 0xAF) + Bytes(0xF8, 0xFF), chinese(", yes，"), size);
    AddClass(
        "IsAllSingleByte", [](unsigned char* text) { return IsAllSingleByte(text, 0); }, Bytes(1, 0x7F), "reader ",
        size);
    AddClass("IsAllIndex", IsAllIndex, "\xA2", "\xA2\xB1\xA2\xC5", size);
    AddClass("IsAllLetter", IsAllLetter, "\xA3", chinese("ＡｚＢ"), size);
    AddClass("IsAllDelimiter", IsAllDelimiter, "\xA1\xA3", chinese("，。！“”"), size);
}

}  // namespace

void bench::SetUpContests() {
    using namespace utility::internal;
    for (const std::size_t size : kSizes) {
        for (const Kind kind : {Kind::kChinese, Kind::kEnglish, Kind::kMixed, Kind::kDamaged}) {
            AddRewriting(
                "str_normalization", kind, size, [](char* text) { str_normalization(text, std::strlen(text), false); },
                PlainNormalization);
            AddRewriting(
                "QuanJiao2BanJiao", kind, size, [](char* text) { QuanJiao2BanJiao(text); }, PlainQuanJiao2BanJiao);
            if (kind != Kind::kDamaged)
                AddRewriting(
                    "WordStandard", kind, size, [](char* text) { WordStandard(text); }, PlainWordStandard);
        }
        for (const Kind kind : {Kind::kChinese, Kind::kMixed}) {
            AddCounting("western", kWesternNameCharacters.c_str(), kind, size);
            AddCounting("digits", "0123456789", kind, size);
        }
        AddClasses(size);
    }
}
