#include "Utility/StringToolkit/Similarity.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "Internal/AsciiCase.h"
#include "Internal/CharacterStep.h"
#include "Internal/SubstringSearch.h"

using utility::internal::FindFirst;
using utility::internal::ToByte;

namespace {

// What a byte of a character earns, by where in the other string the character is found.
constexpr double kNowhere = 0.0, kFurtherBack = 0.6, kFurtherOn = 0.9, kAdjacent = 1.0;

enum Finding { kNowhereFound, kFoundFurtherBack, kFoundFurtherOn, kFoundAdjacent };
constexpr double kEarned[] = {kNowhere, kFurtherBack, kFurtherOn, kAdjacent};

// Finds characters in a text of up to as many bytes as Bits has bits. Each byte has a row of bits, one for each place
// where it stands, so that a character of two bytes stands where the row of its lead byte and that of its trail byte,
// moved by one place, agree: all places in one step.
template <typename Bits>
class ShortText {
public:
    explicit ShortText(std::string_view text) {
        Bits place = 1;
        for (const char c : text) {
            rows_[ToByte(c)] |= place;
            place <<= 1;
        }
    }

    // The character is sought from where the last one was found on, which is the start of the text at first.
    Finding Find(std::string_view character) {
        Bits places = rows_[ToByte(character.front())];
        if (character.size() == 2) places &= rows_[ToByte(character.back())] >> 1;
        const Bits behind = places & (0 - last_found_);  // this and all higher places
        const Bits first = behind & (0 - behind);
        const bool is_behind = behind != 0, is_adjacent = first == last_found_ << character.size();
        last_found_ = is_behind ? first : last_found_;
        // In numbers, as no processor would foresee the branches.
        return static_cast<Finding>((places != 0) + is_behind + (is_behind & is_adjacent));
    }

private:
    std::array<Bits, 256> rows_{};
    Bits last_found_ = 1;
};

// The same for a text of any length. What is known is behind which place a character stands no more; the search for one
// that does stand there costs no more than the distance, by which the next search will start further on. Position must
// hold the length of the text.
template <typename Position>
class LongText {
public:
    // Only characters of `sought` will be asked for.
    LongText(std::string_view sought, std::string_view text) : text_(text) {
        for (const char c : sought)
            if (numbers_[ToByte(c)] == 0) numbers_[ToByte(c)] = static_cast<unsigned char>(++count_);
        ends_.resize((count_ + 1) * (count_ + 1));
        for (std::size_t pos = 0; pos < text.size(); ++pos) {
            End(text[pos]) = static_cast<Position>(pos + 1);
            if (pos + 1 < text.size()) End(text[pos], text[pos + 1]) = static_cast<Position>(pos + 1);
        }
    }

    Finding Find(std::string_view character) {
        const std::size_t end = character.size() == 1 ? End(character[0]) : End(character[0], character[1]);
        if (end <= last_found_) return end == 0 ? kNowhereFound : kFoundFurtherBack;
        const std::size_t found = FindFirst(text_, character, last_found_);
        const bool is_adjacent = found == last_found_ + character.size();
        last_found_ = found;
        return is_adjacent ? kFoundAdjacent : kFoundFurtherOn;
    }

private:
    // One more than the last place of a byte or pair, 0 where there is none. Bytes that are not sought share one
    // number.
    Position& End(char byte) { return ends_of_bytes_[ToByte(byte)]; }
    Position& End(char lead, char trail) {
        return ends_[numbers_[ToByte(lead)] * (count_ + 1) + numbers_[ToByte(trail)]];
    }

    std::string_view text_;
    std::array<unsigned char, 256> numbers_{};  // a text without NUL has 255 different bytes at most
    std::size_t count_ = 0;
    std::array<Position, 256> ends_of_bytes_{};
    std::vector<Position> ends_;
    std::size_t last_found_ = 0;
};

template <typename Text>
double ScoreCharacters(const char* a, Text&& b) {
    double score = 0.0;
    for (std::size_t bytes = 0; *a != '\0'; a += bytes) {
        bytes = utility::internal::DoubleByteStep(a);
        score += static_cast<double>(bytes) * kEarned[b.Find({a, bytes})];
    }
    return score;
}

double ScoreCharacters(std::string_view a, std::string_view b) {
    __extension__ using DoubleWord = unsigned __int128;
    if (b.size() <= 64) return ScoreCharacters(a.data(), ShortText<std::uint64_t>(b));
    if (b.size() <= 128) return ScoreCharacters(a.data(), ShortText<DoubleWord>(b));
    if (b.size() <= UINT16_MAX) return ScoreCharacters(a.data(), LongText<std::uint16_t>(a, b));
    return ScoreCharacters(a.data(), LongText<std::size_t>(a, b));
}

}  // namespace

double ComputeSim(const char* a, const char* b) {
    if (a == nullptr && b == nullptr) return 1.0;
    if (a != nullptr && b != nullptr && *a == '\0' && *b == '\0') return 1.0;
    if (a == nullptr || *a == '\0') return 0.5;
    if (b == nullptr || *b == '\0') return 0.0;
    if (utility::internal::CompareIgnoringAsciiCase(a, b) == 0) return 1.0;
    const std::string_view a_text(a), b_text(b);
    const auto a_bytes = static_cast<double>(a_text.size());
    const auto b_bytes = static_cast<double>(b_text.size());
    if (std::strstr(b, a) != nullptr) return a_bytes / b_bytes;
    const double score = ScoreCharacters(a_text, b_text);
    return score / b_bytes * score / a_bytes;
}
