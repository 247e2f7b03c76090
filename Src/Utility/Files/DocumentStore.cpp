#include "Utility/Files/DocumentStore.h"

#include <cstddef>
#include <string_view>

#include "Utility/Files/FileReader.h"
#include "Utility/Runtime/LogWriter.h"

namespace {

// The path of a document without its extension.
std::string DocumentPath(std::string path, std::string_view id) {
    constexpr std::size_t kGroup = 3;
    for (std::size_t pos = 0; pos < id.size(); pos += kGroup) path.append(1, '/').append(id.substr(pos, kGroup));
    return path;
}

bool ReadWhole(const std::string& path, std::string& content) {
    return ReadFile(path.c_str(), content, 0, 0, true) != 0;
}

}  // namespace

char const* GetFileContentById(char const* id, char const* base_directory, std::string& content) {
    if (id == nullptr || *id == '\0') {
        content.clear();
        return nullptr;
    }
    const std::string path = DocumentPath(base_directory, id);
    const std::string html_path = path + ".html";
    if (ReadWhole(path + ".txt", content) || ReadWhole(html_path, content)) return content.c_str();
    WriteError("Read file by ID fail!", nullptr);
    WriteError(html_path, nullptr);
    return nullptr;
}
