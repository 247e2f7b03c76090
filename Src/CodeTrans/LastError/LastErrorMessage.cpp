#include "CodeTrans/LastError/LastErrorMessage.h"

#include <cstring>
#include <memory>
#include <string>

#include "CodeTrans/Primitives/LocaleRoute.h"
#include "Internal/LastError.h"
#include "Utility/Global.h"
#include "Utility/Runtime/BufferManager.h"

char* GetLastErrorMsg() {
    constexpr int kUtf8 = 1;
    std::string message = utility::internal::LastErrorMessage();
    if (g_nEncodeType == kUtf8) ANSIToUTF8(message.c_str(), message);
    std::unique_ptr<char[]> copy(new char[message.size() + 1]);
    std::memcpy(copy.get(), message.c_str(), message.size() + 1);
    if (g_pBufManager != nullptr) g_pBufManager->AddBuffer(copy.get());
    return copy.release();
}
