#include "Detector/Samples.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

namespace tools {

namespace {

// How much each kind of text counts. Every character, common or not, stands for names
// and rare words; the other scripts of UTF-8 for pages that hold no Chinese.
constexpr double kRunningText = 0.49, kWords = 0.48, kEveryCharacter = 0.02, kSymbols = 0.01;
constexpr double kOtherScripts = 0.02;

template <typename Items>
void Shuffle(Items& items, Random& random) {
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[random.Below(i)]);
}

// A character of the pictures of U+1F000 to U+1FAFF, as a surrogate pair; mostly a common one.
std::u16string DrawPicture(Random& random) {
    constexpr std::pair<unsigned, unsigned> kRanges[] = {{0x1F600, 0x1F64F}, {0x1F600, 0x1F64F}, {0x1F440, 0x1F49F},
                                                         {0x1F300, 0x1F5FF}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
                                                         {0x1F000, 0x1FAFF}};
    const auto& range = kRanges[random.Below(std::size(kRanges))];
    const auto picture = range.first + static_cast<unsigned>(random.Below(range.second - range.first + 1));
    return {static_cast<char16_t>(0xD7C0 + (picture >> 10)), static_cast<char16_t>(0xDC00 | (picture & 0x3FF))};
}

// Running text made of words, each as often as its frequency asks for, with punctuation, line ends and, where the
// encoding has them, pictures among them.
std::u16string DrawWords(const TextFile& file, Random& random) {
    constexpr std::uint64_t kDrawn = 1'000'000, kWordsPerMark = 7, kWordsPerPicture = 80;
    constexpr std::u16string_view kMarks = u"，，，，，。。。、、：；！？“”（）《》…\n\n";
    std::uint64_t total = 0;
    for (const auto& word : file.words) total += word.second;
    std::vector<const std::u16string*> drawn;
    std::uint64_t up_to = random.Below(total / kDrawn + 1);
    for (const auto& [word, frequency] : file.words)
        for (up_to += frequency * kDrawn; up_to >= total; up_to -= total) drawn.push_back(&word);
    Shuffle(drawn, random);
    std::u16string text;
    for (const std::u16string* word : drawn) {
        text += *word;
        if (random.Below(kWordsPerMark) == 0) text += kMarks[random.Below(kMarks.size())];
        if (random.Below(kWordsPerPicture) != 0) continue;
        const std::u16string picture = DrawPicture(random);
        for (auto repeated = random.Below(3) + 1; repeated > 0; --repeated) text += picture;
    }
    return text;
}

// Each character of the grid several times in random order, so that each meets many neighbours; twice as often those
// that the standard ranks as common.
std::u16string DrawEveryCharacter(const CodeToUnicode& grid, bool traditional, Random& random) {
    constexpr int kRounds = 20;
    std::u16string characters, text;
    for (const auto& [code, character] : grid) {
        const bool common = traditional ? code >= 0xA440 && code < 0xC680 : code >= 0xB0A1 && (code & 0xFF) >= 0xA1;
        characters += character;
        if (common) characters += character;
    }
    for (int round = 0; round < kRounds; ++round) {
        Shuffle(characters, random);
        text += characters;
    }
    return text;
}

// Symbols of the character set in rows, and frames, as plain text draws its tables and rules.
std::u16string DrawSymbols(const CodeToUnicode& grid, Random& random) {
    constexpr int kRounds = 20, kFramePieces = 30'000;
    constexpr std::u16string_view kFrames = u"────────││││─┼├┤┬┴┌┐└┘━━━┃┃╋┏┓┗┛═══║║╬╔╗╚╝╠╣■□●○★☆※…——·";
    std::u16string symbols, text;
    for (const auto& code : grid)
        if (!IsHan(code.second)) symbols += code.second;
    for (int round = 0; round < kRounds; ++round)
        for (const char16_t symbol : symbols) text += std::u16string(1 + random.Below(8), symbol) + u' ';
    for (int piece = 0; piece < kFramePieces; ++piece) {
        text += std::u16string(1 + random.Below(6), kFrames[random.Below(kFrames.size())]);
        if (random.Below(4) == 0) text += u' ';
    }
    return text;
}

// Words of other scripts, letters drawn by a rough order of their frequency or from a range. Latin with accents and
// Cyrillic come most often.
std::u16string DrawOtherScripts(Random& random) {
    constexpr int kWordsDrawn = 100'000, kWordsPerLine = 12;
    constexpr std::u16string_view kLatin = u"esaitnrulodcmpvqfbghjxyzkw";
    constexpr std::u16string_view kAccents = u"éèàçêùôîâëïûœäöüßåøæñáíóúãõÉÈÀÇÊ«»’“”–";
    constexpr std::u16string_view kCyrillic = u"оеаинтсрвлкмдпуяыьгзбчйхжшюцщэфОНПВСКТИ";
    constexpr std::u16string_view kKana =
        u"のにはとたをがでてしいれさるなからもりきこすまつよどうくっあめけんえやわそみろちひンスルトイリラ";
    constexpr std::pair<char16_t, char16_t> kRanges[] = {{u'α', u'ω'}, {u'א', u'ת'}, {u'ا', u'ي'},
                                                         {u'अ', u'ह'}, {u'ก', u'ฮ'}, {u'가', u'힣'}};
    const auto draw = [&](std::u16string_view letters) {
        return letters[random.Below(random.Below(letters.size()) + 1)];
    };
    std::u16string text;
    for (int word = 0; word < kWordsDrawn; ++word) {
        const auto kind = random.Below(8);
        const auto& range = kRanges[random.Below(std::size(kRanges))];
        for (auto length = 3 + random.Below(6); length > 0; --length) {
            if (kind < 3) {
                text += draw(random.Below(4) == 0 ? kAccents : kLatin);
            } else if (kind < 5) {
                text += draw(kCyrillic);
            } else if (kind < 6) {
                text += draw(kKana);
            } else {
                text += static_cast<char16_t>(range.first + random.Below(range.second - range.first + 1u));
            }
        }
        text += word % kWordsPerLine == 0 ? u'\n' : u' ';
    }
    return text;
}

std::string GroupOf(const std::string& name) {
    return name.substr(0, name.find('_'));
}

}  // namespace

std::vector<Sample> MakeSamples(const std::vector<TextFile>& files, const CodeToUnicode& gbk, const CodeToUnicode& big5,
                                std::uint64_t seed) {
    Random random(seed);
    std::vector<Sample> samples;
    for (const bool traditional : {false, true}) {
        std::map<std::string, std::u16string> groups;
        std::vector<const TextFile*> vocabularies;
        for (const TextFile& file : files) {
            if (file.traditional != traditional) continue;
            if (file.words.empty()) {
                groups[GroupOf(file.name)] += file.text;
            } else {
                vocabularies.push_back(&file);
            }
        }
        double all_groups = 0;
        for (const auto& group : groups) all_groups += std::sqrt(static_cast<double>(group.second.size()));
        for (auto& [name, text] : groups) {
            const double share = std::sqrt(static_cast<double>(text.size())) / all_groups;
            samples.push_back({std::move(text), traditional, false, kRunningText * share});
        }
        for (const TextFile* file : vocabularies)
            samples.push_back(
                {DrawWords(*file, random), traditional, false, kWords / static_cast<double>(vocabularies.size())});
        samples.push_back(
            {DrawEveryCharacter(traditional ? big5 : gbk, traditional, random), traditional, false, kEveryCharacter});
        samples.push_back({DrawSymbols(traditional ? big5 : gbk, random), traditional, false, kSymbols});
        samples.push_back({DrawOtherScripts(random), traditional, true, kOtherScripts});
    }
    return samples;
}

}  // namespace tools
