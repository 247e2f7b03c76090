// Path names: buffers as large as the comments ask for, parts that make up the whole.

#include <filesystem>

#include "FuzzSupport.h"

namespace {

constexpr std::size_t kRefused = 4096;

std::size_t Need(std::size_t length) {
    return length < kRefused ? length + 1 : 1;
}

void CheckJoining(const std::string& directory, const std::string& name) {
    const std::string joined = directory + '/' + name;
    fuzz::Exact full(Need(joined.size())), absolute(Need(joined.size()));
    FUZZ_CHECK(GetAbsolutePath(directory.c_str(), name.c_str(), absolute.get()) == absolute.get());
    GetFullFileName(full.get(), directory.c_str(), name.c_str());
    FUZZ_CHECK(absolute.Text() == (joined.size() < kRefused ? joined : ""));
    FUZZ_CHECK(directory.empty() ? full.Text() == name || name.size() >= kRefused : full.Text() == absolute.Text());
}

void CheckParts(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    const std::size_t start = separator == std::string::npos ? 0 : separator + 1;
    const std::string name = path.substr(start), stem = name.substr(0, name.find('.'));
    fuzz::Exact directory(start == 0 ? 1000 : Need(start - 1)), file(Need(name.size())), base(Need(stem.size()));
    FUZZ_CHECK(GetRelevatePath(path.c_str(), directory.get(), file.get()) == file.get());
    FUZZ_CHECK(file.Text() == name && (start == 0 || directory.Text() == path.substr(0, start - 1)));
    FUZZ_CHECK(GetFilename(path.c_str(), base.get()) == base.get() && base.Text() == stem);
    fuzz::Exact in_place(path);
    FUZZ_CHECK(GetFilename(in_place.get(), in_place.get()) == base.Text());
    FUZZ_CHECK(getFilePath(path.c_str()) == path.substr(0, start));
    std::string dir, file_name, extension;
    GetPathFile(path.c_str(), dir, file_name, extension);
    FUZZ_CHECK(path.find(file_name) != std::string::npos && path.find(extension) != std::string::npos);
    FUZZ_CHECK(dir == "." || path.compare(0, dir.size(), dir) == 0);
    FUZZ_CHECK(!IsExtIncluded(extension.c_str(), {}) && IsExtIncluded(extension.c_str(), {extension}));
}

// Below a folder of the fuzzer's own, so never upwards.
void CheckFileSystem(std::string path) {
    static const std::string home = fuzz::Folder::File("");
    std::string full = path, found, content;
    std::replace(path.begin(), path.end(), '.', 'd');
    if (path.size() > 200) path.resize(200);
    FUZZ_CHECK(gfn_GetFilePath(home.c_str(), path.c_str(), full) == full.c_str() && full == home + path);
    std::filesystem::current_path(home);
    if (std::filesystem::directory_iterator(home) != std::filesystem::directory_iterator()) {
        for (const auto& entry : std::filesystem::directory_iterator(home)) std::filesystem::remove_all(entry);
    }
    FUZZ_CHECK(!GetAnsiFilename(path.c_str(), found, false) || found != path);
    GetAnsiFilename(path.c_str(), found, true);
    FUZZ_CHECK(GetDefaultPath(path.c_str()) == g_sDefaultDir.c_str());
    FUZZ_CHECK(GetFileContentById(path.c_str(), home.c_str(), content) == nullptr && content.empty());
    IsEnglishTextFile(path.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t repeat = input.Number(20) == 20 ? 300 : 1;  // now and then beyond what is refused
    const std::string directory = input.Text();
    std::string path = input.Text();
    for (std::size_t i = 1, length = path.size(); i < repeat; ++i) path.append(path, 0, length);
    CheckJoining(directory, path);
    CheckJoining(path, directory);
    if (path.size() < kRefused) CheckParts(path);
    CheckFileSystem(directory);
    return 0;
}
