// Runs a fuzz target over files, or the files of folders, without the fuzzer: the targets are built and the corpus is
// replayed by the tests, so that neither can rot.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "FuzzSupport.h"

namespace {

void Replay(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t files = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path = argv[i];
        if (!std::filesystem::is_directory(path)) {
            Replay(path);
            ++files;
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
            if (!entry.is_regular_file()) continue;
            Replay(entry.path());
            ++files;
        }
    }
    std::cerr << files << " inputs replayed\n";
    return files == 0 ? 1 : 0;
}
