// namedreferences: turns Data/named-references.txt into the rows of a C++ table, on standard output.
//
//     namedreferences FILE      one row a name, in byte order: {"amp;", "\x26"},

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "Internal/Utf8Sequences.h"

namespace {

std::string Row(const std::string& line) {
    std::istringstream words(line);
    std::string name, code_point, text;
    words >> name;
    while (words >> code_point) {
        char bytes[4];
        text.append(bytes, utility::internal::WriteUtf8(
                               static_cast<std::uint32_t>(std::stoul(code_point.substr(2), nullptr, 16)), bytes));
    }
    if (name.empty() || text.empty()) throw std::runtime_error("expected a name and code points: " + line);
    std::string row = "{\"" + name + "\", \"";
    for (const char c : text) {
        char escape[5];
        std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        row += escape;
    }
    return row + "\"},";
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: namedreferences FILE\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) throw std::runtime_error(std::string(argv[1]) + ": cannot be opened");
    std::string previous;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::string name = line.substr(0, line.find(' '));
        if (name <= previous) throw std::runtime_error("not in byte order: " + name);
        std::cout << Row(line) << '\n';
        previous = name;
    }
    return std::cout.flush().good() ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "namedreferences: " << error.what() << '\n';
    return 1;
}
