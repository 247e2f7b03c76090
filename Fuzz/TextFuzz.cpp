// Chinese text analysis and the string toolkit on any NUL-terminated text.

#include <Utility.h>

#include <algorithm>

#include "FuzzSupport.h"

namespace {

void CheckAnalysis(const std::string& text, const std::string& other) {
    fuzz::Exact copy(text);
    unsigned char* const bytes = copy.bytes();
    FUZZ_CHECK(GetCCPrefix(bytes) <= text.size() + 1);
    IsAllChinese(bytes), IsAllNonChinese(bytes), IsAllSingleByte(bytes, 0), IsAllIndex(bytes), IsAllLetter(bytes);
    IsAllDelimiter(bytes), IsDelimiter(copy.get()), IsEnglishText(copy.get());
    IsAllNum(copy.get(), 0), IsAllChineseNum(copy.get(), 0), IsYearTime(copy.get(), 0), IsDayTime(copy.get(), 0);
    unsigned long singles = 0, multis = 0;
    CharStat(copy.get(), singles, multis, true);
    FUZZ_CHECK(singles + multis <= text.size());
    for (unsigned long pos = 0; pos < text.size();) {
        const unsigned long end = FindSentenceEnd(copy.get(), pos, 1000);
        FUZZ_CHECK(end > pos && end <= text.size());
        FUZZ_CHECK(FindSentenceStart(copy.get(), end, 1000) <= end);
        pos = end;
    }
    std::vector<std::string> characters;
    std::string joined;
    for (const bool utf8 : {false, true}) {
        Str2CharVector(text.c_str(), characters, utf8);
        FUZZ_CHECK(Vector2Str(characters, "", joined) == text);
    }
    (void)CC_Find(text.c_str(), other.c_str());
}

void CheckRewriting(const std::string& text) {
    for (const auto rewrite : {+[](char* s) { QuanJiao2BanJiao(s); }, +[](char* s) { StrNormalize(s); },
                               +[](char* s) { WordStandard(s); }}) {
        fuzz::Exact copy(text);
        rewrite(copy.get());
        FUZZ_CHECK(std::strlen(copy.get()) <= text.size());
    }
    std::string tidied, trimmed = text;
    TextStandard(text.c_str(), tidied);
    FUZZ_CHECK(tidied.size() <= text.size());
    gfn_bTrimWord(trimmed);
    FUZZ_CHECK(text.find(trimmed) != std::string::npos);
}

void CheckCutting(const std::string& text, const std::string& delimiters) {
    std::vector<std::string> pieces;
    gfn_bSplit(text.c_str(), pieces, delimiters.c_str());
    std::size_t bytes = 0;
    for (const std::string& piece : pieces) bytes += piece.size();
    FUZZ_CHECK(bytes <= text.size());
    gfn_bSplitOR(text.c_str(), pieces, delimiters.c_str());
    for (const std::string& piece : pieces) FUZZ_CHECK(piece.find_first_of(delimiters) == std::string::npos);
    GetStrVector(text.c_str(), delimiters.c_str(), pieces);
    for (const bool keep : {false, true}) {
        fuzz::Exact copy(text);
        CStrToken tokeniser(keep);
        char* token = tokeniser.GetToken(copy.get(), nullptr, delimiters.c_str());
        while (token != nullptr) token = tokeniser.GetToken(nullptr, nullptr, delimiters.c_str());
        FUZZ_CHECK(copy.get() == text);
    }
    fuzz::Exact lines(text);
    char *next = lines.get(), saved = '\0';
    while (next != nullptr && StrLine(next, &next, &saved, nullptr, true) != nullptr) {
        if (next != nullptr) *next = saved;
    }
    std::string replaced = text;
    const std::size_t count = gfn_vReplaceSubstr(replaced, delimiters.c_str(), "");
    FUZZ_CHECK(replaced.size() + count * delimiters.size() == text.size());
}

void CheckSearching(const std::string& text, const std::string& pattern) {
    std::vector<_email> emails;
    ExtractEmail(text.c_str(), emails);
    FUZZ_CHECK(emails.size() <= static_cast<std::size_t>(std::count(text.begin(), text.end(), '@')));
    std::string value;
    GetJsonItemValue(text.c_str(), pattern.c_str(), value);
    GetXMLItemValue(text.c_str(), pattern.c_str(), value);
    FUZZ_CHECK(value.size() <= text.size());
    str2time(text.c_str());
    const double similarity = ComputeSim(text.substr(0, 300).c_str(), pattern.substr(0, 300).c_str());
    FUZZ_CHECK(similarity >= 0 && similarity <= 300);  // above 1 where the first repeats what the second has once
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    g_bLog = false;
    fuzz::Input input(data, size);
    const std::string other = input.Text(), text = input.Text();
    CheckAnalysis(text, other);
    CheckRewriting(text);
    CheckCutting(text, other);
    CheckSearching(text, other);
    return 0;
}
