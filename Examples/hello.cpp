// From a page of unknown encoding to tokens: the typical use of the library, end to end.   hello PAGE [CODEMAPS]
#include <Global.h>
#include <STLCodeTrans.h>
#include <Utility.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "FindCodeMaps.h"

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) return std::cerr << "usage: hello PAGE [CODEMAPS]\n", 2;
    g_bLog = false;  // or failures write a dated log file into the working directory
    // Once, before detection and before threads start: loading is not guarded.
    const std::string code_maps = FindCodeMaps(argv[2], INSTALLED_CODEMAPS);  // argv ends with a null
    if (CodeTrans_Initialize(code_maps.c_str()) != 0) return std::cerr << "no code maps: \"" << code_maps << "\"\n", 1;
    std::string page;
    if (ReadFile(argv[1], page, 0, 0, true) == 0) {                // the string form leaves out NUL bytes
        const std::unique_ptr<char[]> message(GetLastErrorMsg());  // ours to free: no buffer manager is installed
        return std::cerr << message.get() << '\n', 1;
    }

    const int code = CodeTrans_CodeDetect(page.data(), page.size());
    std::cout << "encoding " << code << " (0 undecided, 1 UTF-8, 2 GBK, 3 Big5, 8 Unicode)\n";
    if (code != ENCODE_UTF8 && code != ENCODE_GBK) {
        std::cout << "CodeTrans_ToAnsi leaves Big5 as it is: decode it with GBKBig5_ToUnicode, then utoGbk\n";
        return 0;
    }

    // GBK is never longer than UTF-8; one byte more for the NUL. The length on entry is not looked at.
    std::vector<char> gbk(page.size() + 1);
    unsigned long gbk_length = 0;
    CodeTrans_ToAnsi(code, page.c_str(), page.size(), gbk.data(), gbk_length);

    // Six bytes more than the input has, the NUL included; a capacity of 0 sets no other limit.
    std::vector<char> text(gbk_length + 6);
    unsigned long length = 0;
    vHtmlToText(gbk.data(), gbk_length, text.data(), length);
    StrNormalize(text.data());

    // On GBK text only ASCII marks end a sentence: the list of Chinese marks is stored as UTF-8.
    int sentences = 0;
    for (const char* rest = text.data(); *rest != '\0'; ++sentences) rest += FindSentenceEnd(rest, 0, page.size());
    std::cout << sentences << " sentence ends\n";

    // Half width and lower case, in place; "true" keeps the separators. Never longer than before.
    length = str_normalization(text.data(), std::char_traits<char>::length(text.data()), true);

    // Delimiters below 0x40 are never the second byte of a GBK character.
    const char kDelimiters[] = " \t\r\n.,;:!?|";
    CStrToken tokeniser(false);
    char* token = tokeniser.GetToken(text.data(), text.data() + length, kDelimiters);
    for (; token != nullptr; token = tokeniser.GetToken(nullptr, nullptr, kDelimiters)) {
        std::string utf8;
        ANSIToUTF8(token, utf8);  // sets the process locale to zh_CN.gbk where there is one
        std::cout << utf8 << '\n';
    }
    CodeTrans_Destroy();
}
