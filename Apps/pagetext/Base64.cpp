#include "Base64.h"

#include <array>
#include <cstdint>

namespace pagetext {

namespace {

constexpr std::uint8_t kNoDigit = 64;

constexpr std::array<std::uint8_t, 256> kDigits = [] {
    std::array<std::uint8_t, 256> values = {};
    for (auto& value : values) value = kNoDigit;
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < kAlphabet.size(); ++i)
        values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    return values;
}();

}  // namespace

std::optional<std::string> DecodeBase64(std::string_view text) {
    if (text.size() % 4 == 0) {
        for (int i = 0; i < 2 && !text.empty() && text.back() == '='; ++i) text.remove_suffix(1);
    }
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    int held = 0;  // how many of them are not written yet
    for (const char c : text) {
        const std::uint8_t digit = kDigits[static_cast<unsigned char>(c)];
        if (digit == kNoDigit) return std::nullopt;
        bits = (bits << 6 | digit) & 0xFFFF;
        held += 6;
        if (held < 8) continue;
        held -= 8;
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> held & 0xFF));
    }
    const bool whole = held != 6 && (bits & ((1U << held) - 1)) == 0;
    if (!whole) return std::nullopt;
    return bytes;
}

}  // namespace pagetext
