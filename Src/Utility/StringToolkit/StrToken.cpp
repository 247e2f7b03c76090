#include "Utility/StringToolkit/StrToken.h"

#include "Internal/TokenScan.h"

char* StrToken(char* text, const char* delims, char** next) {
    if (text == nullptr) return nullptr;
    while (*text != '\0' && utility::internal::IsDelimiter(*text, delims)) ++text;
    char* const end = text + (utility::internal::FindTokenEnd(text, delims) - text);
    if (*end == '\0') {
        *next = nullptr;
    } else {
        *end = '\0';
        *next = end + 1;
    }
    return text;
}
