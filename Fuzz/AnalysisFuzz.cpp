// Character classes, stepping, counting, sentences, numbers and names, on any NUL-terminated text.

#include "FuzzSupport.h"

namespace {

// Each form of stepping walks over the whole text and loses nothing; the counts are those of the steps.
void CheckStepping(const std::string& text) {
    fuzz::Exact copy(text);
    std::size_t characters = 0, pairs = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        fuzz::Exact unit(3);
        int code = 0;
        const std::size_t step = Getchar(copy.get() + pos, unit.get());
        FUZZ_CHECK(step >= 1 && step <= 2 && unit.Text() == text.substr(pos, step));
        FUZZ_CHECK(Getchar(copy.get() + pos, &code) == step);
        unsigned long next = pos;
        const int folded = GetCharCode(copy.get(), next, text.size());
        FUZZ_CHECK(next == pos + step && (step == 1 || folded == code));
        pos += step;
        ++characters;
        pairs += step == 2;
    }
    unsigned long singles = 0, multis = 0;
    CharStat(copy.get(), singles, multis, false);
    FUZZ_CHECK(multis == pairs && singles <= characters - pairs);
    for (std::size_t pos = 0; pos < text.size();) {
        fuzz::Exact unit(7);
        const std::size_t step = GetUTF8Char(copy.get() + pos, unit.get());
        FUZZ_CHECK(step >= 1 && step <= 6 && unit.Text() == text.substr(pos, step));
        pos += step;
    }
    FUZZ_CHECK(CharStat(copy.get(), singles, multis, true) >= 0 && singles + multis <= text.size());
    const char* line = copy.get();
    for (fuzz::Exact buffer(text.size() + 1); line != nullptr;) {
        line = sgets(line, buffer.get());
        FUZZ_CHECK(buffer.Text().find_first_of("\r\n") == std::string::npos);
    }
}

void CheckLists(const std::string& text, const std::string& list) {
    fuzz::Exact copy(text), list_copy(list);
    std::size_t in_list = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        fuzz::Exact unit(3);
        pos += Getchar(copy.get() + pos, unit.get());
        const std::size_t found = list.find(unit.Text());
        const char* const place = CC_Find(list_copy.get(), unit.get());
        FUZZ_CHECK(place == (found == std::string::npos || found % 2 != 0 ? nullptr : list_copy.get() + found));
        const bool is_ascii = static_cast<signed char>(unit.get()[0]) >= 0;
        in_list += is_ascii ? found != std::string::npos : place != nullptr;
    }
    FUZZ_CHECK(GetCharCount(list_copy.get(), copy.get(), 0) == in_list);
    const std::size_t prefix = MaxPrefix(copy.get(), list_copy.get());
    FUZZ_CHECK(text.compare(0, prefix, list, 0, prefix) == 0 && prefix <= std::min(text.size(), list.size()));
}

void CheckClasses(const std::string& text) {
    fuzz::Exact copy(text);
    unsigned char* const bytes = copy.bytes();
    FUZZ_CHECK(GetCCPrefix(bytes) <= text.size() + 1);
    FUZZ_CHECK(!IsAllChinese(bytes) || (text.size() % 2 == 0 && (text.empty() || !IsAllNonChinese(bytes))));
    const bool is_ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    FUZZ_CHECK(IsAllSingleByte(bytes, 0) == is_ascii && IsAllSingleByte(bytes, text.size()) == is_ascii);
    FUZZ_CHECK(!IsAllLetter(bytes) || IsAllDelimiter(bytes));
    IsAllIndex(bytes), IsDelimiter(copy.get()), IsEnglishText(copy.get());
    for (const std::size_t length : {std::size_t{0}, text.size() / 2, text.size()}) {
        const int signed_length = static_cast<int>(length);
        IsAllNum(copy.get(), length), IsAllChineseNum(copy.get(), length), IsYearTime(copy.get(), signed_length);
        IsDayTime(copy.get(), static_cast<unsigned>(length));
    }
    FUZZ_CHECK(IsAllForeign(copy.get()) <= IsForeign(copy.get()));
    FUZZ_CHECK(GetForeignCharCount(copy.get()) <= text.size() && GetForeignType(copy.get()) <= 2);
}

void CheckSentences(const std::string& text, std::size_t budget) {
    fuzz::Exact copy(text);
    for (unsigned long pos = 0; pos < text.size();) {
        const unsigned long end = FindSentenceEnd(copy.get(), pos, budget);
        FUZZ_CHECK(end > pos && end <= text.size());
        FUZZ_CHECK(FindSentenceStart(copy.get(), end, budget) <= end);
        pos = end;
    }
    IsValidTitle(copy.get()), IsValidSentence(copy.get());
    fuzz::Exact stem(text.size() + 1), suffix(9);
    FUZZ_CHECK(PostfixSplit(copy.get(), stem.get(), suffix.get()) && stem.Text() + suffix.Text() == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t budget = input.Number(1000) + 1;
    const std::string list = input.Text(), text = input.Text();
    CheckStepping(text);
    CheckLists(text, list);
    CheckClasses(text);
    CheckSentences(text, budget);
    for (const char mark : text) {
        fuzz::Exact form(4);
        FUZZ_CHECK(Delimiter2DictFormat(mark, form.get()) == (form.Text().size() == 3));
    }
    return 0;
}
