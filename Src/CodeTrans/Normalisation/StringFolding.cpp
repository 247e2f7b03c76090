#include "CodeTrans/Normalisation/StringFolding.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/EncodedList.h"
#include "Internal/FoldingLists.h"
#include "Utility/Global.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::Gbk;
using utility::internal::IsAscii;
using utility::internal::IsAsciiUpper;
using utility::internal::Join;
using utility::internal::kAsciiSeparators;
using utility::internal::kClosingBracketText;
using utility::internal::kOpeningBracketText;
using utility::internal::kQuotationMarkText;
using utility::internal::kSeparatorText;
using utility::internal::RawBytes;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr unsigned kToLower = 'a' - 'A';

constexpr auto kOpeningBrackets = Gbk(kOpeningBracketText);
constexpr auto kClosingBrackets = Gbk(kClosingBracketText);
constexpr auto kQuotationMarks = Gbk(kQuotationMarkText);
// AA A4 is user-defined and has no character.
constexpr auto kSeparators = Join(Gbk(kSeparatorText), RawBytes("\xAA\xA4"));
static_assert(kOpeningBrackets.size() == 4 && kClosingBrackets.size() == 4);
static_assert(kQuotationMarks.size() == 8 && kSeparators.size() == 20);

// The single byte that each double-byte code is folded to, 0 where the code stays: one row of trail bytes for
// each of the three lead bytes that occur.
class PairFolding {
public:
    constexpr PairFolding() {
        AddList(kOpeningBrackets.view(), '(');
        AddList(kClosingBrackets.view(), ')');
        AddList(kQuotationMarks.view(), '"');
        AddList(kSeparators.view(), '\t');
        // Row 3 of GB2312 is ASCII with the top bits set.
        for (unsigned byte = '0'; byte <= '9'; ++byte) full_width_[byte | 0x80] = ToChar(byte);
        for (unsigned byte = 'a'; byte <= 'z'; ++byte) {
            full_width_[byte | 0x80] = ToChar(byte);
            full_width_[(byte - kToLower) | 0x80] = ToChar(byte);
        }
    }

    constexpr char operator()(unsigned char lead, unsigned char trail) const {
        switch (lead) {
            case 0xA1:
                return symbols_[trail];
            case 0xA3:
                return full_width_[trail];
            case 0xAA:
                return user_defined_[trail];
            default:
                return '\0';
        }
    }

private:
    using Row = std::array<char, 256>;

    // A code with another lead byte than these three does not compile.
    constexpr Row& RowOf(unsigned char lead) {
        if (lead == 0xA1) return symbols_;
        if (lead == 0xA3) return full_width_;
        if (lead == 0xAA) return user_defined_;
        throw "there is no row for this lead byte";
    }

    constexpr void AddList(std::string_view codes, char folded) {
        for (std::size_t i = 0; i < codes.size(); i += 2) {
            RowOf(ToByte(codes[i]))[ToByte(codes[i + 1])] = folded;
        }
    }

    Row symbols_{};
    Row full_width_{};
    Row user_defined_{};
};

constexpr PairFolding kPairFolding;

// What each single byte is folded to. The bytes that become tabs are a list, and its terminator with it.
using ByteFolding = std::array<char, 256>;

constexpr ByteFolding FoldBytes(bool keep_separators) {
    ByteSet separators(",/_");
    separators.Add(0);
    ByteFolding folded{};
    for (unsigned value = 0; value < folded.size(); ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const bool is_tab = !keep_separators && separators.Contains(byte);
        folded[value] = is_tab ? '\t' : ToChar(IsAsciiUpper(byte) ? byte + kToLower : byte);
    }
    return folded;
}

constexpr ByteFolding kFoldedBytes = FoldBytes(false), kFoldedBytesWithSeparators = FoldBytes(true);

}  // namespace

unsigned long str_normalization(char* text, unsigned long length, bool keep_separators) {
    if (length == 0) return 0;
    const bool has_pairs = g_nLangType != 0;
    const ByteFolding& folded_bytes = keep_separators ? kFoldedBytesWithSeparators : kFoldedBytes;
    std::size_t write_pos = 0;
    for (std::size_t read_pos = 0; read_pos < length;) {
        const unsigned char byte = ToByte(text[read_pos]);
        if (IsAscii(byte) || !has_pairs || read_pos + 1 == length) {
            text[write_pos++] = folded_bytes[byte];
            read_pos += 1;
            continue;
        }
        const char trail = text[read_pos + 1];
        if (const char folded = kPairFolding(byte, ToByte(trail)); folded != '\0') {
            text[write_pos++] = folded;
        } else {
            text[write_pos++] = ToChar(byte);
            text[write_pos++] = trail;
        }
        read_pos += 2;
    }
    text[write_pos] = '\0';
    return write_pos;
}

unsigned long zipname_normalization(char* text, unsigned long length, bool keep_separators) {
    return str_normalization(text, length, keep_separators);
}
