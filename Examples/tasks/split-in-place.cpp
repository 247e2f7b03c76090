// The tokens of a writable text, cut in place, with what separated them.
#include <Utility.h>

#include <iostream>

int main() {
    char line[] = "pi is 3.14, about.";
    const char* const delimiters = " .,";  // in GBK safe below 40 hex, in UTF-8 all ASCII
    CStrToken tokens(true);                // "." and "," stay inside a number
    char* token = tokens.GetToken(line, nullptr, delimiters);
    for (; token != nullptr; token = tokens.GetToken(nullptr, nullptr, delimiters)) {
        std::cout << token << " (" << tokens.m_vSeparators.size() << " separators)\n";
    }
    std::cout << line << '\n';  // as it was
}
