#include "Utility/StringToolkit/StrToken.h"

#include "Internal/ByteSet.h"

using utility::internal::ByteSet;

char* StrToken(char* text, const char* delims, char** next) {
    if (text == nullptr) return nullptr;
    ByteSet stops(delims);
    while (stops.Contains(*text)) ++text;
    stops.Add(0);
    char* end = text;
    while (!stops.Contains(*end)) ++end;
    if (*end == '\0') {
        *next = nullptr;
    } else {
        *end = '\0';
        *next = end + 1;
    }
    return text;
}
