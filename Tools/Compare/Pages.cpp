// compare_pages [-v] PAGE…: what PageText and `w3m -dump` make of HTML pages, token by token: lists what either has and
// the other lacks.
//
// A token is one of Tokens, Chinese ones cut into characters, or one other character that is no blank. How often each
// occurs in a page counts, their order does not. What w3m draws, lines and bullets, is left out. With -v the
// differences of each page are listed, without it the most frequent ones of all pages. w3m reads the page in the
// encoding that DetectPage finds.

#include <TextKit.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using Counts = std::map<std::string, long>;

std::string_view FirstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    return text.substr(0, lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4);
}

void CountCharacters(std::string_view text, long step, Counts& counts) {
    while (!text.empty()) {
        const std::string_view character = FirstCharacter(text);
        if (!textkit::Trim(character).empty()) counts[std::string(character)] += step;
        text.remove_prefix(character.size());
    }
}

// Adds `step` for each token of the text and returns their number.
long CountTokens(const std::string& text, long step, Counts& counts) {
    long tokens = 0;
    std::size_t end = 0;
    for (const std::string_view token : textkit::Tokens(text)) {
        const auto start = static_cast<std::size_t>(token.data() - text.data());
        CountCharacters(std::string_view(text).substr(end, start - end), step, counts);
        end = start + token.size();
        // Words of scripts without blanks are cut elsewhere by a line end.
        if (static_cast<unsigned char>(token[0]) >= 0xE3) {
            CountCharacters(token, step, counts);
        } else {
            counts[std::string(token)] += step;
        }
        ++tokens;
    }
    CountCharacters(std::string_view(text).substr(end), step, counts);
    return tokens;
}

// Box drawing, and the bullets of lists.
bool IsDrawn(std::string_view token) {
    return (token.size() == 3 && token >= "\u2500" && token <= "\u25FF") ||
           std::string_view("•☆★").find(token) != std::string_view::npos;
}

std::string Quoted(const std::string& name) {
    return "'" + textkit::Replace(name, "'", "'\\''") + "'";
}

std::string W3mDump(const std::string& page, std::string_view charset) {
    const std::string command = "w3m -dump -T text/html -cols 2000 -o display_image=0 -I " + std::string(charset) +
                                " -O utf-8 < " + Quoted(page);
    // NOLINTNEXTLINE(cert-env33-c): the shell gets quoted names only
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::error_code error;
    std::string text = pipe == nullptr ? "" : textkit::ReadFile(fileno(pipe), error);
    if (pipe == nullptr || pclose(pipe) != 0 || error) {
        std::cerr << "compare_pages: w3m failed on " << page << '\n';
        std::exit(1);
    }
    return text;
}

long Sum(const Counts& counts, long sign) {
    long sum = 0;
    for (const auto& [token, count] : counts) sum += std::max(sign * count, 0L);
    return sum;
}

void PrintMostFrequent(const Counts& counts, long sign, std::size_t most) {
    std::vector<std::pair<long, std::string>> list;
    for (const auto& [token, count] : counts)
        if (sign * count > 0) list.emplace_back(-sign * count, token);
    std::sort(list.begin(), list.end());
    for (std::size_t i = 0; i < std::min(most, list.size()); ++i)
        std::cout << "    " << -list[i].first << ' ' << list[i].second << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    const bool verbose = argc > 1 && std::string_view(argv[1]) == "-v";
    constexpr std::size_t kMostListed = 40;
    Counts all_lost, all_extra;
    long all_tokens = 0, lost = 0, extra = 0;
    std::printf("  tokens     lost    extra  page\n");
    for (int i = verbose ? 2 : 1; i < argc; ++i) {
        std::error_code error;
        const std::string bytes = textkit::ReadFile(argv[i], error);
        if (error) return std::cerr << argv[i] << ": " << error.message() << '\n', 1;
        const textkit::Encoding encoding = textkit::DetectPage(bytes).encoding;
        const std::string ours = textkit::PageText(textkit::Decode(bytes, encoding).text);
        Counts difference;
        const long tokens = CountTokens(ours, 1, difference);
        CountTokens(W3mDump(argv[i], textkit::EncodingName(encoding)), -1, difference);
        for (auto& [token, count] : difference)
            if (count < 0 && IsDrawn(token)) count = 0;
        std::printf("%8ld %8ld %8ld  %s\n", tokens, Sum(difference, -1), Sum(difference, 1), argv[i]);
        std::fflush(stdout);
        if (verbose) {
            std::cout << "lost:\n";
            PrintMostFrequent(difference, -1, kMostListed);
            std::cout << "extra:\n";
            PrintMostFrequent(difference, 1, kMostListed);
        }
        for (const auto& [token, count] : difference) (count < 0 ? all_lost : all_extra)[token] += count;
        all_tokens += tokens;
        lost += Sum(difference, -1);
        extra += Sum(difference, 1);
    }
    std::printf("%8ld %8ld %8ld  all\n", all_tokens, lost, extra);
    std::fflush(stdout);
    std::cout << "w3m has and PageText lacks:\n";
    PrintMostFrequent(all_lost, -1, kMostListed);
    std::cout << "PageText has and w3m lacks:\n";
    PrintMostFrequent(all_extra, 1, kMostListed);
}
