#include "DataFile.h"

#include <cstdlib>
#include <filesystem>

namespace pagetext {

std::string FindDataFile(const char* argv0) {
    namespace fs = std::filesystem;
    if (const char* named = std::getenv("UTILITY_CODEMAPS"); named != nullptr && *named != '\0') return named;
    std::error_code error;
    fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) program = fs::absolute(argv0, error);
    const fs::path folder = program.parent_path();
    for (const fs::path& candidate :
         {folder / "codemaps.dat", folder / "../share/utility/codemaps.dat", folder / "../Data/codemaps.dat",
          fs::path(PAGETEXT_INSTALLED_CODEMAPS)}) {
        if (fs::exists(candidate, error)) return candidate.string();
    }
    return {};
}

}  // namespace pagetext
