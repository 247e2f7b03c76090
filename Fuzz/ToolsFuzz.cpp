// Splitting, tokens, mail, items, dictionary: what they give lies in the text, and is as well-formed as the text.

#include <TextKit.h>

#include <vector>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string first = input.Text(), second = input.Text(), rest = input.Rest();
    // In a block of just its size.
    const std::vector<char> block(rest.begin(), rest.end());
    const std::string_view text(block.data(), block.size());

    FUZZ_CHECK(textkit::Join(textkit::Split(text, first), first) == text);
    std::size_t pieces = 0, bytes = 0;
    for (const std::string_view piece : textkit::SplitAny(text, first)) ++pieces, bytes += piece.size();
    FUZZ_CHECK(pieces > 0 && bytes <= text.size());
    const bool valid = textkit::IsValidUtf8(text);
    for (const std::string_view token : textkit::Tokens(text))
        FUZZ_CHECK(!token.empty() && textkit::IsValidUtf8(token));
    const std::string_view trimmed = textkit::Trim(text);
    FUZZ_CHECK(textkit::Trim(trimmed) == trimmed && (!valid || textkit::IsValidUtf8(trimmed)));
    std::size_t count = 0;
    const std::string replaced = textkit::Replace(text, first, second, &count);
    FUZZ_CHECK(replaced.size() + count * first.size() == text.size() + count * second.size());

    FUZZ_CHECK(!valid || textkit::IsValidUtf8(textkit::DecodeWords(text)));
    for (const textkit::EmailAddress& email : textkit::EmailAddresses(text))
        FUZZ_CHECK(email.address.find('@') != std::string::npos && (!valid || textkit::IsValidUtf8(email.name)));
    if (const auto item = textkit::XmlItem(text, first)) FUZZ_CHECK(item->size() < text.size());
    if (const auto value = textkit::XmlAttribute(text, first, second)) FUZZ_CHECK(value->size() < text.size());
    if (const auto value = textkit::JsonItem(text, first)) FUZZ_CHECK(value->size() < text.size());

    std::vector<std::string_view> words;
    for (const std::string_view word : textkit::SplitAny(first, ",")) words.push_back(word);
    const textkit::Dictionary::Match match = textkit::Dictionary(words).Longest(text);
    FUZZ_CHECK((match.length == 0) == (match.index == textkit::kNoPosition));
    FUZZ_CHECK(match.length == 0 || text.substr(0, match.length) == words[match.index]);

    textkit::DetectPage(text);
    return 0;
}
