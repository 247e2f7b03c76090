// A log of one's own day by day, and the library's quiet.
#include <Utility.h>

#include <iostream>

int main() {
    g_sLogPath = "/nowhere";              // before threads start; the directory is never made
    WriteLog("started", nullptr, false);  // a line that cannot be written goes to standard output
    g_bLog = false;                       // from here on nothing is written, by the library either
    WriteError("not seen", nullptr);
    std::string text;
    if (ReadFile("missing.txt", text, 0, 0, true) == 0) std::cout << g_sLastErrorMessage << '\n';
}
