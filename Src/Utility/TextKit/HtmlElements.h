#ifndef UTILITY_TEXTKIT_HTMLELEMENTS_H
#define UTILITY_TEXTKIT_HTMLELEMENTS_H

// What the tags of an HTML element do to the text around them, by name.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Internal/AsciiCase.h"
#include "Internal/Bytes.h"

namespace utility::internal {

enum class Element : std::uint8_t {
    kOther,      // stands between words: a blank
    kInline,     // stands inside a word or sentence: nothing, not even a blank
    kBlock,      // ends the line before and behind it
    kLineBreak,  // ends a line each time
    kVerbatim,   // a block whose blanks and line ends are text
    kImage,      // a blank, and the text that stands for it where it cannot be seen
    kTitle,      // a block without markup in it
    kTextArea,   // a verbatim block without markup in it
    kScript,     // no text in it
    kStyle,      // likewise
};

// A name of at most ten ASCII letters and digits in any case, six bits each; 0 for any other.
constexpr std::uint64_t PackElementName(std::string_view name) {
    if (name.size() > 10) return 0;
    std::uint64_t packed = 0;
    for (const char c : name) {
        const unsigned char byte = ToAsciiLower(ToByte(c));
        if (!IsAsciiLower(byte) && !IsAsciiDigit(byte)) return 0;
        packed = packed << 6 | (IsAsciiDigit(byte) ? byte - '0' + 27u : byte - 'a' + 1u);
    }
    return packed;
}

// An open hash table that the compiler fills.
class ElementTable {
public:
    constexpr ElementTable() {
        Add(kBlocks, Element::kBlock);
        Add(kInlines, Element::kInline);
        Add("br", Element::kLineBreak);
        Add("pre listing xmp", Element::kVerbatim);
        Add("img", Element::kImage);
        Add("title", Element::kTitle);
        Add("textarea", Element::kTextArea);
        Add("script", Element::kScript);
        Add("style", Element::kStyle);
    }
    constexpr Element Find(std::string_view name) const {
        const std::uint64_t packed = PackElementName(name);
        for (std::size_t slot = SlotOf(packed);; slot = (slot + 1) % kSlots)
            if (names_[slot] == packed || names_[slot] == 0) return packed == 0 ? Element::kOther : kinds_[slot];
    }

private:
    static constexpr std::size_t kSlots = 512;
    static constexpr std::string_view kBlocks =
        "address article aside blockquote body center dd details dialog dir div dl dt fieldset figcaption "
        "figure footer form frameset h1 h2 h3 h4 h5 h6 head header hgroup hr html legend li main menu nav ol "
        "optgroup option p search section select summary table tbody tfoot thead tr ul caption";
    static constexpr std::string_view kInlines =
        "a abbr acronym b bdi bdo big cite code data del dfn em font i ins kbd mark nobr q rb ruby s samp "
        "small span strike strong sub sup time tt u var wbr";

    static constexpr std::size_t SlotOf(std::uint64_t packed) {
        return static_cast<std::size_t>(packed * 0x9E3779B97F4A7C15u >> 55);
    }
    constexpr void Add(std::string_view names, Element kind) {
        while (!names.empty()) {
            std::size_t length = 0;
            while (length < names.size() && names[length] != ' ') ++length;
            const std::uint64_t packed = PackElementName(names.substr(0, length));
            std::size_t slot = SlotOf(packed);
            while (names_[slot] != 0) slot = (slot + 1) % kSlots;
            names_[slot] = packed;
            kinds_[slot] = kind;
            names.remove_prefix(length == names.size() ? length : length + 1);
        }
    }

    std::array<std::uint64_t, kSlots> names_{};
    std::array<Element, kSlots> kinds_{};
};

inline constexpr ElementTable kElements;

}  // namespace utility::internal

#endif
