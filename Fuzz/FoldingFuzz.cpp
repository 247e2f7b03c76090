// Everything that rewrites a text in place or copies it changed: never longer than promised, and done once is done.

#include <global_linux.h>

#include "FuzzSupport.h"

namespace {

void CheckInPlace(const std::string& text) {
    struct {
        void (*rewrite)(char* text);
        bool is_idempotent;
    } const rows[] = {
        {[](char* s) { QuanJiao2BanJiao(s); }, true}, {[](char* s) { StrNormalize(s); }, true},
        {[](char* s) { WordStandard(s); }, true},     {[](char* s) { strlwr(s); }, true},
        {[](char* s) { strupr(s); }, true},           {[](char* s) { strrev(s); }, false},
    };
    for (const auto& row : rows) {
        fuzz::Exact copy(text);
        row.rewrite(copy.get());
        const std::string once = copy.Text();
        FUZZ_CHECK(once.size() <= text.size());
        row.rewrite(copy.get());
        FUZZ_CHECK(copy.Text() == (row.is_idempotent ? once : text));
    }
}

void CheckFolding(const std::string& bytes, bool keep) {
    for (const int language : {0, 1}) {
        g_nLangType = language;
        fuzz::Exact folded(bytes);
        const unsigned long length = str_normalization(folded.get(), bytes.size(), keep);
        FUZZ_CHECK(length <= bytes.size());
        const std::string once(folded.get(), length);
        FUZZ_CHECK(zipname_normalization(folded.get(), length, keep) == length);
        FUZZ_CHECK(std::string(folded.get(), length) == once);
    }
}

void CheckCopies(const std::string& text, char byte, const std::string& replacement) {
    std::string tidied, trimmed = text, ends = text;
    TextStandard(text.c_str(), tidied);
    FUZZ_CHECK(strlen_nospace(tidied.c_str()) == strlen_nospace(text.c_str()) && tidied.size() <= text.size());
    gfn_bTrimWord(trimmed);
    trim(ends, byte);
    FUZZ_CHECK(text.find(trimmed) != std::string::npos && text.find(ends) != std::string::npos);
    FUZZ_CHECK(ends.empty() || (ends.front() != byte && ends.back() != byte));
    const std::string again = trimmed;
    gfn_bTrimWord(trimmed);
    FUZZ_CHECK(trimmed == again);
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), byte));
    const std::string replaced = replaceChar(text, byte, replacement.c_str());
    FUZZ_CHECK(replaced.size() == text.size() - count + count * replacement.size());
    FUZZ_CHECK(TextIndent(tidied, 3, byte) == 3);
}

void CheckBytes(const std::string& bytes, char byte) {
    const auto length = static_cast<unsigned>(bytes.size());
    fuzz::Exact kept(bytes.size());
    std::copy(bytes.begin(), bytes.end(), kept.get());
    FUZZ_CHECK(countChar(kept.get(), length, static_cast<unsigned char>(byte) & 0x7Fu) <= length);
    const std::string expected = fuzz::Without(bytes, std::string_view(&byte, 1));
    FUZZ_CHECK(deleteChar(kept.get(), length, byte) == expected.size());
    FUZZ_CHECK(std::string(kept.get(), bytes.size()) == expected + std::string(bytes.size() - expected.size(), '\0'));
    std::string lower = bytes, upper = bytes;
    toLower(lower);
    toLower(kept.get(), length);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        FUZZ_CHECK(GetLowerLetter(bytes[i]) == lower[i] && GetLowerLetter(GetUpperLetter(bytes[i])) == lower[i]);
        FUZZ_CHECK(!isLetter(bytes[i]) || !isDigit(bytes[i]));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const auto byte = static_cast<char>(input.Number(255));
    const bool keep = input.Number(1) != 0;
    const std::string replacement = input.Text(), text = input.Text(), bytes = text + '\0' + input.Rest();
    CheckInPlace(text);
    CheckFolding(bytes, keep);
    CheckCopies(text, byte, replacement);
    CheckBytes(bytes, byte);
    for (const int number : fuzz::Input(data, size).Integers()) {
        fuzz::Exact digits(12);
        FUZZ_CHECK(std::strtol(itoa(number, digits.get(), 10), nullptr, 10) == number);
        FUZZ_CHECK(std::strtoul(itoa(number, digits.get(), 8), nullptr, 8) == static_cast<unsigned>(number));
    }
    return 0;
}
