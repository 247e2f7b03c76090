#include <Global.h>
#include <MemoryExt.h>
#include <STLCodeTrans.h>
#include <TextKit.h>
#include <Utility.h>
#include <global_linux.h>

#include <cstdio>

int main() {
    const char gbk[] = "\xD6\xD0\xCE\xC4";
    if (CodeTrans_Initialize(CODEMAPS) != 0 || !IsAllChinese(reinterpret_cast<unsigned char*>(const_cast<char*>(gbk))))
        return 1;
    if (textkit::Decode(gbk, textkit::Encoding::kGbk).text != "\xE4\xB8\xAD\xE6\x96\x87") return 1;
    std::printf("version %d.%d.%d, encoding %d\n", UTILITY_VERSION_MAJOR, UTILITY_VERSION_MINOR, UTILITY_VERSION_PATCH,
                CodeTrans_CodeDetect(gbk, sizeof gbk - 1));
    CodeTrans_Destroy();
}
