#include "Utility/Files/FileQueries.h"

#include <sys/stat.h>

#include <memory>

#include "Utility/ChineseText/EnglishText.h"
#include "Utility/Files/FileReader.h"

std::size_t GetFileLinesCount(std::FILE* stream) {
    (void)std::fseek(stream, 0, SEEK_SET);
    char piece[1000];
    std::size_t count = 0;
    while (std::fgets(piece, sizeof piece, stream) != nullptr) ++count;
    (void)std::fseek(stream, 0, SEEK_SET);
    return count;
}

long get_file_size(char const* path) {
    struct stat status;
    return stat(path, &status) == 0 ? status.st_size : -1;
}

bool IsEnglishTextFile(char const* path) {
    char* bytes = nullptr;
    const std::size_t size = ReadFile(path, &bytes, 0, 0, true);
    const std::unique_ptr<char[]> text(bytes);
    return size != 0 && IsEnglishText(text.get());
}
