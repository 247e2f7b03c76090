// The same by the functions with codes: the verdict is an int, the native text GBK.
#include <STLCodeTrans.h>
#include <Utility.h>

#include <iostream>

int main(int, char** argv) {
    g_bLog = false;
    if (CodeTrans_Initialize(argv[1]) != 0) return 1;  // codemaps.dat: once, before threads start
    std::string page, utf8;
    if (ReadFile(argv[2], page, 0, 0, true) == 0) return 1;
    if (CodeTrans_CodeDetect(page.data(), page.size()) != ENCODE_GBK) return 1;
    std::string text(page.size() + 6, '\0');
    unsigned long length = 0;  // no limit but the buffer's
    vHtmlToText(page.c_str(), page.size(), text.data(), length);
    ANSIToUTF8(StrNormalize(text.data()), utf8);
    std::cout << utf8.substr(0, utf8.find(' ')) << '\n';
    CodeTrans_Destroy();
}
