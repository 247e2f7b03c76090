// A file name in GBK, from an archive or an old disk: shown, and the file found under either name.
#include <STLCodeTrans.h>
#include <TextKit.h>
#include <Utility.h>

#include <cstdio>
#include <iostream>

int main() {
    const std::string gbk_name = "\xB1\xA8\xB8\xE6.txt";  // as the file system holds it
    const std::string name = textkit::Decode(gbk_name, textkit::Encoding::kGbk).text;
    std::cout << name << '\n';
    gfn_bWriteFile(gbk_name.c_str(), "12 pages");

    std::string found, content;
    if (!GetAnsiFilename(name.c_str(), found, false)) return 1;  // exists under its GBK name only
    ReadFile(found.c_str(), content, 0, 0, true);
    std::cout << content << '\n';
    return std::remove(found.c_str());
}
