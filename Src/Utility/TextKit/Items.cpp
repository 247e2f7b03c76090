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

// Cuts off what stands in front of the first byte that is (or is not) one of `bytes`.
std::string_view TakeUntil(std::string_view& text, std::string_view bytes) {
    const std::string_view taken = text.substr(0, text.find_first_of(bytes));
    text.remove_prefix(taken.size());
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
        tag.name = TakeUntil(rest_, " \t\r\n/>");
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
        const std::string_view name = TakeUntil(rest_, " \t\r\n=/>");
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

    static constexpr ByteSet kBlanksAndSlash{" \t\r\n/"};
    std::string_view rest_;
};

// The inside of the string that `text` starts with, in its quotes; none where the closing one is missing.
std::optional<std::string_view> TakeJsonString(std::string_view& text) {
    for (std::size_t pos = 1; (pos = text.find_first_of("\"\\", pos)) != kNone; pos += 2) {
        if (text[pos] == '\\') continue;
        const std::string_view inside = text.substr(1, pos - 1);
        text.remove_prefix(pos + 1);
        return inside;
    }
    text = {};
    return std::nullopt;
}

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

// The array or object that `text` starts with; none where it is never closed.
std::optional<std::string> TakeNested(std::string_view text) {
    std::string_view rest = text;
    std::size_t depth = 0;
    for (;;) {
        TakeUntil(rest, "\"[]{}");
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
    const std::string_view literal = TakeUntil(text, ",]} \t\r\n");
    return literal.empty() ? std::nullopt : std::optional(std::string(literal));
}

}  // namespace

std::optional<std::string_view> XmlItem(std::string_view xml, std::string_view name) {
    XmlTags tags(xml);
    const char* content = nullptr;
    std::size_t depth = 0;
    for (XmlTag tag; tags.Next(tag, [](std::string_view, std::string_view) {});) {
        if (tag.name != name || (depth == 0 && tag.kind == XmlTag::kEnd)) continue;
        if (tag.kind == XmlTag::kEmpty && depth == 0) return std::string_view(tag.end, 0);
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
    for (;;) {
        TakeUntil(json, "\"");
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
