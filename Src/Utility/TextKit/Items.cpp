#include "Utility/TextKit/Items.h"

#include <algorithm>

#include "Internal/ByteSet.h"
#include "Internal/SubstringSearch.h"
#include "Internal/Utf8Sequences.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n";

// Cuts off what stands in front of the first byte that is (or is not) one of a set.
std::string_view TakeUntil(std::string_view& text, const ByteSet& bytes) {
    std::size_t size = 0;
    while (size < text.size() && !bytes.Contains(text[size])) ++size;
    const std::string_view taken = text.substr(0, size);
    text.remove_prefix(size);
    return taken;
}
void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

struct XmlTag {
    std::string_view name;
    const char* begin = nullptr;
    const char* end = nullptr;
    enum { kStart, kEnd, kEmpty } kind = kStart;
};

// Whether at the first of the bytes, of which there are two, something may start that holds tags that are none: a quoted
// value, a comment, a CDATA section, a processing instruction.
constexpr bool MayHideTags(const char* bytes) {
    return (bytes[0] == '"') | (bytes[0] == '\'') | ((bytes[0] == '<') & ((bytes[1] == '!') | (bytes[1] == '?')));
}

// Where the first of them stands in a text that is not empty, or its last byte.
std::size_t FindHiddenTags(std::string_view text) {
    constexpr std::size_t kBlock = 64;
    std::size_t pos = 0;
    for (; text.size() - pos > kBlock; pos += kBlock) {
        unsigned char any = 0;  // a byte, so that the compiler can compare in vectors
        for (std::size_t i = 0; i < kBlock; ++i) any |= MayHideTags(text.data() + pos + i);
        if (any != 0) break;
    }
    while (pos + 1 < text.size() && !MayHideTags(text.data() + pos)) ++pos;
    return pos;
}

// Goes from tag to tag. A construct that is never closed ends the text.
class XmlTags {
public:
    explicit XmlTags(std::string_view xml) : rest_(xml) {}

    // The next tag. `attribute(name, value)` is called for each attribute.
    template <typename Attribute>
    bool Next(XmlTag& tag, Attribute attribute) {
        while (SkipToMarkup()) {
            if (!StartsWith(rest_, "<!") && !StartsWith(rest_, "<?")) return ReadTag(tag, attribute);
            const bool comment = StartsWith(rest_, "<!--"), data = StartsWith(rest_, "<![CDATA[");
            const std::string_view end = comment ? "-->" : data ? "]]>" : rest_[1] == '?' ? "?>" : ">";
            const std::size_t found = FindFirst(rest_, end, comment ? 4 : 2);
            rest_.remove_prefix(found == kNone ? rest_.size() : found + end.size());
        }
        return false;
    }

    // Goes on behind a tag that ends in front of `place`, the last such as far as nothing hides tags: up to there every ">"
    // ends a tag or stands between two.
    void SkipTowards(const char* place) {
        if (place <= rest_.data()) return;
        const std::string_view text = rest_.substr(0, static_cast<std::size_t>(place - rest_.data()));
        const std::size_t last_end = text.substr(0, FindHiddenTags(text)).rfind('>');
        if (last_end != kNone) rest_.remove_prefix(last_end + 1);
    }

private:
    bool SkipToMarkup() {
        rest_.remove_prefix(std::min(rest_.find('<'), rest_.size()));
        return !rest_.empty();
    }

    template <typename Attribute>
    bool ReadTag(XmlTag& tag, Attribute attribute) {
        tag.begin = rest_.data();
        rest_.remove_prefix(1);
        tag.kind = StartsWith(rest_, "/") ? XmlTag::kEnd : XmlTag::kStart;
        if (tag.kind == XmlTag::kEnd) rest_.remove_prefix(1);
        tag.name = TakeUntil(rest_, kNameEnds);
        while (!rest_.empty() && rest_[0] != '>') {
            if (rest_[0] == '/' && StartsWith(rest_, "/>")) tag.kind = XmlTag::kEmpty;
            if (kBlanksAndSlash.Contains(rest_[0])) {
                rest_.remove_prefix(1);
            } else if (!ReadAttribute(attribute)) {
                rest_ = {};
            }
        }
        if (rest_.empty()) return false;
        rest_.remove_prefix(1);
        tag.end = rest_.data();
        return true;
    }

    template <typename Attribute>
    bool ReadAttribute(Attribute attribute) {
        const std::string_view name = TakeUntil(rest_, kAttributeEnds);
        SkipBlanks(rest_);
        if (!StartsWith(rest_, "=")) return true;
        rest_.remove_prefix(1);
        SkipBlanks(rest_);
        if (rest_.empty() || (rest_[0] != '"' && rest_[0] != '\'')) return !rest_.empty();
        const std::size_t closing = rest_.find(rest_[0], 1);
        if (closing == kNone) return false;
        attribute(name, rest_.substr(1, closing - 1));
        rest_.remove_prefix(closing + 1);
        return true;
    }

    static constexpr ByteSet kBlanksAndSlash{" \t\r\n/"}, kNameEnds{" \t\r\n/>"}, kAttributeEnds{" \t\r\n=/>"};
    std::string_view rest_;
};

// The inside of the string that `text` starts with, in its quotes; none where the closing one is missing.
std::optional<std::string_view> TakeJsonString(std::string_view& text) {
    for (std::size_t pos = 1; (pos = text.find('"', pos)) != kNone; ++pos) {
        std::size_t first_backslash = pos;
        while (text[first_backslash - 1] == '\\') --first_backslash;
        if ((pos - first_backslash) % 2 != 0) continue;  // the quote is escaped
        const std::string_view inside = text.substr(1, pos - 1);
        text.remove_prefix(pos + 1);
        return inside;
    }
    text.remove_prefix(text.size());
    return std::nullopt;
}

std::size_t CountQuotes(std::string_view text) {
    std::size_t count = 0;
    constexpr std::size_t kBlock = 240;  // as many as a byte counts, so that the compiler can count in vectors
    for (; !text.empty(); text.remove_prefix(std::min(kBlock, text.size()))) {
        unsigned char quotes = 0;
        for (const char c : text.substr(0, kBlock)) quotes = static_cast<unsigned char>(quotes + (c == '"'));
        count += quotes;
    }
    return count;
}

// Steps to the strings of a text that may be a key. Those are spelled like it, or with a backslash. Up to the first backslash
// every other quote is an opening one, so that the strings there need not be read one by one.
class JsonStrings {
public:
    // A key that holds a quote or a backslash is spelled with a backslash only.
    explicit JsonStrings(std::string_view key)
        : spelling_(key.find_first_of("\"\\") == kNone ? std::string(key) + '"' : std::string()) {}

    // Cuts off what stands in front of the next such string, or all of the text. For texts that end at one place.
    void SkipOthers(std::string_view& text) {
        if (backslash_ == nullptr || backslash_ < text.data())
            backslash_ = text.data() + std::min(text.find('\\'), text.size());
        const std::string_view plain = text.substr(0, static_cast<std::size_t>(backslash_ - text.data()));
        bool open = false;  // whether the quotes in front of `counted` leave a string open
        std::size_t counted = 0;
        for (std::size_t from = 0, quote; (quote = FindSpelling(plain, from)) != kNone; from = quote + 1) {
            open ^= CountQuotes(plain.substr(counted, quote - counted)) % 2 != 0;
            if (!open) return text.remove_prefix(quote);
            counted = quote;
        }
        open ^= CountQuotes(plain.substr(counted)) % 2 != 0;
        text.remove_prefix(open ? plain.rfind('"') : std::min(text.find('"', plain.size()), text.size()));
    }

private:
    // Where the next string or end of one that is spelled like the key starts, with its quote.
    std::size_t FindSpelling(std::string_view plain, std::size_t pos) const {
        if (spelling_.empty()) return kNone;
        do pos = FindFirst(plain, spelling_, pos + 1);
        while (pos != kNone && plain[pos - 1] != '"');
        return pos == kNone ? kNone : pos - 1;
    }

    std::string spelling_;  // with its closing quote; empty where there is none without a backslash
    const char* backslash_ = nullptr;
};

// The four digits behind "\u" at the start of `text`, or -1.
std::int32_t UnitOfEscape(std::string_view text) {
    if (text.size() < 6 || !StartsWith(text, "\\u")) return -1;
    std::int32_t unit = 0;
    for (const char c : text.substr(2, 4)) {
        const int digit = IsAsciiDigit(ToByte(c))                  ? c - '0'
                          : (c | 0x20) >= 'a' && (c | 0x20) <= 'f' ? (c | 0x20) - 'a' + 10
                                                                   : -1;
        if (digit < 0) return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

// Undoes the escape at the start of `text` and returns its length.
std::size_t AppendEscape(std::string_view text, std::string& decoded) {
    constexpr std::string_view kLetters = "bfnrt", kControls = "\b\f\n\r\t";
    const std::int32_t unit = UnitOfEscape(text);
    if (unit < 0) {
        const std::size_t letter = text.size() < 2 ? kNone : kLetters.find(text[1]);
        decoded += letter != kNone ? kControls.substr(letter, 1) : text.substr(1, 1);
        return 2;
    }
    char character[4];
    auto code_point = static_cast<std::uint32_t>(unit);
    std::size_t length = 6;
    if ((unit & 0xF800) == 0xD800) {
        const std::int32_t low = (unit & 0xFC00) == 0xD800 ? UnitOfEscape(text.substr(6)) : -1;
        const bool pair = low >= 0 && (low & 0xFC00) == 0xDC00;
        code_point = pair ? 0x10000 + ((code_point & 0x3FF) << 10 | (static_cast<std::uint32_t>(low) & 0x3FF)) : 0xFFFD;
        if (pair) length = 12;
    }
    decoded.append(character, static_cast<std::size_t>(WriteUtf8(code_point, character) - character));
    return length;
}

std::string DecodeJsonString(std::string_view inside) {
    std::string decoded;
    decoded.reserve(inside.size());
    while (!inside.empty()) {
        const std::size_t plain = std::min(inside.find('\\'), inside.size());
        decoded += inside.substr(0, plain);
        inside.remove_prefix(plain);
        if (!inside.empty()) inside.remove_prefix(std::min(AppendEscape(inside, decoded), inside.size()));
    }
    return decoded;
}

constexpr ByteSet kNestingBytes{"\"[]{}"}, kLiteralEnds{",]} \t\r\n"};

// The array or object that `text` starts with; none where it is never closed.
std::optional<std::string> TakeNested(std::string_view text) {
    std::string_view rest = text;
    std::size_t depth = 0;
    for (;;) {
        TakeUntil(rest, kNestingBytes);
        if (rest.empty()) return std::nullopt;
        if (rest[0] == '"') {
            if (!TakeJsonString(rest)) return std::nullopt;
            continue;
        }
        depth = rest[0] == '[' || rest[0] == '{' ? depth + 1 : depth - 1;
        rest.remove_prefix(1);
        if (depth == 0) return std::string(text.substr(0, text.size() - rest.size()));
    }
}

std::optional<std::string> JsonValue(std::string_view text) {
    SkipBlanks(text);
    if (text.empty()) return std::nullopt;
    if (text[0] == '[' || text[0] == '{') return TakeNested(text);
    if (text[0] == '"') {
        const std::optional<std::string_view> inside = TakeJsonString(text);
        return inside ? std::optional(DecodeJsonString(*inside)) : std::nullopt;
    }
    const std::string_view literal = TakeUntil(text, kLiteralEnds);
    return literal.empty() ? std::nullopt : std::optional(std::string(literal));
}

}  // namespace

std::optional<std::string_view> XmlItem(std::string_view xml, std::string_view name) {
    const std::size_t first = FindFirst(xml, '<' + std::string(name), 0);
    if (first == kNone) return std::nullopt;
    XmlTags tags(xml);
    const char* content = nullptr;
    std::size_t depth = 0, count = 0;
    const auto next_tag = [&](XmlTag& tag) {
        // Behind the first tag, in front of which there may be a declaration.
        if (count++ == 1) tags.SkipTowards(xml.data() + first);
        return tags.Next(tag, [](std::string_view, std::string_view) {});
    };
    for (XmlTag tag; next_tag(tag);) {
        if (tag.name != name || (depth == 0 && tag.kind == XmlTag::kEnd)) continue;
        if (tag.kind == XmlTag::kEmpty && depth == 0) return std::string_view(tag.end, std::size_t{0});
        if (tag.kind == XmlTag::kStart && depth++ == 0) content = tag.end;
        if (tag.kind == XmlTag::kEnd && --depth == 0)
            return std::string_view(content, static_cast<std::size_t>(tag.begin - content));
    }
    return std::nullopt;
}

std::optional<std::string_view> XmlAttribute(std::string_view xml, std::string_view name, std::string_view attribute) {
    XmlTags tags(xml);
    std::optional<std::string_view> value;
    XmlTag tag;
    const auto keep = [&](std::string_view found, std::string_view its_value) {
        if (tag.name == name && found == attribute && !value) value = its_value;
    };
    while (!value && tags.Next(tag, keep)) {
    }
    return value;
}

std::optional<std::string> JsonItem(std::string_view json, std::string_view key) {
    JsonStrings strings(key);
    for (;;) {
        strings.SkipOthers(json);
        if (json.empty()) return std::nullopt;
        const std::optional<std::string_view> name = TakeJsonString(json);
        SkipBlanks(json);
        if (!name || !StartsWith(json, ":")) continue;
        json.remove_prefix(1);
        const bool escaped = name->find('\\') != kNone;
        if (escaped ? DecodeJsonString(*name) == key : *name == key) return JsonValue(json);
    }
}

}  // namespace textkit
