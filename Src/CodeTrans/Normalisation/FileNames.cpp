#include "CodeTrans/Normalisation/FileNames.h"

#include <unistd.h>

#include <utility>

#include "CodeTrans/Primitives/LocaleRoute.h"
#include "Utility/Global.h"

namespace {

bool Exists(const char* name) {
    return access(name, F_OK) == 0;
}

}  // namespace

bool GetAnsiFilename(const char* name, std::string& found, bool skip_check) {
    if (!Exists(name)) {
        std::string gbk_name;  // not `found`, which may own the name
        UTF8ToANSI(name, gbk_name);
        if (skip_check || Exists(gbk_name.c_str())) {
            found = std::move(gbk_name);
            return true;
        }
    }
    found = name;
    return false;
}

const char* GetDefaultPath(const char* path) {
    if (path != nullptr && *path != '\0') {
        GetAnsiFilename(path, g_sDefaultDir, false);
    } else {
        char directory[1000];
        g_sDefaultDir = getcwd(directory, sizeof directory) != nullptr ? directory : "";
    }
    return g_sDefaultDir.c_str();
}
