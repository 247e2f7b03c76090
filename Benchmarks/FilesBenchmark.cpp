// Files read and copied, against read and write with the same buffer.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Common/Contest.h"
#include "Files/FileCopying.h"
#include "Files/FileReader.h"

namespace {

using namespace bench;

// A file of `bytes` bytes in a folder that goes when the program ends.
std::string FileOf(std::size_t bytes) {
    struct Folder {
        std::filesystem::path path = std::filesystem::temp_directory_path() / ("files-" + std::to_string(getpid()));
        Folder() { std::filesystem::create_directory(path); }
        ~Folder() { std::filesystem::remove_all(path); }
    };
    static const Folder folder;
    const std::string path = folder.path / std::to_string(bytes);
    if (!std::filesystem::exists(path)) std::ofstream(path, std::ios::binary) << Text(Kind::kChinese, "GBK", bytes);
    return path;
}

std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Asks for the size, as ours does.
std::size_t SizeOf(int file) {
    const off_t size = lseek(file, 0, SEEK_END);
    lseek(file, 0, SEEK_SET);
    return static_cast<std::size_t>(size);
}

struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t size;
};

Block ReadByRead(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY);
    Block block{nullptr, SizeOf(file)};
    block.bytes.reset(new char[block.size + 1]);
    for (std::size_t got = 0; got < block.size;)
        got += static_cast<std::size_t>(read(file, block.bytes.get() + got, block.size - got));
    block.bytes[block.size] = '\0';
    close(file);
    return block;
}

void AddReading(std::size_t bytes) {
    const std::string path = FileOf(bytes);
    const auto content = [path] { return ContentOf(path); };
    const auto text_of = [](const Block& block) { return std::string(block.bytes.get(), block.size); };
    Contest("ReadFile-buffer", Kind::kChinese, bytes, bytes, content)
        .Add(
            "ours",
            [path] {
                return [path] {
                    char* buffer = nullptr;
                    const std::size_t size = ReadFile(path.c_str(), &buffer, 0, 0, true);
                    return Block{std::unique_ptr<char[]>(buffer), size};
                };
            },
            text_of)
        .Add(
            "read", [path] { return [path] { return ReadByRead(path); }; }, text_of);
    // Into a string that is new, and so without bytes to overwrite.
    Contest("ReadFile-string", Kind::kChinese, bytes, bytes, content)
        .Add("ours",
             [path] {
                 return [path] {
                     std::string text;
                     ReadFile(path.c_str(), text, 0, 0, true);
                     return text;
                 };
             })
        .Add("read", [path] {
            return [path] {
                const int file = open(path.c_str(), O_RDONLY);
                std::string text(SizeOf(file), '\0');
                for (std::size_t got = 0; got < text.size();)
                    got += static_cast<std::size_t>(read(file, text.data() + got, text.size() - got));
                close(file);
                return text;
            };
        });
}

void AddCopying(std::size_t bytes, std::size_t buffer_size) {
    const std::string path = FileOf(bytes), copy = path + "-copy";
    const auto content = [path] { return ContentOf(path); };
    const auto text_of = [copy](int) { return ContentOf(copy); };
    Contest("FileCopy-" + NameOfSize(buffer_size), Kind::kChinese, bytes, bytes, content)
        .Add(
            "ours",
            [=] {
                return [=] {
                    FileCopy(path.c_str(), copy.c_str(), buffer_size);
                    return 0;
                };
            },
            text_of)
        .Add(
            "read-write",
            [=] {
                return [=] {
                    const std::unique_ptr<char[]> buffer(new char[buffer_size]);
                    const int from = open(path.c_str(), O_RDONLY),
                              to = open(copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
                    ssize_t got;
                    while ((got = read(from, buffer.get(), buffer_size)) > 0)
                        if (write(to, buffer.get(), static_cast<std::size_t>(got)) != got) break;
                    close(from);
                    close(to);
                    return 0;
                };
            },
            text_of);
}

}  // namespace

void bench::SetUpContests() {
    for (const std::size_t bytes :
         {std::size_t{1} << 10, std::size_t{64} << 10, std::size_t{1} << 20, std::size_t{16} << 20}) {
        AddReading(bytes);
        for (const std::size_t buffer_size : {std::size_t{4} << 10, std::size_t{64} << 10, std::size_t{1} << 20})
            AddCopying(bytes, buffer_size);
    }
}
