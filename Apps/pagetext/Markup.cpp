#include "Markup.h"

#include <STLCodeTrans.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>

#include "Decoding.h"
#include "References.h"

namespace pagetext {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// A search that remembers that nothing is left to find, so that a page full of openings without a closing costs one
// pass and not one each.
class Finder {
public:
    Finder(std::string_view text, std::string_view wanted) : text_(text), wanted_(wanted) {}
    // First occurrence at `from` or later, kNone without one; letters of `wanted` (lower case) match in any case.
    std::size_t Find(std::size_t from) {
        if (from >= none_from_) return kNone;
        if (next_ != kNone && next_ >= from && from >= searched_from_) return next_;
        const auto found =
            std::search(text_.begin() + static_cast<std::ptrdiff_t>(from), text_.end(), wanted_.begin(),
                        wanted_.end(), [](char a, char b) { return Lower(a) == b; });
        searched_from_ = from;
        next_ = found == text_.end() ? kNone : static_cast<std::size_t>(found - text_.begin());
        if (next_ == kNone) none_from_ = from;
        return next_;
    }

private:
    std::string_view text_, wanted_;
    std::size_t searched_from_ = 0, next_ = kNone;
    std::size_t none_from_ = text_.size();  // no occurrence from here on
};

// Both in byte order.
constexpr std::string_view kBlockElements[] = {
    "address", "article",  "aside",  "blockquote", "body",   "br",       "center",     "dd",      "details",
    "dialog",  "dir",      "div",    "dl",         "dt",     "fieldset", "figcaption", "figure",  "footer",
    "form",    "frameset", "h1",     "h2",         "h3",     "h4",       "h5",         "h6",      "head",
    "header",  "hgroup",   "hr",     "html",       "legend", "li",       "main",       "menu",    "nav",
    "ol",      "optgroup", "option", "p",          "pre",    "section",  "select",     "summary", "table",
    "tbody",   "tfoot",    "thead",  "title",      "tr",     "ul"};
// These stand inside a word or sentence: nothing takes their place, not even a blank.
constexpr std::string_view kInlineElements[] = {
    "a",     "abbr", "acronym", "b",      "bdi", "bdo", "big",  "cite", "code", "data", "del",
    "dfn",   "em",   "font",    "i",      "ins", "kbd", "mark", "nobr", "q",    "s",    "samp",
    "small", "span", "strike",  "strong", "sub", "sup", "time", "tt",   "u",    "var",  "wbr"};

template <std::size_t N>
bool Contains(const std::string_view (&sorted)[N], std::string_view name) {
    return std::binary_search(std::begin(sorted), std::end(sorted), name);
}

class Preparation {
public:
    explicit Preparation(std::string_view html)
        : html_(html),
          comment_end_(html, "-->"),
          tag_end_(html, ">"),
          quotes_{Finder(html, "\""), Finder(html, "'")},
          script_end_(html, "</script"),
          style_end_(html, "</style"),
          title_end_(html, "</title"),
          textarea_end_(html, "</textarea") {}

    // The page in a form that vHtmlToText reads without loss.
    std::string Run() {
        prepared_.reserve(html_.size() + html_.size() / 8);
        while (pos_ < html_.size()) Step();
        return std::move(prepared_);
    }

private:
    void Step() {
        const char c = html_[pos_];
        if (c == '<' && pos_ >= plain_end_) {
            StepMarkup();
        } else if (c == '&') {
            StepReference();
        } else if (c == '\0') {
            prepared_ += kReplacement;
            ++pos_;
        } else if (c == '%' || c == '<' || html_.compare(pos_, 5, "nbsp;") == 0) {
            AppendNumber(c);
            ++pos_;
        } else {
            prepared_ += c;
            ++pos_;
        }
    }

    // A character as a decimal reference, which vHtmlToText turns back without reading it as markup.
    void AppendNumber(char c) { prepared_ += "&#" + std::to_string(static_cast<unsigned char>(c)) + ";"; }

    void StepReference() {
        std::string text;
        const std::size_t length = AppendReference(html_.substr(pos_), text);
        if (length == 0) {
            AppendNumber('&');
            ++pos_;
            return;
        }
        pos_ += length;
        if (text == "\xC2\xA0") text = " ";
        if (text.size() == 1 && text[0] > ' ' && text[0] != '\x7F') {  // vHtmlToText makes a blank of 127
            AppendNumber(text[0]);
        } else {
            prepared_ += text;
        }
    }

    void StepMarkup() {
        const std::string_view rest = html_.substr(pos_);
        const std::size_t name_at = rest.size() > 1 && rest[1] == '/' ? 2 : 1;
        if (rest.compare(0, 4, "<!--") == 0) {
            SkipTo(comment_end_.Find(pos_ + 2), 3);  // "<!-->" is a whole comment
        } else if (rest.size() > 1 && (rest[1] == '!' || rest[1] == '?')) {
            SkipTo(tag_end_.Find(pos_), 1);
        } else if (rest.size() > name_at && IsLetter(rest[name_at]) && tag_end_.Find(pos_) != kNone) {
            StepTag(name_at);
        } else {
            SkipTo(kNone, 0);
        }
    }

    // Leaves out everything up to `end` and `length` bytes more; without an end the "<" is text.
    void SkipTo(std::size_t end, std::size_t length) {
        if (end == kNone) {
            AppendNumber('<');
            ++pos_;
        } else {
            prepared_ += "<!>";
            pos_ = end + length;
        }
    }

    void StepTag(std::size_t name_at) {
        std::size_t name_end = pos_ + name_at;
        while (name_end < html_.size() && (std::isalnum(static_cast<unsigned char>(html_[name_end])) != 0))
            ++name_end;
        std::string name(html_.substr(pos_ + name_at, std::min<std::size_t>(name_end - pos_ - name_at, 16)));
        std::transform(name.begin(), name.end(), name.begin(), Lower);
        const std::size_t end = TagEnd(name_end);
        if (end == kNone) {
            SkipTo(kNone, 0);
            return;
        }
        pos_ = end;
        if (Contains(kInlineElements, name)) return;
        prepared_ += Contains(kBlockElements, name) ? "\n<p>" : "<x>";
        if (name_at != 1) return;
        if (name == "script") SkipElement(script_end_);
        if (name == "style") SkipElement(style_end_);
        if (name == "title") KeepAsText(title_end_);
        if (name == "textarea") KeepAsText(textarea_end_);
    }

    // Position behind the tag whose name ends at `pos`. A quoted value may hold ">", but only where the closing quote
    // ends the value: a quote that was forgotten must not swallow text. A "<" ends a tag that was never closed.
    std::size_t TagEnd(std::size_t pos) {
        while (pos < html_.size()) {
            const char c = html_[pos];
            if (c == '>') return pos + 1;
            if (c == '<') return pos;
            ++pos;
            if (quotes_broken_ || (c != '"' && c != '\'')) continue;
            const std::size_t closing = quotes_[c == '"' ? 0 : 1].Find(pos);
            const bool ends_value =
                closing != kNone && closing + 1 < html_.size() &&
                (IsBlank(html_[closing + 1]) || html_[closing + 1] == '>' || html_[closing + 1] == '/');
            if (ends_value) pos = closing + 1;
        }
        // All of the page would be one tag. Looking again at every later tag would take quadratic time.
        quotes_broken_ = true;
        return kNone;
    }

    // Leaves out the content of a script or style; the closing tag is the next step's. Without one the content stays.
    void SkipElement(Finder& closing) {
        const std::size_t end = closing.Find(pos_);
        if (end != kNone) pos_ = end;
    }

    // In a title and the like tags are text, references are not. Without a closing tag everything is markup.
    void KeepAsText(Finder& closing) {
        const std::size_t end = closing.Find(pos_);
        if (end != kNone) plain_end_ = end;
    }

    std::string_view html_;
    std::size_t pos_ = 0;
    std::size_t plain_end_ = 0;  // in front of this place "<" is text
    bool quotes_broken_ = false;
    std::string prepared_;
    Finder comment_end_, tag_end_;
    std::array<Finder, 2> quotes_;
    Finder script_end_, style_end_, title_end_, textarea_end_;
};

// Lines without blanks at their ends, no two empty lines in a row, none at the start or the end.
std::string TidyLines(std::string_view text) {
    std::string tidy;
    tidy.reserve(text.size());
    std::size_t line_breaks = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t end = std::min(text.find('\n', pos), text.size());
        std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        while (!line.empty() && IsBlank(line.back())) line.remove_suffix(1);
        while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
        if (!line.empty()) {
            if (!tidy.empty()) tidy.append(std::min<std::size_t>(line_breaks, 2), '\n');
            tidy += line;
            line_breaks = 0;
        }
        ++line_breaks;
    }
    return tidy;
}

}  // namespace

std::string MarkupToText(std::string_view html) {
    const std::string prepared = Preparation(html).Run();
    // Room for what vHtmlToText may write beyond the length of its input, the NUL included.
    std::string text(prepared.size() + 6, '\0');
    unsigned long length = 0;
    vHtmlToText(prepared.c_str(), prepared.size(), text.data(), length);
    text.resize(length);
    return TidyLines(text);
}

}  // namespace pagetext
