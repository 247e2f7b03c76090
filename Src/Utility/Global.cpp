#include "Utility/Global.h"

#include <mutex>
#include <utility>

#include "Internal/EarlyInit.h"
#include "Internal/LastError.h"

UTILITY_EARLY_INIT std::string g_sLastErrorMessage;
int g_nEncodeType = 0;
int g_nLangType = 1;
bool g_bLog = true;
UTILITY_EARLY_INIT std::string g_sDefaultDir;
CBufferManager* g_pBufManager = nullptr;

namespace utility::internal {

namespace {
std::mutex last_error_mutex;  // constant-initialised, so it may be locked at any time
}

void SetLastErrorMessage(std::string gbk_message) {
    const std::lock_guard<std::mutex> lock(last_error_mutex);
    g_sLastErrorMessage = std::move(gbk_message);
}

std::string LastErrorMessage() {
    const std::lock_guard<std::mutex> lock(last_error_mutex);
    return g_sLastErrorMessage;
}

}  // namespace utility::internal
