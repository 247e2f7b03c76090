// charactertables: turns Data/characters.txt and Data/case-folding.txt into the rows of C++ tables, on standard output.
//
//     charactertables classes FILE     ranges of code points of one class: {0x0041, 0x005A, kLetter},
//     charactertables folding FILE     ranges folded alike: first, last, step, what to add: {0x0041, 0x005A, 1, 32},

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

unsigned long CodePoint(const std::string& digits) {
    std::size_t read = 0;
    const unsigned long c = std::stoul(digits, &read, 16);
    if (read != digits.size() || c > 0x10FFFF) throw std::runtime_error("expected a code point: " + digits);
    return c;
}

// The lines of a file that are neither empty nor comments, in words.
std::vector<std::vector<std::string>> ReadWords(const std::string& name) {
    std::ifstream in(name);
    if (!in) throw std::runtime_error(name + ": cannot be opened");
    std::vector<std::vector<std::string>> lines;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        lines.emplace_back();
        for (std::string word; words >> word;) lines.back().push_back(word);
    }
    return lines;
}

// The class of CharacterClass for a line's category.
std::string ClassOf(const std::vector<std::string>& words) {
    if (words.size() == 3 && words[2] == "Han") return "kHan";
    static const std::map<std::string, std::string> kClasses = {
        {"Nd", "kDigit"}, {"Zs", "kSpace"}, {"Zl", "kSpace"},      {"Zp", "kSpace"}, {"L", "kLetter"},
        {"M", "kLetter"}, {"N", "kNumber"}, {"P", "kPunctuation"}, {"S", "kSymbol"}, {"C", "kControl"},
    };
    const std::string& category = words.at(1);
    auto found = kClasses.find(category);
    if (found == kClasses.end()) found = kClasses.find(category.substr(0, 1));
    if (found == kClasses.end()) throw std::runtime_error("no such category: " + category);
    return found->second;
}

// Of the control characters some are blanks: tab to carriage return, and next line.
std::string ClassOfControl(unsigned long c) {
    return (c >= 0x09 && c <= 0x0D) || c == 0x85 ? "kSpace" : "kControl";
}

void PrintClasses(const std::string& name) {
    struct Row {
        unsigned long first, last;
        std::string kind;
    };
    std::vector<Row> rows;
    const auto add = [&](unsigned long first, unsigned long last, const std::string& kind) {
        if (!rows.empty() && first <= rows.back().last) throw std::runtime_error("not in ascending order");
        if (!rows.empty() && first == rows.back().last + 1 && kind == rows.back().kind) {
            rows.back().last = last;
        } else {
            rows.push_back({first, last, kind});
        }
    };
    for (const auto& words : ReadWords(name)) {
        const std::string& range = words.at(0);
        const std::size_t dots = range.find("..");
        if (dots == std::string::npos) throw std::runtime_error("expected a range: " + range);
        const unsigned long first = CodePoint(range.substr(0, dots)), last = CodePoint(range.substr(dots + 2));
        if (words.at(1) == "Cc") {
            for (unsigned long c = first; c <= last; ++c) add(c, c, ClassOfControl(c));
        } else {
            add(first, last, ClassOf(words));
        }
    }
    for (const Row& row : rows) std::printf("{0x%04lX, 0x%04lX, %s},\n", row.first, row.last, row.kind.c_str());
}

void PrintFolding(const std::string& name) {
    struct Row {
        unsigned long first, last, step;
        long offset;
    };
    std::vector<Row> rows;
    for (const auto& words : ReadWords(name)) {
        const unsigned long c = CodePoint(words.at(0));
        const long offset = static_cast<long>(CodePoint(words.at(1))) - static_cast<long>(c);
        if (!rows.empty() && c <= rows.back().last) throw std::runtime_error("not in ascending order: " + words[0]);
        Row* const row = rows.empty() ? nullptr : &rows.back();
        // Capital and small letters stand in two blocks, or by turns.
        const unsigned long step = row == nullptr ? 0 : c - row->last;
        if (row != nullptr && offset == row->offset && step <= 2 && (row->first == row->last || step == row->step)) {
            row->last = c;
            row->step = step;
        } else {
            rows.push_back({c, c, 1, offset});
        }
    }
    for (const Row& row : rows)
        std::printf("{0x%04lX, 0x%04lX, %lu, %ld},\n", row.first, row.last, row.step, row.offset);
}

}  // namespace

int main(int argc, char** argv) try {
    const std::string command = argc == 3 ? argv[1] : "";
    if (command == "classes") {
        PrintClasses(argv[2]);
    } else if (command == "folding") {
        PrintFolding(argv[2]);
    } else {
        std::cerr << "usage: charactertables classes|folding FILE\n";
        return 2;
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "charactertables: " << error.what() << '\n';
    return 1;
}
