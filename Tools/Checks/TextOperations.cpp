#include "Checks/TextOperations.h"

#include <MemoryExt.h>
#include <STLCodeTrans.h>
#include <TextKit.h>
#include <Utility.h>
#include <global_linux.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string_view>

namespace checks {

namespace {

void Add(std::string& answer, std::string_view part) {
    answer.append(part).append(1, '|');
}
void Add(std::string& answer, const std::wstring& part) {
    Add(answer, std::string_view(reinterpret_cast<const char*>(part.data()), part.size() * sizeof(wchar_t)));
}
void Add(std::string& answer, const std::vector<std::string>& parts) {
    for (const std::string& part : parts) Add(answer, part);
}
template <typename Number, typename = std::enable_if_t<std::is_arithmetic_v<Number>>>
void Add(std::string& answer, Number number) {
    Add(answer, std::to_string(number));
}

template <typename... Parts>
std::string Answer(const Parts&... parts) {
    std::string answer;
    (Add(answer, parts), ...);
    return answer;
}

// A copy to be rewritten in place.
class Copy {
public:
    explicit Copy(const Text& text) : bytes_(text.chars, text.size) {}
    char* chars() { return bytes_.data(); }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(bytes_.data()); }
    std::string Done() const { return bytes_.c_str(); }

private:
    std::string bytes_;
};

char* Chars(const Text& text) {
    return const_cast<char*>(text.chars);  // for functions that only read and whose parameter still is not const
}
unsigned char* Bytes(const Text& text) {
    return reinterpret_cast<unsigned char*>(Chars(text));
}
std::string_view View(const Text& text) {
    return {text.chars, text.size};
}
// A piece of the text without NUL, as pattern or list for a search in it.
std::string Piece(const Text& text, std::size_t begin, std::size_t end) {
    return std::string(View(text).substr(std::min(begin, text.size), end - begin)).c_str();
}
const char* EmptyIfNull(const char* text) {
    return text != nullptr ? text : "";
}

template <typename Step>
std::string Walk(const Text& text, Step step) {
    std::size_t pos = 0, steps = 0;
    const std::size_t length = std::strlen(text.chars);
    for (std::size_t width = 1; pos < length && width != 0; ++steps) pos += width = step(text.chars + pos);
    return Answer(pos, steps);
}

std::string Convert(unsigned long (*convert)(int, const char*, unsigned long, char*, unsigned long&),
                    const Text& text) {
    const std::string padded(text.chars, text.size);
    std::vector<char> input(4 * text.size + 4), output(4 * text.size + 4);
    std::copy(padded.begin(), padded.end(), input.begin());
    std::string answer;
    for (const int encoding : {0, 1, 2, 3, 8}) {
        unsigned long length = 2 * text.size;
        const unsigned long units = encoding == 8 ? text.size / 4 : text.size;
        const unsigned long result = convert(encoding, input.data(), units, output.data(), length);
        Add(answer, result);
        Add(answer, std::string_view(output.data(), std::min<std::size_t>(result, output.size())));
    }
    return answer;
}

std::string TokenWalk(const Text& text, bool keep) {
    std::string answer, copy(text.chars);
    CStrToken reader(keep);
    const char* const delimiters = " ,.";
    for (const char* token = reader.GetToken(copy.data(), nullptr, delimiters); token != nullptr;
         token = reader.GetToken(nullptr, nullptr, delimiters)) {
        Add(answer, token);
    }
    return answer;
}

std::string LineWalk(const Text& text, bool allow_quoted) {
    std::string answer, copy(text.chars);
    char *next = copy.data(), saved = '\0';
    while (next != nullptr) {
        const char* const line = StrLine(next, &next, &saved, nullptr, allow_quoted);
        if (line == nullptr) break;
        Add(answer, line);
        if (next != nullptr) *next = saved;
    }
    return answer;
}

std::vector<std::string> Lines(const Text& text) {
    std::vector<std::string> lines;
    for (std::size_t pos = 0; pos < text.size; pos += 16) lines.push_back(Piece(text, pos, pos + 16));
    return lines;
}

std::vector<int> Integers(const Text& text) {
    std::vector<int> numbers;
    for (std::size_t pos = 0; pos < text.size; ++pos) numbers.push_back(static_cast<unsigned char>(text.chars[pos]));
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::string Dictionary(const Text& text) {
    std::vector<std::string> lines = Lines(text);
    std::sort(lines.begin(), lines.end());
    std::vector<const char*> table;
    table.reserve(lines.size());
    for (const std::string& line : lines) table.push_back(line.c_str());
    long index = 0;
    const long length = MaxMatching(text.chars, table.data(), table.size(), &index);
    return Answer(length, BinarySearch(text.chars, lines), BinarySearch(text.chars, table.data(), 0));
}

// Written to a stream in memory and read again.
std::string Pools(const Text& text) {
    CStaticStr strings, strings_again;
    for (const std::string& line : Lines(text)) strings.AddString(line.c_str());
    CIntArray integers, integers_again;
    _tIntArray range{};
    integers.GenerateIntList(Integers(text), range);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::tmpfile(), std::fclose);
    if (stream == nullptr) throw std::bad_alloc();
    strings.Write(stream.get());
    integers.Write(stream.get());
    tstring_save(std::string(View(text)), stream.get());
    std::rewind(stream.get());
    strings_again.Read(stream.get());
    integers_again.Read(stream.get());
    std::string loaded;
    tstring_load(loaded, stream.get());
    std::vector<int> values;
    integers_again.GetVector(range, values);
    return Answer(std::string_view(strings_again.m_pBuf, strings_again.m_nSize), values.size(), loaded);
}

std::string Emails(const Text& text) {
    std::vector<_email> emails;
    ExtractEmail(text.chars, emails);
    std::string answer;
    for (const _email& email : emails) answer += Answer(email.user, email.domain, email.prefix, email.name, email.type);
    return answer;
}

std::string Decoded(const Text& text, textkit::Encoding encoding) {
    const textkit::Decoded decoded = textkit::Decode(View(text), encoding);
    return Answer(decoded.text, decoded.replaced, textkit::Encode(decoded.text, encoding).bytes);
}

std::string Views(const textkit::Pieces& pieces) {
    std::string answer;
    for (const std::string_view piece : pieces) Add(answer, piece);
    return answer;
}

std::string Characters(const Text& text) {
    std::size_t sum = 0;
    for (const textkit::Character& character : textkit::Characters(View(text)))
        sum += character.code_point + static_cast<std::size_t>(textkit::ClassOf(character.code_point));
    return Answer(sum, textkit::CountClasses(View(text)).total());
}

std::string Numbers(const Text& text) {
    std::string answer = Answer(textkit::ParseNumber(View(text)).has_value());
    for (const textkit::NumberMatch& number : textkit::Numbers(View(text))) Add(answer, number.text);
    return answer;
}

std::string KitEmails(const Text& text) {
    std::string answer;
    for (const textkit::EmailAddress& email : textkit::EmailAddresses(View(text)))
        answer += Answer(email.address, email.name);
    return answer;
}

std::string KitDictionary(const Text& text) {
    std::vector<std::string_view> words;
    for (std::size_t pos = 0; pos < text.size; pos += 16) words.push_back(View(text).substr(pos, 16));
    return Answer(textkit::Dictionary(words).Longest(View(text)).length);
}

}  // namespace

// A row an operation, however many there are.
// clang-format off
const std::vector<TextOperation>& TextOperations() {
    static const std::vector<TextOperation> operations = {
        // CodeTrans
        {"ANSIToUTF8", [](const Text& t) { std::string s; return Answer(ANSIToUTF8(t.chars, s), s); }},
        {"ANSIToUnicode", [](const Text& t) { std::wstring s; return Answer(ANSIToUnicode(t.chars, s), s); }},
        {"UTF8ToANSI", [](const Text& t) { std::string s; return Answer(UTF8ToANSI(t.chars, s), s); }},
        {"utf8_to_unicode, unicode_to_utf8", [](const Text& t) {
            return Answer(unicode_to_utf8(utf8_to_unicode(t.chars))); }},
        {"UtfStr2Unicode", [](const Text& t) { return Answer(UtfStr2Unicode(t.chars)); }},
        {"utf8tou", [](const Text& t) { std::string s(2 * t.size + 1, '\0'); return Answer(utf8tou(Chars(t), s.data()),
            s); }},
        {"utf8toGbk", [](const Text& t) { std::string s(t.size + 2, '\0'); utf8toGbk(Chars(t), s.data()); return s; }},
        {"utoGbk", [](const Text& t) { std::string s(t.size + 2, '\0'); utoGbk(t.chars, s.data(), t.size / 2);
            return s; }},
        {"UTF8Char_ToUnicode", [](const Text& t) { return Walk(t, [](const char* s) { wchar_t c;
            return UTF8Char_ToUnicode(s, 1, c); }); }},
        {"CodeTrans_CodeDetect", [](const Text& t) { return Answer(CodeTrans_CodeDetect(t.chars, t.size)); }},
        {"GBKBig5_ToUnicode", [](const Text& t) { return Convert(GBKBig5_ToUnicode, t); }},
        {"CodeTrans_ToUnicode", [](const Text& t) { return Convert(CodeTrans_ToUnicode, t); }},
        {"CodeTrans_ToUtf8", [](const Text& t) { return Convert(CodeTrans_ToUtf8, t); }},
        {"CodeTrans_ToAnsi", [](const Text& t) { return Convert(CodeTrans_ToAnsi, t); }},
        {"vHtmlToText", [](const Text& t) { std::string s(t.size + 6, '\0'); unsigned long n = 0;
            vHtmlToText(t.chars, t.size, s.data(), n); return Answer(n, s.c_str()); }},
        {"iURIDecode", [](const Text& t) { std::string s(t.size, '\0'); int n = 0;
            iURIDecode(Chars(t), static_cast<int>(t.size), s.data(), n); return Answer(n, s); }},
        {"str_normalization", [](const Text& t) { Copy c(t); return Answer(str_normalization(c.chars(), t.size, false),
            c.Done()); }},
        // TextKit
        {"textkit::Detect", [](const Text& t) { return Answer(textkit::Detect(View(t)).confidence); }},
        {"textkit::Decode, Encode: UTF-8", [](const Text& t) { return Decoded(t, textkit::Encoding::kUtf8); }},
        {"textkit::Decode, Encode: GBK", [](const Text& t) { return Decoded(t, textkit::Encoding::kGbk); }},
        {"textkit::Decode, Encode: Big5", [](const Text& t) { return Decoded(t, textkit::Encoding::kBig5); }},
        {"textkit::Decode, Encode: UTF-16", [](const Text& t) { return Decoded(t, textkit::Encoding::kUtf16Le); }},
        {"textkit::IsValidUtf8", [](const Text& t) { return Answer(textkit::IsValidUtf8(View(t))); }},
        {"textkit::PageText", [](const Text& t) { return textkit::PageText(View(t)); }},
        {"textkit::DecodeReferences", [](const Text& t) { return textkit::DecodeReferences(View(t)); }},
        {"textkit::DetectPage", [](const Text& t) { return Answer(textkit::DetectPage(View(t)).confidence); }},
        {"textkit::Characters, CountClasses", Characters},
        {"textkit::Sentences", [](const Text& t) { std::string s;
            for (const std::string_view v : textkit::Sentences(View(t))) Add(s, v);
            return s; }},
        {"textkit::Fold", [](const Text& t) { return textkit::Fold(View(t), {true, true, true, true, true, true}); }},
        {"textkit::ParseNumber, Numbers", Numbers},
        {"textkit::names", [](const Text& t) {
            return Answer(textkit::MatchForeignName(View(t)).share, textkit::SplitPlaceName(View(t)).stem); }},
        {"textkit::Split", [](const Text& t) { return Views(textkit::Split(View(t), "ab")); }},
        {"textkit::SplitAny", [](const Text& t) { return Views(textkit::SplitAny(View(t), "，,。.\n")); }},
        {"textkit::Tokens", [](const Text& t) { return Views(textkit::Tokens(View(t))); }},
        {"textkit::Trim, Replace", [](const Text& t) {
            return Answer(textkit::Trim(View(t)), textkit::Replace(View(t), "ab", "cde")); }},
        {"textkit::XmlItem, XmlAttribute", [](const Text& t) {
            return Answer(textkit::XmlItem(View(t), "a").value_or(""), textkit::XmlAttribute(View(t), "a",
                "b").value_or("")); }},
        {"textkit::JsonItem", [](const Text& t) { return textkit::JsonItem(View(t), "a").value_or(""); }},
        {"textkit::EmailAddresses", KitEmails},
        {"textkit::DecodeWords", [](const Text& t) { return textkit::DecodeWords(View(t)); }},
        {"textkit::Dictionary", KitDictionary},
        {"textkit::ParseDate, ParseTime", [](const Text& t) {
            return Answer(textkit::ParseDate(View(t)).has_value(), textkit::ParseTime(View(t)).has_value(),
                textkit::TimeZone::FromData(View(t)).has_value()); }},
        // Chinese text
        {"CC_Find", [](const Text& t) { return Answer(CC_Find(t.chars, "\xA1\xA1") != nullptr); }},
        {"GetCharCount", [](const Text& t) { return Answer(GetCharCount(Piece(t, 0, t.size / 2).c_str(), t.chars, 0));
            }},
        {"character classes", [](const Text& t) { return Answer(GetCCPrefix(Bytes(t)), IsAllChinese(Bytes(t)),
            IsAllNonChinese(Bytes(t)), IsAllSingleByte(Bytes(t), t.size), IsAllIndex(Bytes(t)), IsAllLetter(Bytes(t)),
            IsAllDelimiter(Bytes(t)), IsDelimiter(t.chars), IsEnglishText(t.chars)); }},
        {"number and date expressions", [](const Text& t) { return Answer(IsAllNum(t.chars, 0),
            IsAllChineseNum(Chars(t), 0),
            IsYearTime(t.chars, 0), IsDayTime(t.chars, 0)); }},
        {"foreign names", [](const Text& t) { return Answer(GetForeignCharCount(Chars(t)), IsForeign(Chars(t)),
            IsAllForeign(Chars(t)), GetForeignType(t.chars)); }},
        {"Getchar", [](const Text& t) { return Walk(t, [](const char* s) { char c[3]; return Getchar(s, c); }); }},
        {"GetUTF8Char", [](const Text& t) { return Walk(t, [](const char* s) { char c[7]; return GetUTF8Char(s, c); });
            }},
        {"CharStat", [](const Text& t) { unsigned long a = 0, b = 0; return Answer(CharStat(t.chars, a, b, true), a,
            b); }},
        {"GetCharCode", [](const Text& t) { unsigned long pos = 0, sum = 0;
            while (pos < t.size) sum += static_cast<unsigned long>(GetCharCode(t.chars, pos, t.size));
            return Answer(sum); }},
        {"sgets", [](const Text& t) { std::string all, line(t.size + 1, '\0');
            for (const char* s = t.chars; s != nullptr;) { s = sgets(s, line.data()); Add(all, line.c_str()); }
            return all; }},
        {"FindSentenceEnd", [](const Text& t) { return Walk(t, [start = t.chars](const char* s) {
            const auto pos = static_cast<unsigned long>(s - start); return FindSentenceEnd(start, pos, 1000) - pos; });
                }},
        {"FindSentenceStart", [](const Text& t) { std::string ends;
            for (unsigned long pos = std::strlen(t.chars); pos != 0; pos = std::min(pos - 1, FindSentenceStart(t.chars,
                pos, 50))) Add(ends, pos);
            return ends; }},
        {"IsValidTitle, IsValidSentence", [](const Text& t) { return Answer(IsValidTitle(t.chars),
            IsValidSentence(t.chars)); }},
        {"PostfixSplit", [](const Text& t) { std::string a(t.size + 1, '\0'), b(9, '\0'); PostfixSplit(t.chars,
            a.data(), b.data());
            return Answer(a.c_str(), b.c_str()); }},
        {"QuanJiao2BanJiao", [](const Text& t) { Copy c(t); return Answer(QuanJiao2BanJiao(c.chars()), c.Done()); }},
        {"StrNormalize", [](const Text& t) { Copy c(t); return Answer(StrNormalize(c.chars())); }},
        {"TextStandard", [](const Text& t) { std::string s; TextStandard(t.chars, s); return Answer(s,
            strlen_nospace(t.chars)); }},
        {"WordStandard", [](const Text& t) { Copy c(t); return Answer(WordStandard(c.chars())); }},
        // String toolkit
        {"Str2CharVector, Vector2Str", [](const Text& t) { std::vector<std::string> v; std::string s;
            return Answer(Str2CharVector(t.chars, v, true), Vector2Str(v, ",", s)); }},
        {"hashes", [](const Text& t) { return Answer(UrlHash(t.chars), ELFhash(t.chars), Tianlhash(t.chars),
            HfIp(t.chars),
            _hf(t.chars), Strhash(t.chars)); }},
        {"StrLocate", [](const Text& t) { unsigned long a = 0, b = 0; int at = 0;
            return Answer(StrLocate(t.chars, (Piece(t, 0, t.size / 2) + "~").c_str(), a, b, at), a, b); }},
        {"StrMatch", [](const Text& t) { unsigned long a = 0;
            return Answer(StrMatch((Piece(t, 0, t.size / 2) + "~").c_str(), t.chars, a, -1), a); }},
        {"prefixMatch", [](const Text& t) { std::string s; return Answer(prefixMatch(t.chars, Piece(t, 0,
            t.size).c_str(), s), s); }},
        {"SortByNumber", [](const Text& t) { std::vector<std::string> v = Lines(t); SortByNumber(v, "ab");
            return Answer(v); }},
        {"MaxMatching, BinarySearch", Dictionary},
        {"gfn_vReplaceSubstr", [](const Text& t) { std::string s(View(t)); return Answer(gfn_vReplaceSubstr(s, "ab",
            "cde"), s); }},
        {"ComputeSim", [](const Text& t) { return Answer(ComputeSim(Piece(t, t.size / 2, t.size).c_str(), Piece(t, 0,
            t.size / 2).c_str())); },
            Growth::kQuadratic},
        {"gfn_bSplit", [](const Text& t) { std::vector<std::string> v; return Answer(gfn_bSplit(t.chars, v, "ab"), v);
            }},
        {"gfn_bSplitOR", [](const Text& t) { std::vector<std::string> v; return Answer(gfn_bSplitOR(t.chars, v,
            ",. \n"), v); }},
        {"GetStrVector", [](const Text& t) { std::vector<std::string> v; return Answer(GetStrVector(t.chars, ",\n", v),
            v); }},
        {"CStrToken", [](const Text& t) { return TokenWalk(t, false) + TokenWalk(t, true); }},
        {"StrToken", [](const Text& t) { std::string all; Copy c(t); char* next = nullptr;
            for (char* s = StrToken(c.chars(), ",.", &next); s != nullptr; s = StrToken(next, ",.", &next)) Add(all, s);
            return all; }},
        {"StrLine", [](const Text& t) { return LineWalk(t, false) + LineWalk(t, true); }},
        {"trim, gfn_bTrimWord", [](const Text& t) { std::string a(View(t)), b = a; trim(a, 'a');
            return Answer(gfn_bTrimWord(b), a, b); }},
        {"gfn_bGetWordPos", [](const Text& t) { std::string a, b; const std::string s(View(t));
            return Answer(gfn_bGetWordPos(s, a, b, Piece(t, t.size / 4, t.size / 2) + "~"), a, b); }},
        {"IsInRange", [](const Text& t) { const std::string s(View(t)), open = Piece(t, 0, t.size / 4);
            return Answer(IsInRange(s, open + "~", open, static_cast<unsigned>(t.size / 2)), IsInRange(s, "(", ")",
                static_cast<unsigned>(t.size / 2))); }},
        // Bytes, extraction, dates, paths, pools
        {"deleteChar, countChar, toLower", [](const Text& t) { Copy c(t); const auto n = static_cast<unsigned>(t.size);
            toLower(c.chars(), n); return Answer(countChar(t.chars, n, 'a'), deleteChar(c.chars(), n, 'a'), c.Done());
                }},
        {"replaceChar", [](const Text& t) { return Answer(replaceChar(std::string(View(t)), 'a', "bcd")); }},
        {"strlwr, strupr, strrev", [](const Text& t) { Copy c(t); return Answer(strlwr(c.chars()), strupr(c.chars()),
            strrev(c.chars())); }},
        {"ExtractEmail", Emails},
        {"GetXMLPropertyValue", [](const Text& t) { std::string s;
            return Answer(EmptyIfNull(GetXMLPropertyValue(t.chars, "a", s, nullptr)), s); }},
        {"GetXMLItemValue", [](const Text& t) { std::string s; return Answer(EmptyIfNull(GetXMLItemValue(t.chars, "a",
            s)), s,
            GetXMLItemInt(t.chars, Piece(t, 0, t.size / 2).c_str())); }},
        {"GetJsonItemValue", [](const Text& t) { std::string s; return Answer(EmptyIfNull(GetJsonItemValue(t.chars,
            "a", s)), s,
            GetJsonItemInt(t.chars, Piece(t, 0, t.size / 2).c_str())); }},
        {"str2time, cstr2time", [](const Text& t) { return Answer(cstr2time(t.chars), str2time(t.chars)); }},
        {"str2filter_data", [](const Text& t) { double cell = 0; return Answer(*str2filter_data(t.chars, &cell, 7)); }},
        {"path names", [](const Text& t) { std::string a, b, c; GetPathFile(t.chars, a, b, c); return Answer(a, b, c,
            getFilePath(t.chars), IsExtIncluded(t.chars, {"txt"})); }},
        {"pools", Pools},
        {"sets", [](const Text& t) { std::vector<int> v = Integers(t), common;
            return Answer(Intersection(v, v, 1, common), LocateIndex(300, v), Not(v, common), v.size()); }},
    };
    return operations;
}
// clang-format on

}  // namespace checks
