#include "Utility/Files/WordReader.h"

#include <utility>

#include "Utility/StringToolkit/Splitting.h"

std::size_t ReadNWord(std::FILE* stream, int max_words, std::vector<std::string>& words) {
    char line[10240];
    std::vector<std::string> line_words;
    int taken = 0;
    while (std::fgets(line, sizeof line, stream) != nullptr && taken < max_words) {
        GetStrVector(line, "\t ", line_words);
        for (std::string& word : line_words) {
            if (taken == max_words) break;
            words.push_back(std::move(word));
            ++taken;
        }
    }
    return words.size();
}
