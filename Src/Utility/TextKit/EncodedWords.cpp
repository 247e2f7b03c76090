#include <algorithm>
#include <array>
#include <optional>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Internal/Utf8Sequences.h"
#include "Utility/TextKit/Mail.h"
#include "Utility/TextKit/References.h"

namespace textkit {

namespace {

using namespace utility::internal;

constexpr ByteSet kFoldingBlanks(" \t\r\n");
constexpr ByteSet kNotInLabel(" \t\r\n\"(),./:;<=>@[]\\");

struct EncodedWord {
    std::string_view label;  // without a language
    char form;               // 'b' or 'q'
    std::string_view content;
    std::size_t length;  // of the whole word
};

// The word at the start of `text`, which starts with "=?". No part of one holds a "?", so that the words of a text are found
// in one pass however many of them are none.
std::optional<EncodedWord> ReadWord(std::string_view text) {
    const std::size_t label_end = text.find('?', 2);
    if (label_end == text.npos || label_end + 2 >= text.size() || text[label_end + 2] != '?') return std::nullopt;
    const std::size_t content_end = text.find('?', label_end + 3);
    if (content_end == text.npos || text.substr(content_end, 2) != "?=") return std::nullopt;
    EncodedWord word{text.substr(2, label_end - 2), ToChar(ToAsciiLower(ToByte(text[label_end + 1]))),
                     text.substr(label_end + 3, content_end - label_end - 3), content_end + 2};
    const auto is_bad = [](char c) { return kNotInLabel.Contains(c); };
    if (std::any_of(word.label.begin(), word.label.end(), is_bad)) return std::nullopt;
    word.label = word.label.substr(0, word.label.find('*'));
    if (word.form != 'b' && word.form != 'q') return std::nullopt;
    return word;
}

constexpr auto kBase64Values = [] {
    std::array<signed char, 256> values{};
    for (signed char& value : values) value = -1;
    signed char next = 0;
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
        values[ToByte(c)] = next++;
    return values;
}();

// Up to the first "="; what is no digit of the code is passed over.
void AppendBase64(std::string_view content, std::string& bytes) {
    unsigned bits = 0, bit_count = 0;
    for (const char c : content.substr(0, content.find('='))) {
        const int value = kBase64Values[ToByte(c)];
        if (value < 0) continue;
        bits = (bits << 6 | static_cast<unsigned>(value)) & 0xFFF;
        bit_count += 6;
        if (bit_count < 8) continue;
        bit_count -= 8;
        bytes += ToChar(bits >> bit_count & 0xFF);
    }
}

int HexValue(char c) {
    const unsigned char byte = ToAsciiLower(ToByte(c));
    return IsAsciiDigit(byte) ? byte - '0' : byte >= 'a' && byte <= 'f' ? byte - 'a' + 10 : -1;
}

void AppendQuoted(std::string_view content, std::string& bytes) {
    for (std::size_t pos = 0; pos < content.size(); ++pos) {
        const int high = content[pos] == '=' && pos + 2 < content.size() ? HexValue(content[pos + 1]) : -1;
        const int low = high < 0 ? -1 : HexValue(content[pos + 2]);
        if (low >= 0) {
            bytes += ToChar(static_cast<unsigned>(high << 4 | low));
            pos += 2;
        } else {
            bytes += content[pos] == '_' ? ' ' : content[pos];
        }
    }
}

bool IsWindows1252(std::string_view label) {
    return EqualsIgnoringAsciiCase(label, "us-ascii") || EqualsIgnoringAsciiCase(label, "iso-8859-1") ||
           EqualsIgnoringAsciiCase(label, "windows-1252");
}

// Decoded text of words with the same label, whose bytes are gathered until one with another comes.
class WordDecoder {
public:
    WordDecoder(std::string& text, const CodeMaps& maps) : text_(text), maps_(maps) {}

    bool Add(const EncodedWord& word) {
        const bool known = EncodingFromLabel(word.label) != Encoding::kUnknown || IsWindows1252(word.label);
        if (!known) return false;
        if (!EqualsIgnoringAsciiCase(word.label, label_)) Flush();
        label_ = word.label;
        word.form == 'b' ? AppendBase64(word.content, bytes_) : AppendQuoted(word.content, bytes_);
        return true;
    }
    void Flush() {
        if (bytes_.empty()) return;
        if (IsWindows1252(label_)) {
            char character[4];
            for (const char c : bytes_) {
                const std::uint32_t code_point = c == '\0' ? 0 : CodePointOfNumber(ToByte(c));
                text_.append(character, WriteUtf8(code_point, character));
            }
        } else {
            text_ += Decode(bytes_, EncodingFromLabel(label_), maps_).text;
        }
        bytes_.clear();
    }

private:
    std::string& text_;
    const CodeMaps& maps_;
    std::string_view label_;
    std::string bytes_;
};

}  // namespace

std::string DecodeWords(std::string_view header, const CodeMaps& maps) {
    std::string text;
    text.reserve(header.size());
    WordDecoder decoder(text, maps);
    bool behind_word = false;
    while (!header.empty()) {
        const std::size_t start = std::min(header.find("=?"), header.size());
        const std::string_view between = header.substr(0, start);
        header.remove_prefix(start);
        const std::optional<EncodedWord> word = header.empty() ? std::nullopt : ReadWord(header);
        const bool blank =
            std::all_of(between.begin(), between.end(), [](char c) { return kFoldingBlanks.Contains(c); });
        if (!behind_word || !word || !blank) {
            decoder.Flush();
            text += between;
        }
        behind_word = word && decoder.Add(*word);
        if (behind_word) {
            header.remove_prefix(word->length);
        } else if (!header.empty()) {
            decoder.Flush();
            text += header.substr(0, 2);
            header.remove_prefix(2);
        }
    }
    decoder.Flush();
    return text;
}

}  // namespace textkit
