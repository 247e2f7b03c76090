#include "Detector/Patterns.h"

#include <charconv>
#include <fstream>
#include <stdexcept>

namespace tools {

namespace {

constexpr int kLowestDelta = -9, kHighestDelta = 10, kHighestUtf8Delta = 23;
constexpr int kHighestVerdict = 2047;

void SkipBlanks(std::string_view& text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
}

bool Take(std::string_view& text, char c) {
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
}

bool TakeHexByte(std::string_view& text, unsigned& byte) {
    if (text.size() < 2) return false;
    const auto [end, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
    if (error != std::errc() || end != text.data() + 2) return false;
    text.remove_prefix(2);
    return true;
}

int TakeNumber(std::string_view& text) {
    SkipBlanks(text);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) throw std::runtime_error("expected a number");
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

ByteClass TakeClass(std::string_view& text) {
    ByteClass bytes;
    while (!Take(text, ']')) {
        unsigned first = 0;
        if (!TakeHexByte(text, first)) throw std::runtime_error("expected bytes and ranges up to ]");
        unsigned last = first;
        if (Take(text, '-') && !TakeHexByte(text, last)) throw std::runtime_error("expected the end of a range");
        for (unsigned byte = first; byte <= last; ++byte) bytes.set(byte);
        SkipBlanks(text);
    }
    return bytes;
}

std::vector<ByteClass> TakeBytes(std::string_view& text) {
    std::vector<ByteClass> bytes;
    for (;;) {
        unsigned byte = 0;
        if (Take(text, '[')) {
            bytes.push_back(TakeClass(text));
        } else if (TakeHexByte(text, byte)) {
            bytes.push_back(ByteClass().set(byte));
        } else {
            return bytes;
        }
    }
}

std::string TakeFallback(std::string_view& text) {
    std::string bytes;
    SkipBlanks(text);
    for (unsigned byte = 0; TakeHexByte(text, byte);) bytes += static_cast<char>(byte);
    return bytes;
}

std::string FormatClass(const ByteClass& bytes) {
    std::string text;
    for (unsigned first = 0; first < 256; ++first) {
        if (!bytes[first]) continue;
        unsigned last = first;
        while (last < 255 && bytes[last + 1]) ++last;
        if (!text.empty()) text += ' ';
        text += FormatBytes(std::string(1, static_cast<char>(first)));
        if (last != first) {
            text += last == first + 1 ? ' ' : '-';
            text += FormatBytes(std::string(1, static_cast<char>(last)));
        }
        first = last;
    }
    return bytes.count() == 1 ? text : '[' + text + ']';
}

}  // namespace

Pattern ParsePattern(std::string_view line) {
    Pattern pattern;
    pattern.at_start = Take(line, '^');
    pattern.bytes = TakeBytes(line);
    if (pattern.bytes.empty()) throw std::runtime_error("expected bytes");
    SkipBlanks(line);
    if (Take(line, '=')) {
        pattern.effect = Effect{TakeNumber(line), {}};
    } else if (Take(line, ':')) {
        pattern.effect.emplace();
        for (int& delta : pattern.effect->deltas) delta = TakeNumber(line);
    }
    if (pattern.effect) PackEffect(*pattern.effect);
    SkipBlanks(line);
    if (Take(line, '>')) pattern.fallback = TakeFallback(line);
    SkipBlanks(line);
    if (!line.empty()) throw std::runtime_error("cannot make sense of \"" + std::string(line) + "\"");
    return pattern;
}

std::vector<Pattern> ReadPatterns(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be opened");
    std::vector<Pattern> patterns;
    std::size_t line_number = 0;
    for (std::string line; std::getline(in, line);) {
        ++line_number;
        if (line.empty() || line[0] == '#') continue;
        try {
            patterns.push_back(ParsePattern(line));
        } catch (const std::exception& error) {
            throw std::runtime_error(path.string() + ":" + std::to_string(line_number) + ": " + error.what());
        }
    }
    return patterns;
}

std::string FormatBytes(std::string_view bytes) {
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kHex[byte >> 4];
        text += kHex[byte & 15];
    }
    return text;
}

std::string FormatEffect(const Effect& effect) {
    if (effect.verdict != 0) return " = " + std::to_string(effect.verdict);
    std::string text = ":";
    for (const int delta : effect.deltas) text += ' ' + std::to_string(delta);
    return text;
}

std::string FormatPattern(const Pattern& pattern) {
    std::string line = pattern.at_start ? "^" : "";
    for (const ByteClass& bytes : pattern.bytes) line += FormatClass(bytes);
    if (pattern.effect) line += FormatEffect(*pattern.effect);
    if (pattern.fallback) line += pattern.fallback->empty() ? " >" : " > " + FormatBytes(*pattern.fallback);
    return line;
}

std::int32_t PackEffect(const Effect& effect) {
    int score = 0, weight = 1;
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const int delta = effect.deltas[channel];
        if (delta < kLowestDelta || delta > (channel == kUtf8Channel ? kHighestUtf8Delta : kHighestDelta))
            throw std::runtime_error("a delta is out of range");
        score += (delta + utility::internal::kDeltaOffset) * weight;
        weight *= 20;
    }
    if (score > utility::internal::kScoreMask) throw std::runtime_error("the deltas do not fit together");
    if (effect.verdict < 0 || effect.verdict > kHighestVerdict) throw std::runtime_error("no such verdict");
    return score + effect.verdict * (1 << utility::internal::kVerdictShift);
}

Effect UnpackEffect(std::int32_t value) {
    return {utility::internal::VerdictOf(value), utility::internal::DeltasOf(value)};
}

}  // namespace tools
