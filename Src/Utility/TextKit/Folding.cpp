#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "Internal/AsciiCase.h"
#include "Internal/CodePointIndex.h"
#include "Internal/FoldingLists.h"
#include "Internal/HanRuns.h"
#include "Internal/Utf8Sequences.h"
#include "Internal/Words.h"
#include "Utility/TextKit/ChineseText.h"

namespace textkit {

namespace {

using namespace utility::internal;

struct CaseRow {
    std::uint32_t first, last, step;
    std::int32_t offset;
};

constexpr CaseRow kCaseRows[] = {
#include "CaseFoldingRows.inc"
};

// Marks beyond those of the shared lists, each with the ASCII mark behind it.
constexpr char kMoreMarkText[] = "《》【】「」『』";
constexpr char kMoreMarks[] = "<>[]\"\"\"\"";
constexpr char kBracketText[] = "([{（［｛【〔〖〘〚﹙﹛﹝)]}）］｝】〕〗〙〛﹚﹜﹞";
constexpr int kOpeningBrackets = 14;
constexpr char kDoubleQuoteText[] = "“”„‟＂「」『』〝〞〟";
constexpr char kSingleQuoteText[] = "‘’‛＇";

constexpr bool IsFullWidthAscii(char32_t c) {
    return c >= U'！' && c <= U'～';
}

constexpr char32_t FoldWidth(char32_t c) {
    constexpr char32_t kSigns[] = {U'¢', U'£', U'¬', U'¯', U'¦', U'¥', U'₩'};  // of U+FFE0 to U+FFE6
    if (IsFullWidthAscii(c)) return c - U'！' + U'!';
    if (c >= 0xFFE0 && c <= 0xFFE6) return kSigns[c - 0xFFE0];
    return c == U'　' ? U' ' : c;
}

// Which blocks of 64 characters of the Basic Multilingual Plane the rows reach.
constexpr auto kCaseBlocks = [] {
    std::array<bool, 0x10000 / 64> blocks{};
    for (const CaseRow& row : kCaseRows)
        for (std::uint32_t block = row.first / 64; block <= row.last / 64 && block < blocks.size(); ++block)
            blocks[block] = true;
    return blocks;
}();

constexpr char32_t FoldCase(char32_t c) {
    if (c < 0x80) return ToAsciiLower(static_cast<unsigned char>(c));
    if (c / 64 < kCaseBlocks.size() && !kCaseBlocks[c / 64]) return c;
    const CaseRow* const row =
        std::lower_bound(std::begin(kCaseRows), std::end(kCaseRows), c,
                         [](const CaseRow& candidate, char32_t wanted) { return candidate.last < wanted; });
    if (row == std::end(kCaseRows) || c < row->first || (c - row->first) % row->step != 0) return c;
    return static_cast<char32_t>(static_cast<std::int32_t>(c) + row->offset);
}

constexpr char32_t FoldPunctuation(char32_t c) {
    // Full-width ASCII keeps to FoldWidth, whatever the shared list says of ｀.
    if (IsFullWidthAscii(c)) {
        const auto narrow = static_cast<unsigned char>(FoldWidth(c));
        return IsAsciiLetter(narrow) || IsAsciiDigit(narrow) ? c : narrow;
    }
    if (const int place = kIndexOf<kWideMarkText>.Find(c); place >= 0)
        return static_cast<char32_t>(kNarrowMarks[static_cast<std::size_t>(place)]);
    if (const int place = kIndexOf<kMoreMarkText>.Find(c); place >= 0)
        return static_cast<char32_t>(kMoreMarks[static_cast<std::size_t>(place)]);
    return c;
}

constexpr char32_t FoldBrackets(char32_t c) {
    if (const int place = kIndexOf<kBracketText>.Find(c); place >= 0) return place < kOpeningBrackets ? U'(' : U')';
    if (kIndexOf<kDoubleQuoteText>.Contains(c)) return U'"';
    return kIndexOf<kSingleQuoteText>.Contains(c) ? U'\'' : c;
}

// The shared separators, their ASCII forms and tabs, but for "." and "-".
constexpr bool IsSeparator(char32_t c) {
    const char32_t narrow = FoldWidth(c);
    if (narrow == U'.' || narrow == U'-') return false;
    if (kIndexOf<kSeparatorText>.Contains(c) || c == U'＿' || c == U'／') return true;
    return c == U'\t' || c == U'\\' || c == U'|' || (c < 0x80 && kIndexOf<kAsciiSeparators>.Contains(c));
}

constexpr char32_t FoldCharacter(char32_t c, const FoldOptions& options) {
    if (c >= 0x3400 && c < 0xA000) return c;  // most of a Chinese text
    if (options.separators && IsSeparator(c)) return U' ';
    if (options.brackets) c = FoldBrackets(c);
    if (options.punctuation) c = FoldPunctuation(c);
    if (options.width) c = FoldWidth(c);
    if (options.letter_case) c = FoldCase(c);
    // What has become one since.
    return options.separators && IsSeparator(c) ? U' ' : c;
}

// What FoldCharacter makes of ASCII, by the options that matter to it.
using AsciiForms = std::array<char, 0x80>;
template <bool kSeparators, bool kBrackets, bool kLetterCase>
constexpr AsciiForms kAsciiForms = [] {
    FoldOptions options;
    options.separators = kSeparators;
    options.brackets = kBrackets;
    options.letter_case = kLetterCase;
    AsciiForms forms{};
    for (char32_t c = 0; c < forms.size(); ++c) forms[c] = ToChar(FoldCharacter(c, options));
    return forms;
}();

const AsciiForms& AsciiFormsFor(const FoldOptions& options) {
    static constexpr const AsciiForms* kForms[] = {&kAsciiForms<false, false, false>, &kAsciiForms<true, false, false>,
                                                   &kAsciiForms<false, true, false>,  &kAsciiForms<true, true, false>,
                                                   &kAsciiForms<false, false, true>,  &kAsciiForms<true, false, true>,
                                                   &kAsciiForms<false, true, true>,   &kAsciiForms<true, true, true>};
    return *kForms[options.separators + 2 * options.brackets + 4 * options.letter_case];
}

// Chinese and Japanese characters and marks.
bool IsWide(char32_t c) {
    return (c >= 0x2E80 && c < 0xA000) || (c >= 0xF900 && c < 0xFB00) || (c >= 0xFE30 && c < 0xFE50) ||
           (c >= 0xFF01 && c < 0xFF61) || c >= 0x20000;
}

// Writes characters and squeezes the blanks.
class FoldWriter {
public:
    explicit FoldWriter(std::size_t expected) { folded_.reserve(expected); }

    void Append(char32_t c) {
        if (!IsPlainAscii(c) && ClassOf(c) == CharacterClass::kSpace) {
            blank_ = !folded_.empty();
            return;
        }
        if (blank_ && !(IsWide(last_) && IsWide(c))) folded_ += ' ';
        blank_ = false;
        last_ = c;
        if (c < 0x80) {
            folded_ += static_cast<char>(c);
            return;
        }
        char bytes[4];
        folded_.append(bytes, static_cast<std::size_t>(WriteUtf8(c, bytes) - bytes));
    }
    std::string Take() { return std::move(folded_); }

private:
    static constexpr bool IsPlainAscii(char32_t c) { return c > 0x20 && c < 0x7F; }

    std::string folded_;
    char32_t last_ = 0;
    bool blank_ = false;
};

// Writes a text whose blanks stay, run by run.
class RunFolder {
public:
    explicit RunFolder(const FoldOptions& options) : options_(options), ascii_forms_(AsciiFormsFor(options)) {}

    std::string Fold(std::string_view text) {
        folded_.resize(text.size() + kRoom);
        out_ = folded_.data();
        for (const char *pos = text.data(), *const end = pos + text.size(); pos != end;) {
            if (IsAscii(ToByte(*pos))) {
                pos = FoldAscii(pos, end);
            } else {
                pos = FoldHan(pos, end);
            }
        }
        folded_.resize(static_cast<std::size_t>(out_ - folded_.data()));
        return std::move(folded_);
    }

private:
    // There is room for what is left of the text and this much more.
    static constexpr std::size_t kRoom = 16;

    const char* FoldAscii(const char* pos, const char* end) {
        const AsciiForms& forms = ascii_forms_;
        char* out = out_;
        for (; end - pos >= 16 && AreAscii16(pos); pos += 16, out += 16)
            for (int i = 0; i < 16; ++i) out[i] = forms[ToByte(pos[i])];
        // Eight bytes are written whatever they are: where the text goes on in Chinese is hard to foresee.
        constexpr std::ptrdiff_t kBlock = 8;
        for (; end - pos >= kBlock; pos += kBlock, out += kBlock) {
            for (int i = 0; i < kBlock; ++i) out[i] = forms[ToByte(pos[i]) & 0x7F];
            if (const std::uint64_t high_bytes = LoadWord<std::uint64_t>(pos) & kTopBits; high_bytes != 0) {
                const unsigned ascii_bytes = LowestBit(high_bytes) / 8;
                out_ = out + ascii_bytes;
                return pos + ascii_bytes;
            }
        }
        for (; pos != end && IsAscii(ToByte(*pos)); ++pos) *out++ = forms[ToByte(*pos)];
        out_ = out;
        return pos;
    }

    // A run of Chinese characters and the mark or other character behind it, as the two come by turns.
    const char* FoldHan(const char* pos, const char* end) {
        pos = CopyCommonHan(pos, end, out_);
        return pos != end && !IsAscii(ToByte(*pos)) ? FoldOther(pos, end) : pos;
    }

    // Takes one character, which may become longer: a malformed byte, or a letter whose small form is further up.
    const char* FoldOther(const char* pos, const char* end) {
        const Utf8Character character = ReadUtf8Character(pos, end);
        char* const behind = WriteUtf8(FoldCharacter(character.code_point, options_), out_);
        const bool grew = static_cast<std::size_t>(behind - out_) > character.length;
        out_ = behind;
        pos += character.length;
        if (grew) MakeRoom(static_cast<std::size_t>(end - pos));
        return pos;
    }

    void MakeRoom(std::size_t left) {
        const auto written = static_cast<std::size_t>(out_ - folded_.data());
        if (folded_.size() - written >= left + kRoom) return;
        folded_.resize(written + left + left / 2 + 2 * kRoom);
        out_ = folded_.data() + written;
    }

    const FoldOptions& options_;
    const AsciiForms& ascii_forms_;
    std::string folded_;
    char* out_ = nullptr;
};

}  // namespace

std::string Fold(std::string_view text, const FoldOptions& options) {
    if (!options.blanks) return RunFolder(options).Fold(text);
    FoldWriter writer(text.size());
    const AsciiForms& ascii_forms = AsciiFormsFor(options);
    for (CharacterCursor cursor{text, {}}; cursor.Advance();) {
        const char32_t c = cursor.item.code_point;
        writer.Append(c < 0x80 ? ToByte(ascii_forms[c]) : FoldCharacter(c, options));
    }
    return writer.Take();
}

}  // namespace textkit
