// Where a host finds codemaps.dat: the first of these that is there, or an empty name.
#include <cstdlib>
#include <filesystem>
#include <string>

// `argument` is what the user gave, or null; `installed` the place that the build was told (Utility_CODEMAPS in CMake,
// pkg-config --variable=codemaps utility).
inline std::string FindCodeMaps(const char* argument, const char* installed) {
    namespace fs = std::filesystem;
    std::error_code none;  // names that cannot be looked at are not there
    if (argument != nullptr) return argument;
    if (const char* variable = std::getenv("UTILITY_CODEMAPS")) return variable;
    // Beside the program, also when it is moved with its data. Linux tells where it runs from; elsewhere this is skipped.
    const fs::path beside = fs::read_symlink("/proc/self/exe", none).parent_path() / "codemaps.dat";
    for (const fs::path& path : {beside, fs::path(installed)})
        if (fs::exists(path, none)) return path.string();
    return "";
}
