#ifndef UTILITY_TOOLS_DATAFILETOOL_H
#define UTILITY_TOOLS_DATAFILETOOL_H

// The code-map data file as the tools see it: reading, writing, checking, printing.

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "Common/CharacterGrid.h"
#include "Detector/Automaton.h"

namespace tools {

using CodeMap = std::array<std::uint16_t, utility::internal::kMapEntries>;

struct DataFile {
    CodeMap gbk{};
    CodeMap big5{};
    Records records;
};

// Throws std::runtime_error where a code lies outside the map or shares its place with another.
CodeMap MapFromGrid(const CodeToUnicode& codes);
CodeToUnicode GridFromMap(const CodeMap& map);

// Throw std::runtime_error when the file cannot be read, written, or is short.
DataFile ReadDataFile(const std::filesystem::path& path);
void WriteDataFile(const std::filesystem::path& path, const DataFile& data);

// C++ source of the Big5 map and of the automaton, for the library that has them compiled in.
void PrintSource(std::ostream& out, const DataFile& data);

// Both maps as grids, then one line a state of the automaton.
void PrintDataFile(std::ostream& out, const DataFile& data);

}  // namespace tools

#endif
