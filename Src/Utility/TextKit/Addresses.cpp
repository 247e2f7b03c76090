#include <algorithm>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Utility/TextKit/Mail.h"
#include "Utility/TextKit/Pieces.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr ByteSet LettersDigitsAnd(const char* more) {
    ByteSet bytes(more);
    for (unsigned char byte = '0'; byte <= 'z'; ++byte)
        if (IsAsciiLetter(byte) || IsAsciiDigit(byte)) bytes.Add(byte);
    return bytes;
}

constexpr ByteSet kUserBytes = LettersDigitsAnd("._%+-'");
constexpr ByteSet kLabelBytes = LettersDigitsAnd("-");
constexpr ByteSet kNameEnds(",;:");
constexpr ByteSet kBlanks(" \t\r\n");

// The address around the at sign at `at`, between `region` and the end of the text: [begin, end), empty where there is none.
struct Span {
    std::size_t begin, end;
};

Span AddressAround(std::string_view text, std::size_t region, std::size_t at) {
    constexpr Span kNoAddress{0, 0};
    std::size_t begin = at;
    while (begin > region && kUserBytes.Contains(text[begin - 1])) --begin;
    const auto is_edge = [](char c) { return c == '.' || c == '\''; };
    while (begin < at && is_edge(text[begin])) ++begin;
    if (begin == at || is_edge(text[at - 1])) return kNoAddress;

    std::size_t end = at, labels = 0;
    bool last_has_letter = false;
    for (std::size_t next = at + 1; next < text.size(); ++next) {
        const std::size_t label = next;
        while (next < text.size() && kLabelBytes.Contains(text[next])) ++next;
        std::size_t label_end = next;
        while (label_end > label && text[label_end - 1] == '-') --label_end;
        if (label_end == label || text[label] == '-') break;
        ++labels;
        end = label_end;
        last_has_letter =
            std::any_of(text.data() + label, text.data() + next, [](char c) { return !IsAsciiDigit(ToByte(c)); });
        if (label_end != next || next == text.size() || text[next] != '.') break;
    }
    const bool enclosed = begin > 0 && text[begin - 1] == '<' && end < text.size() && text[end] == '>';
    const bool domain = labels > 1 ? last_has_letter : labels == 1 && enclosed;
    return domain ? Span{begin, end} : kNoAddress;
}

// Whether what stands in front of `pos` ends a name that starts there.
bool EndsNameBefore(std::string_view text, std::size_t pos) {
    if (kNameEnds.Contains(text[pos - 1])) return true;
    if (pos >= 3 && (text[pos - 3] == '\xE3' || text[pos - 3] == '\xEF'))  // which few other characters start with
        for (const std::string_view mark : {"，", "；", "：", "。", "、"})
            if (text.substr(pos - 3, 3) == mark) return true;
    // A line end, unless a blank behind it continues the header line.
    if (text[pos - 1] != '\n' && text[pos - 1] != '\r') return false;
    return pos == text.size() || (text[pos] != ' ' && text[pos] != '\t' && text[pos] != '\n');
}

// The name that ends at `end`, in a region that begins at `region`.
std::string_view NameInFront(std::string_view text, std::size_t region, std::size_t end) {
    while (end > region && kBlanks.Contains(text[end - 1]) && !EndsNameBefore(text, end)) --end;
    std::size_t begin = end;
    if (end > region && text[end - 1] == '"') {
        for (begin = end - 1; begin > region;) {
            if (text[--begin] != '"') continue;
            std::size_t escapes = 0;
            while (begin - escapes > region && text[begin - escapes - 1] == '\\') ++escapes;
            if (escapes % 2 == 0) return text.substr(begin, end - begin);
        }
        begin = end - 1;  // the quote has no partner
    }
    while (begin > region && !EndsNameBefore(text, begin)) --begin;
    return text.substr(begin, end - begin);
}

// What stands between the brackets of a comment that starts at `pos`, behind blanks.
std::string_view CommentBehind(std::string_view text, std::size_t pos) {
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
    if (pos == text.size() || text[pos] != '(') return {};
    const std::size_t end = text.find_first_of("()\r\n<>@", pos + 1);
    return end == text.npos || text[end] != ')' ? std::string_view() : text.substr(pos + 1, end - pos - 1);
}

std::string Unquoted(std::string_view name) {
    if (name.size() < 2 || name.front() != '"' || name.back() != '"') return std::string(name);
    std::string text;
    for (std::size_t pos = 1; pos + 1 < name.size(); ++pos) {
        if (name[pos] == '\\' && pos + 2 < name.size()) ++pos;
        text += name[pos];
    }
    return text;
}

// The name as it is meant: without quotes, its encoded words decoded, one blank where there are some.
std::string TidyName(std::string_view name, const CodeMaps& maps) {
    std::string tidy = Unquoted(Trim(name));
    if (tidy.find("=?") != tidy.npos) tidy = DecodeWords(tidy, maps);
    std::size_t kept = 0;
    for (const char c : tidy) {
        const bool is_blank = kBlanks.Contains(c);
        if (!is_blank || (kept > 0 && tidy[kept - 1] != ' ')) tidy[kept++] = is_blank ? ' ' : c;
    }
    if (kept > 0 && tidy[kept - 1] == ' ') --kept;
    tidy.resize(kept);
    return tidy;
}

}  // namespace

std::vector<EmailAddress> EmailAddresses(std::string_view text, const CodeMaps& maps) {
    std::vector<EmailAddress> addresses;
    std::size_t region = 0;  // behind the address before
    for (std::size_t at = text.find('@'); at != text.npos; at = text.find('@', at + 1)) {
        const Span span = AddressAround(text, region, at);
        if (span.end == 0) continue;
        EmailAddress& found = addresses.emplace_back();
        found.address.assign(text, span.begin, span.end - span.begin);
        for (std::size_t i = at - span.begin; i < found.address.size(); ++i)
            found.address[i] = ToChar(ToAsciiLower(ToByte(found.address[i])));
        const bool enclosed = span.begin > region && text[span.begin - 1] == '<';
        const std::string_view name =
            enclosed ? NameInFront(text, region, span.begin - 1) : CommentBehind(text, span.end);
        found.name = TidyName(name, maps);
        region = span.end;
        if (region < text.size() && text[region] == '>') ++region;
    }
    return addresses;
}

}  // namespace textkit
