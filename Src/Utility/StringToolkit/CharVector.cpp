#include "Utility/StringToolkit/CharVector.h"

#include "Internal/CharacterStep.h"

using utility::internal::DoubleByteStep;
using utility::internal::Utf8Step;

std::size_t Str2CharVector(const char* text, std::vector<std::string>& chars, bool utf8) {
    chars.clear();
    if (text == nullptr) return 0;
    for (std::size_t step = 0; *text != '\0'; text += step) {
        step = utf8 ? Utf8Step(text) : DoubleByteStep(text);
        chars.emplace_back(text, step);
    }
    return chars.size();
}
