// TextKit.h beyond encodings and pages: characters, sentences, folding, numbers, dates, names, pieces, tokens,
// dictionaries, single items and mail.

#include <TextKit.h>

#include "FuzzSupport.h"

namespace {

// A view into the text, and behind what came before it.
void CheckPlace(std::string_view text, std::string_view piece, std::size_t& pos) {
    FUZZ_CHECK(piece.data() >= text.data() + pos && piece.data() + piece.size() <= text.data() + text.size());
    pos = static_cast<std::size_t>(piece.data() - text.data()) + piece.size();
}

void CheckCharacters(std::string_view text) {
    std::size_t pos = 0, characters = 0;
    for (const textkit::Character& character : textkit::Characters(text)) {
        FUZZ_CHECK(character.bytes.data() == text.data() + pos && !character.bytes.empty());
        CheckPlace(text, character.bytes, pos);
        ++characters;
    }
    FUZZ_CHECK(pos == text.size() && textkit::CountClasses(text).total() == characters);
    pos = 0;
    for (const std::string_view sentence : textkit::Sentences(text)) CheckPlace(text, sentence, pos);
    pos = 0;
    for (const textkit::NumberMatch& number : textkit::Numbers(text)) {
        CheckPlace(text, number.text, pos);
        FUZZ_CHECK(textkit::ParseNumber(number.text) == number.value && number.value.denominator > 0);
    }
    textkit::ParseNumber(text);
    for (unsigned options = 0; options < 64; options += 9) {
        const textkit::FoldOptions fold = {(options & 1) != 0, (options & 2) != 0,  (options & 4) != 0,
                                           (options & 8) != 0, (options & 16) != 0, (options & 32) != 0};
        const std::string folded = textkit::Fold(text, fold);
        FUZZ_CHECK(textkit::IsValidUtf8(folded) && textkit::Fold(folded, fold) == folded);
    }
    const textkit::ForeignName foreign = textkit::MatchForeignName(text);
    FUZZ_CHECK(foreign.share >= 0 && foreign.share <= 1);
    const textkit::PlaceName place = textkit::SplitPlaceName(text);
    FUZZ_CHECK(std::string(place.stem).append(place.suffix) == text);
}

void CheckDates(std::string_view text, std::string_view tzif) {
    const textkit::TimeZone zone = textkit::TimeZone::FromData(tzif).value_or(textkit::TimeZone());
    if (const std::optional<std::time_t> time = textkit::ParseTime(text, zone)) {
        const int year = *textkit::ParseDate(text)->year;
        FUZZ_CHECK(std::abs(zone.ToCivil(*time).year - year) <= 1);
    }
}

void CheckPieces(std::string_view text, std::string_view separator, std::string_view replacement) {
    FUZZ_CHECK(textkit::Join(textkit::Split(text, separator), separator) == text);
    std::size_t count = 0, pos = 0, bytes = 0;
    const std::string replaced = textkit::Replace(text, separator, replacement, &count);
    FUZZ_CHECK(replaced.size() == text.size() + count * replacement.size() - count * separator.size());
    FUZZ_CHECK(replaced == (separator.empty() ? text : textkit::Join(textkit::Split(text, separator), replacement)));
    for (const std::string_view piece : textkit::Split(text, separator, textkit::Empty::kDrop)) {
        CheckPlace(text, piece, pos);
        bytes += piece.size();
    }
    FUZZ_CHECK(bytes + (separator.empty() ? 0 : count * separator.size()) == text.size());
    for (const auto empty : {textkit::Empty::kKeep, textkit::Empty::kDrop}) {
        pos = 0;
        for (const std::string_view piece : textkit::SplitAny(text, separator, empty)) CheckPlace(text, piece, pos);
    }
    pos = 0;
    for (const std::string_view token : textkit::Tokens(text)) {
        FUZZ_CHECK(!token.empty() && textkit::IsValidUtf8(token));
        CheckPlace(text, token, pos);
    }
    const std::string_view trimmed = textkit::Trim(text);
    FUZZ_CHECK(textkit::Trim(trimmed) == trimmed);

    std::vector<std::string_view> words;
    for (const std::string_view word : textkit::Split(replacement, ",")) words.push_back(word);
    const textkit::Dictionary dictionary(words);
    std::size_t longest = 0;
    for (const std::string_view word : words)
        if (text.substr(0, word.size()) == word) longest = std::max(longest, word.size());
    const textkit::Dictionary::Match match = dictionary.Longest(text);
    FUZZ_CHECK(match.length == longest);
    FUZZ_CHECK(longest == 0 ? match.index == textkit::kNoPosition : words[match.index] == text.substr(0, longest));
}

void CheckItems(std::string_view text, std::string_view name, std::string_view attribute) {
    for (const auto& item : {textkit::XmlItem(text, name), textkit::XmlAttribute(text, name, attribute)}) {
        std::size_t pos = 0;
        if (item) CheckPlace(text, *item, pos);
    }
    if (const auto value = textkit::JsonItem(text, name)) FUZZ_CHECK(value->size() <= 3 * text.size());
    const auto at_signs = std::count(text.begin(), text.end(), '@');
    const auto addresses = textkit::EmailAddresses(text);
    FUZZ_CHECK(addresses.size() <= static_cast<std::size_t>(at_signs));
    for (const textkit::EmailAddress& address : addresses) {
        FUZZ_CHECK(std::count(address.address.begin(), address.address.end(), '@') == 1);
    }
    const std::string decoded = textkit::DecodeWords(text);
    FUZZ_CHECK(!textkit::IsValidUtf8(text) || textkit::IsValidUtf8(decoded));
    if (text.find("=?") == std::string_view::npos) FUZZ_CHECK(decoded == text);
    const textkit::Encoding encoding = textkit::EncodingFromLabel(text);
    FUZZ_CHECK(textkit::EncodingFromLabel(textkit::EncodingName(encoding)) == encoding);
    textkit::DetectPage(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string name = input.Text(), other = input.Text(), rest = input.Rest();
    fuzz::Exact exact(rest.size());  // views need no NUL behind them
    std::copy(rest.begin(), rest.end(), exact.get());
    const std::string_view text(exact.get(), rest.size());
    CheckCharacters(text);
    CheckPieces(text, name, other);
    CheckItems(text, name, other);
    CheckDates(name, text);
    return 0;
}
