// Tokenisers, splits, joins and replacements: the pieces and what separates them make up the text again.

#include "FuzzSupport.h"

namespace {

void CheckSplits(const std::string& text, const std::string& delimiters) {
    std::vector<std::string> pieces;
    std::string without = text, joined;
    const std::size_t count = gfn_vReplaceSubstr(without, delimiters.c_str(), "");
    FUZZ_CHECK(without.size() + count * delimiters.size() == text.size());
    gfn_bSplit(text.c_str(), pieces, delimiters.c_str());
    FUZZ_CHECK(fuzz::Joined(pieces) == without);
    for (const std::string& piece : pieces) {
        FUZZ_CHECK(!piece.empty() && (delimiters.empty() || piece.find(delimiters) == std::string::npos));
    }
    if (count == 0) FUZZ_CHECK(pieces.size() == !text.empty());
    FUZZ_CHECK(std::strlen(Vector2Str(pieces, delimiters.c_str(), joined)) <= text.size());

    gfn_bSplitOR(text.c_str(), pieces, delimiters.c_str());
    FUZZ_CHECK(fuzz::Joined(pieces) == fuzz::Without(text.substr(0, 10000), delimiters));
    for (const std::string& piece : pieces) FUZZ_CHECK(!piece.empty());

    for (const bool utf8 : {false, true}) {
        FUZZ_CHECK(Str2CharVector(text.c_str(), pieces, utf8) == pieces.size());
        FUZZ_CHECK(Vector2Str(pieces, "", joined) == text);
    }
}

// Blanks and delimiters in front, tokens, and what is recorded between them: together the text.
void CheckTokenReader(const std::string& text, const std::string& delimiters, bool keep) {
    fuzz::Exact copy(text);
    CStrToken reader(keep);
    std::size_t tokens = 0, pos = 0;
    for (char* token = reader.GetToken(copy.get(), nullptr, delimiters.c_str()); token != nullptr;
         token = reader.GetToken(nullptr, nullptr, delimiters.c_str()), ++tokens) {
        const std::string separators(reader.m_vSeparators.begin(), reader.m_vSeparators.end());
        const auto start = static_cast<std::size_t>(token - copy.get());
        FUZZ_CHECK(*token != '\0' && (tokens == 0 ? start >= pos : start == pos));
        FUZZ_CHECK(text.compare(start, std::strlen(token), token) == 0);
        pos = start + std::strlen(token);
        if (pos < text.size()) FUZZ_CHECK(text.compare(pos, separators.size(), separators) == 0);
        pos += separators.size();
    }
    FUZZ_CHECK(copy.Text() == text && (tokens == 0 || pos >= text.size()));
    std::vector<std::string> list;
    FUZZ_CHECK(GetStrVector(text.c_str(), delimiters.c_str(), list) == list.size() && (keep || list.size() <= tokens));
}

void CheckStrToken(const std::string& text, const std::string& delimiters) {
    fuzz::Exact copy(text);
    std::string tokens;
    char* next = nullptr;
    for (char* token = StrToken(copy.get(), delimiters.c_str(), &next); token != nullptr;
         token = StrToken(next, delimiters.c_str(), &next)) {
        tokens += token;
    }
    FUZZ_CHECK(tokens == fuzz::Without(text, delimiters));
}

void CheckStrLine(const std::string& text) {
    for (const bool allow_quoted : {false, true}) {
        fuzz::Exact copy(text);
        char *next = copy.get(), saved = '\0';
        int quoted = 0;
        std::size_t bytes = 0;
        while (next != nullptr) {
            const char* const line = StrLine(next, &next, &saved, &quoted, allow_quoted);
            if (line == nullptr) break;
            FUZZ_CHECK(*line != '\0' && line >= copy.get() && line + std::strlen(line) <= copy.get() + text.size());
            FUZZ_CHECK(quoted == 1 || std::strpbrk(line, "\r\n") == nullptr);
            bytes += std::strlen(line);
            if (next != nullptr) *next = saved;
        }
        FUZZ_CHECK(bytes <= text.size() && (allow_quoted || copy.Text() == text));
    }
}

void CheckWords(const std::string& text, const std::string& word, const std::string& close, std::size_t position) {
    std::string before, after;
    gfn_bGetWordPos(text, before, after, word);
    FUZZ_CHECK(text.find(before) != std::string::npos && text.find(after) != std::string::npos);
    FUZZ_CHECK(before.size() + after.size() <= text.size());
    const bool is_inside = IsInRange(text, word, close, static_cast<unsigned>(position));
    if (is_inside) {
        FUZZ_CHECK(text.rfind(word, position) != std::string::npos && text.find(close, position) != std::string::npos);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t position = input.Number(100);
    const std::string delimiters = input.Text(), close = input.Text(), text = input.Text();
    CheckSplits(text, delimiters);
    CheckTokenReader(text, delimiters, false);
    CheckTokenReader(text, delimiters, true);
    CheckStrToken(text, delimiters);
    CheckStrLine(text);
    CheckWords(text, delimiters, close, position);
    CheckWords(text + '\0' + input.Rest(), delimiters, close, position);
    return 0;
}
