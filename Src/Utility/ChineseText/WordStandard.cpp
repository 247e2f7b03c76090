#include "Utility/ChineseText/WordStandard.h"

#include <array>
#include <cstring>

#include "Internal/AsciiCase.h"
#include "Internal/ByteSet.h"
#include "Internal/Bytes.h"
#include "Internal/FoldingRuns.h"

namespace {

using utility::internal::ByteSet;
using utility::internal::FoldInPlace;
using utility::internal::IsAsciiDigit;
using utility::internal::IsAsciiLetter;
using utility::internal::PairFolder;
using utility::internal::PairIndex;
using utility::internal::PairTable;
using utility::internal::ToAsciiLower;
using utility::internal::ToByte;
using utility::internal::ToChar;

constexpr bool IsAsciiAlphanumeric(unsigned char byte) {
    return IsAsciiLetter(byte) || IsAsciiDigit(byte);
}

// What a single byte becomes, and what a blank in front of it does; NUL where they are dropped. So is a lone lead byte.
struct ByteForms {
    std::array<unsigned char, 256> own{}, of_blank_in_front{};
};

constexpr ByteForms kByteForms = [] {
    constexpr ByteSet kKept("+-{};\r\n");
    ByteForms forms;
    for (unsigned value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        if (IsAsciiAlphanumeric(byte) || kKept.Contains(byte)) forms.own[value] = ToAsciiLower(byte);
        if (IsAsciiAlphanumeric(byte)) forms.of_blank_in_front[value] = ' ';
    }
    return forms;
}();

// The single byte that each pair becomes; NUL where it stays as it is.
constexpr PairTable<char> kPairForms = [] {
    constexpr unsigned char kFullWidthLead = 0xA3;
    constexpr unsigned kFirstMarkFolded = 0xBB;
    PairTable<char> forms{};
    for (unsigned trail = 0x80; trail < 0x100; ++trail) {
        const auto ascii = static_cast<unsigned char>(trail & 0x7F);
        char& form = forms[PairIndex(kFullWidthLead, static_cast<unsigned char>(trail))];
        if (trail >= kFirstMarkFolded) form = ';';
        if (IsAsciiAlphanumeric(ascii)) form = ToChar(ToAsciiLower(ascii));
    }
    return forms;
}();

// Single bytes are written in any case, and then kept or not: no processor would foresee the branches.
class WordFolder : public PairFolder {
public:
    WordFolder() : PairFolder(kPairForms) {}

    void Ascii8(const char* bytes) {
        char* place = out;
        for (unsigned i = 0; i < 8; ++i) place = ends_[i] = Single(bytes + i, place);
    }
    void TookAscii(unsigned count) {
        if (count > 0) out = ends_[count - 1];
    }
    static char* Single(const char* byte, char* place) {
        const unsigned if_blank = 0 - static_cast<unsigned>(byte[0] == ' ');
        const unsigned form =
            kByteForms.own[ToByte(byte[0])] | (kByteForms.of_blank_in_front[ToByte(byte[1])] & if_blank);
        *place = ToChar(form);
        return place + (form != 0);
    }

private:
    char* ends_[8];  // of the bytes last written
};

}  // namespace

char* WordStandard(char* word) {
    *FoldInPlace(word, std::strlen(word), WordFolder()) = '\0';
    return word;
}
