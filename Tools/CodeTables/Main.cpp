// codetables: makes the readable grids in Data/ from published mapping tables, and the library's Unicode-to-GBK table
// from the grid.
//
//     codetables import-pairs FILE     lines "D6D0<TAB>U+4E2D"; writes a grid to standard output
//     codetables import-index FILE     a WHATWG Big5 index, lines "POINTER<TAB>0x4E2D<TAB>…"; likewise. Code points
//                                      beyond the Basic Multilingual Plane are left out.
//     codetables import-plane-2 FILE   the same index, its code points within plane 2 alone
//     codetables generate GRID         writes Src/CodeTrans/Tables/CodeTableRows.inc to standard output
//     codetables plane-2 GRID          writes the codes of a grid of plane 2 as entries of an array

#include <array>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "Common/CharacterGrid.h"

namespace {

using tools::CodeToUnicode;

constexpr char kGbkComment[] =
    "# Code page 936 (GBK): the 21,791 double-byte codes and their characters.\n"
    "# Origin: the published mapping of code page 936; these are facts, not a copy of a file.\n"
    "# Code A1A1 is the ideographic space, U+3000. Beside these codes, 00 to 7F map to themselves and 80 is "
    "U+20AC.\n"
    "# 16 codes a line, '.' where there is none. Made by `codetables import-pairs`.\n";
constexpr char kBig5Comment[] =
    "# Big5 with its extensions, as browsers decode it: the 16,877 codes within the Basic Multilingual "
    "Plane.\n"
    "# Origin: the Big5 index of the WHATWG Encoding Standard (https://encoding.spec.whatwg.org/), "
    "2024-09-18,\n"
    "# copyright WHATWG, CC BY 4.0 (BSD 3-Clause where incorporated into source code); put into this form by "
    "us.\n"
    "# Code A140 is the ideographic space, U+3000.\n"
    "# 16 codes a line, '.' where there is none. Made by `codetables import-index`.\n";

constexpr unsigned kPlane = 2;
constexpr char kBig5Plane2Comment[] =
    "# The 1,713 codes of Big5 beyond the Basic Multilingual Plane, all of them within plane 2.\n"
    "# Origin: as big5.txt. 16 codes a line, '.' where there is none. Made by `codetables import-plane-2`.\n";

std::ifstream Open(const char* path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(std::string(path) + ": cannot be opened");
    return in;
}

CodeToUnicode ImportPairs(const char* path) {
    std::ifstream in = Open(path);
    CodeToUnicode codes;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        unsigned code = 0, code_point = 0;
        // NOLINTNEXTLINE(cert-err34-c): too few digits to overflow
        if (std::sscanf(line.c_str(), "%4x U+%4x", &code, &code_point) != 2) throw std::runtime_error(line);
        codes[code] = static_cast<char16_t>(code_point);
    }
    return codes;
}

// Pointer p of the index stands for lead byte p / 157 + 0x81 and the trail byte of rank p mod 157, the trail bytes
// being 40 to 7E and A1 to FE.
CodeToUnicode ImportIndex(const char* path, unsigned plane) {
    constexpr unsigned kTrailsPerLead = 157, kLowTrails = 0x3F;
    std::ifstream in = Open(path);
    CodeToUnicode codes;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        unsigned pointer = 0, code_point = 0;
        // NOLINTNEXTLINE(cert-err34-c): the check behind it holds for any number
        if (std::sscanf(line.c_str(), "%u 0x%6x", &pointer, &code_point) != 2) throw std::runtime_error(line);
        const unsigned lead = pointer / kTrailsPerLead + 0x81;
        if (lead > 0xFE) throw std::runtime_error(line);
        const unsigned rank = pointer % kTrailsPerLead;
        const unsigned trail = rank + (rank < kLowTrails ? 0x40 : 0x62);
        if (code_point >> 16 == plane) codes[lead << 8 | trail] = static_cast<char16_t>(code_point);
    }
    return codes;
}

void Generate(const CodeToUnicode& gbk) {
    constexpr unsigned kPerRow = 16;
    std::array<unsigned, 0x10000> table{};
    for (unsigned ascii = 0; ascii < 0x80; ++ascii) table[ascii] = ascii;
    for (const auto& [code, code_point] : gbk) table[code_point] = code;
    table[0x20AC] = 0x80;
    std::printf(
        "// Generated from Data/gbk.txt by `codetables generate`; do not edit. The target `code_table_rows` "
        "makes it anew.\n"
        "// 65,536 entries, 16 a row: the GBK code of each code point, 0 where there is none.\n");
    for (unsigned row = 0; row < table.size(); row += kPerRow) {
        std::printf("/* %04X */ ", row);
        for (unsigned i = 0; i < kPerRow; ++i) std::printf(table[row + i] == 0 ? "0," : "0x%04X,", table[row + i]);
        std::printf("\n");
    }
}

void GeneratePlane2(const CodeToUnicode& codes) {
    constexpr int kPerRow = 8;
    std::printf("// Made from a grid by `codetables plane-2`: code, low 16 bits of the code point; by code.\n");
    int written = 0;
    for (const auto& [code, low] : codes)
        std::printf("{0x%04X, 0x%04X},%s", code, unsigned{low}, ++written % kPerRow == 0 ? "\n" : " ");
    std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) try {
    const std::string command = argc == 3 ? argv[1] : "";
    if (command == "import-pairs") {
        tools::WriteGrid(std::cout, kGbkComment, ImportPairs(argv[2]));
    } else if (command == "import-index") {
        tools::WriteGrid(std::cout, kBig5Comment, ImportIndex(argv[2], 0));
    } else if (command == "import-plane-2") {
        tools::WriteGrid(std::cout, kBig5Plane2Comment, ImportIndex(argv[2], kPlane), kPlane);
    } else if (command == "generate") {
        Generate(tools::ReadGrid(argv[2]));
    } else if (command == "plane-2") {
        GeneratePlane2(tools::ReadGrid(argv[2], kPlane));
    } else {
        std::cerr << "usage: codetables import-pairs FILE | import-index FILE | import-plane-2 FILE | generate GRID | "
                     "plane-2 GRID\n";
        return 2;
    }
    std::cout.flush();
    return std::cout.good() && std::fflush(stdout) == 0 ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "codetables: " << error.what() << '\n';
    return 1;
}
