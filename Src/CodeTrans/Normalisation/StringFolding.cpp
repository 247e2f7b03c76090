#include "CodeTrans/Normalisation/StringFolding.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/EncodedList.h"
#include "Internal/FoldingLists.h"
#include "Internal/FoldingRuns.h"
#include "Utility/Global.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::CharacterFolder;
using utility::internal::FoldInPlace;
using utility::internal::Gbk;
using utility::internal::IsAsciiUpper;
using utility::internal::Join;
using utility::internal::kClosingBracketText;
using utility::internal::kOpeningBracketText;
using utility::internal::kQuotationMarkText;
using utility::internal::kSeparatorText;
using utility::internal::PairIndex;
using utility::internal::PairTable;
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

// The single byte that each pair is folded to, 0 where it stays.
constexpr PairTable<char> kFoldedPairs = [] {
    PairTable<char> folded{};
    const auto add_list = [&folded](std::string_view codes, char byte) {
        for (std::size_t i = 0; i < codes.size(); i += 2)
            folded[PairIndex(ToByte(codes[i]), ToByte(codes[i + 1]))] = byte;
    };
    add_list(kOpeningBrackets.view(), '(');
    add_list(kClosingBrackets.view(), ')');
    add_list(kQuotationMarks.view(), '"');
    add_list(kSeparators.view(), '\t');
    // Row 3 of GB2312 is ASCII with the top bits set.
    const auto add_full_width = [&folded](unsigned byte, unsigned form) {
        folded[PairIndex(0xA3, static_cast<unsigned char>(byte | 0x80))] = ToChar(form);
    };
    for (unsigned byte = '0'; byte <= '9'; ++byte) add_full_width(byte, byte);
    for (unsigned byte = 'a'; byte <= 'z'; ++byte) {
        add_full_width(byte, byte);
        add_full_width(byte - kToLower, byte);
    }
    return folded;
}();

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
    const ByteFolding& folded_bytes = keep_separators ? kFoldedBytesWithSeparators : kFoldedBytes;
    char* end = text + length;
    if (g_nLangType != 0) {
        end = FoldInPlace(text, length, CharacterFolder(kFoldedPairs, folded_bytes));
    } else {
        for (char* byte = text; byte != end; ++byte) *byte = folded_bytes[ToByte(*byte)];
    }
    *end = '\0';
    return static_cast<unsigned long>(end - text);
}

unsigned long zipname_normalization(char* text, unsigned long length, bool keep_separators) {
    return str_normalization(text, length, keep_separators);
}
