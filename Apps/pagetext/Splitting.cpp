#include "Splitting.h"

#include <Utility.h>

#include <algorithm>
#include <cstring>

namespace pagetext {

namespace {

// Characters, not bytes: each list is searched for one whole character.
constexpr std::string_view kEnds = "。！？!?";
constexpr std::string_view kClosers = "”’」』）】》〉〕\"')]";
constexpr std::string_view kChinesePunctuation =
    "　、。·—～…‘’“”〔〕〈〉《》「」『』〖〗【】！＂＇（），．：；＜＞？［］｛｝｜";

// The first character; the text is well-formed.
std::string_view Character(std::string_view text) {
    const unsigned char lead = text.empty() ? 0 : static_cast<unsigned char>(text[0]);
    return text.substr(0, lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4);
}

bool IsIn(std::string_view list, std::string_view character) {
    return !character.empty() && list.find(character) != std::string_view::npos;
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

void AppendTrimmed(std::string_view sentence, std::vector<std::string_view>& sentences) {
    while (!sentence.empty() && IsSpace(sentence.front())) sentence.remove_prefix(1);
    while (!sentence.empty() && IsSpace(sentence.back())) sentence.remove_suffix(1);
    if (!sentence.empty()) sentences.push_back(sentence);
}

// Behind the closing quotes and brackets that stand at `pos`.
std::size_t SkipClosers(std::string_view text, std::size_t pos) {
    for (std::string_view next; IsIn(kClosers, next = Character(text.substr(pos)));) pos += next.size();
    return pos;
}

}  // namespace

std::vector<std::string_view> Sentences(std::string_view utf8_text) {
    std::vector<std::string_view> sentences;
    std::size_t start = 0, pos = 0;
    while (pos < utf8_text.size()) {
        const std::string_view character = Character(utf8_text.substr(pos));
        pos += character.size();
        // A run such as "？！" ends once, behind its last mark.
        const bool mark = IsIn(kEnds, character) && !IsIn(kEnds, Character(utf8_text.substr(pos)));
        std::size_t end = pos;
        if (mark || character == ".") end = SkipClosers(utf8_text, pos);
        const bool stop = character == "." && (end == utf8_text.size() || IsSpace(utf8_text[end]));
        if (mark || stop) pos = end;
        if (mark || stop || character == "\n") {
            AppendTrimmed(utf8_text.substr(start, pos - start), sentences);
            start = pos;
        }
    }
    AppendTrimmed(utf8_text.substr(start), sentences);
    return sentences;
}

std::vector<std::string> Tokens(std::string_view utf8_text) {
    // CStrToken cuts at single bytes, so Chinese punctuation becomes line feeds first.
    std::string text;
    text.reserve(utf8_text.size());
    for (std::size_t pos = 0; pos < utf8_text.size();) {
        const std::string_view character = Character(utf8_text.substr(pos));
        pos += character.size();
        const bool cut = character == std::string_view("\0", 1) || IsIn(kChinesePunctuation, character);
        text += cut ? std::string_view("\n") : character;
    }
    constexpr char kDelimiters[] = " \t\r\n.,;:!?()[]{}<>\"'`/\\|@#$%^&*+=~";
    std::vector<std::string> tokens;
    CStrToken tokeniser(true);
    for (char* token = tokeniser.GetToken(text.data(), text.data() + text.size(), kDelimiters); token != nullptr;
         token = tokeniser.GetToken(nullptr, nullptr, kDelimiters)) {
        tokens.emplace_back(token);
    }
    return tokens;
}

std::vector<std::string> EmailAddresses(std::string_view utf8_text) {
    std::string text(utf8_text);
    std::replace(text.begin(), text.end(), '\0', '\n');  // ExtractEmail ends at a NUL
    std::vector<_email> found;
    ExtractEmail(text.c_str(), found);
    std::vector<std::string> addresses;
    for (const _email& email : found) {
        // The full stop of a sentence counts as the domain's; and every at sign makes a record, whatever surrounds it.
        const std::string domain = email.domain.substr(0, email.domain.find_last_not_of(".-_") + 1);
        if (!email.user.empty() && !domain.empty()) addresses.push_back(email.user + '@' + domain);
    }
    return addresses;
}

}  // namespace pagetext
