#include <Global.h>
#include <MemoryExt.h>
#include <STLCodeTrans.h>
#include <Utility.h>
#include <global_linux.h>

#include <cstdio>

int main() {
    const char gbk[] = "\xD6\xD0\xCE\xC4";
    if (CodeTrans_Initialize(CODEMAPS) != 0 || !IsAllChinese(reinterpret_cast<unsigned char*>(const_cast<char*>(gbk))))
        return 1;
    std::printf("%d\n", CodeTrans_CodeDetect(gbk, sizeof gbk - 1));
    CodeTrans_Destroy();
}
