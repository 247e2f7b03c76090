// A host with functions of its own that share name and parameters with exported ones.
#include <Utility.h>

#include <cstdio>

#include "Own.h"

int main() {
    char text[16];
    std::string blanks = "--x--";
    trim(blanks, '-');
    std::printf("host: %s %s %d\n", itoa(7, text, 10), blanks.c_str(), getCurDate());
    // GetToday is the library's getCurDate, and strrev lies in one source with its itoa.
    std::printf("library: %s\n", GetToday() > 20000000 ? "its own date" : "the host's date");
    char reversed[] = "abc";
    std::printf("library: %s\n", strrev(reversed));
}
