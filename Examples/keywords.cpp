// The words that pages of whatever encoding have most of, Chinese ones by a list.   keywords WORDS PAGE…
#include <TextKit.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (argc < 3) return std::cerr << "usage: keywords WORDS PAGE…\n", 2;
    std::error_code error;
    const std::string list = textkit::ReadTextFile(argv[1], error).text;  // a word a line, in any encoding and order
    if (error) return std::cerr << argv[1] << ": " << error.message() << '\n', 1;
    const textkit::Pieces lines = textkit::SplitAny(list, "\r\n", textkit::Empty::kDrop);
    const textkit::Dictionary dictionary({lines.begin(), lines.end()});

    std::map<std::string, int> counts;
    for (int i = 2; i < argc; ++i) {
        const textkit::Decoded page = textkit::ReadTextFile(argv[i], error);
        if (error) return std::cerr << argv[i] << ": " << error.message() << '\n', 1;
        const std::string text = textkit::Fold(textkit::PageText(page.text));
        for (std::string_view token : textkit::Tokens(text)) {
            const textkit::Character first = *textkit::Characters(token).begin();
            if (textkit::ClassOf(first.code_point) == textkit::CharacterClass::kLetter) ++counts[std::string(token)];
            if (textkit::ClassOf(first.code_point) != textkit::CharacterClass::kHan) continue;
            while (!token.empty()) {  // the longest word at each place, else one character, which is no keyword
                const std::size_t length = dictionary.Longest(token).length;
                if (length != 0) ++counts[std::string(token.substr(0, length))];
                token.remove_prefix(length != 0 ? length : textkit::Characters(token).begin()->bytes.size());
            }
        }
    }

    std::vector<std::pair<int, std::string>> ranking;
    for (const auto& [word, count] : counts) ranking.emplace_back(-count, word);
    std::sort(ranking.begin(), ranking.end());
    ranking.resize(std::min<std::size_t>(ranking.size(), 10));
    for (const auto& [count, word] : ranking) std::cout << -count << '\t' << word << '\n';
}
