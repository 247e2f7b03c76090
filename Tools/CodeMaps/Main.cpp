// codemaps: makes, prints and checks the data file that the library's conversions and its encoding detector load.
//
//     codemaps build GBK_GRID BIG5_GRID PATTERNS OUT    compiles the readable files of Data/; checks what it wrote
//     codemaps print FILE                               any data file back in readable form, on standard output
//     codemaps embed FILE                               the same as C++ source, on standard output
//     codemaps check FILE                               one line a fault, exit status 1 if there is any

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "CodeMaps/DataFileTool.h"

namespace {

int Check(const char* path) {
    const std::vector<std::string> faults = tools::FindFaults(tools::ReadDataFile(path).records);
    for (const std::string& fault : faults) std::cerr << path << ": " << fault << '\n';
    return faults.empty() ? 0 : 1;
}

int Build(char** paths) {
    const tools::CodeToUnicode gbk = tools::ReadGrid(paths[0]), big5 = tools::ReadGrid(paths[1]);
    tools::DataFile data;
    data.gbk = tools::MapFromGrid(gbk);
    data.big5 = tools::MapFromGrid(big5);
    std::vector<int> record_of;
    data.records = tools::Automaton(tools::ReadPatterns(paths[2])).Pack(record_of);
    tools::WriteDataFile(paths[3], data);

    const tools::DataFile written = tools::ReadDataFile(paths[3]);
    if (tools::GridFromMap(written.gbk) != gbk || tools::GridFromMap(written.big5) != big5) {
        std::cerr << paths[3] << ": a map does not give back its grid\n";
        return 1;
    }
    return Check(paths[3]);
}

}  // namespace

int main(int argc, char** argv) try {
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "build" && argc == 6) return Build(argv + 2);
    if (command == "check" && argc == 3) return Check(argv[2]);
    if ((command == "print" || command == "embed") && argc == 3) {
        const auto print = command == "print" ? tools::PrintDataFile : tools::PrintSource;
        print(std::cout, tools::ReadDataFile(argv[2]));
        std::cout.flush();
        return std::cout.good() ? 0 : 1;
    }
    std::cerr << "usage: codemaps build GBK_GRID BIG5_GRID PATTERNS OUT | print FILE | embed FILE | check FILE\n";
    return 2;
} catch (const std::exception& error) {
    std::cerr << "codemaps: " << error.what() << '\n';
    return 1;
}
