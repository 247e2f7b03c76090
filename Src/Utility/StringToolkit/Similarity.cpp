#include "Utility/StringToolkit/Similarity.h"

#include <cstring>
#include <string_view>

#include "Internal/AsciiCase.h"
#include "Internal/CharacterStep.h"
#include "Internal/SubstringSearch.h"

using utility::internal::FindFirst;

namespace {

// What a byte of a character earns, by where in the other string the character is found.
constexpr double kAdjacent = 1.0;
constexpr double kFurtherOn = 0.9;
constexpr double kFurtherBack = 0.6;

double ScoreCharacters(const char* a, std::string_view b) {
    double score = 0.0;
    std::size_t last_found = 0;
    for (std::size_t bytes = 0; *a != '\0'; a += bytes) {
        bytes = utility::internal::DoubleByteStep(a);
        const std::string_view character(a, bytes);
        const std::size_t found = FindFirst(b, character, last_found);
        if (found != std::string_view::npos) {
            score += static_cast<double>(bytes) * (found == last_found + bytes ? kAdjacent : kFurtherOn);
            last_found = found;
        } else if (FindFirst(b.substr(0, last_found + bytes - 1), character, 0) != std::string_view::npos) {
            score += static_cast<double>(bytes) * kFurtherBack;
        }
    }
    return score;
}

}  // namespace

double ComputeSim(const char* a, const char* b) {
    if (a == nullptr && b == nullptr) return 1.0;
    if (a != nullptr && b != nullptr && *a == '\0' && *b == '\0') return 1.0;
    if (a == nullptr || *a == '\0') return 0.5;
    if (b == nullptr || *b == '\0') return 0.0;
    if (utility::internal::CompareIgnoringAsciiCase(a, b) == 0) return 1.0;
    const auto a_bytes = static_cast<double>(std::strlen(a));
    const auto b_bytes = static_cast<double>(std::strlen(b));
    if (std::strstr(b, a) != nullptr) return a_bytes / b_bytes;
    const double score = ScoreCharacters(a, b);
    return score / b_bytes * score / a_bytes;
}
