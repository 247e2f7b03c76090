#include <TextKit.h>

#include <fstream>
#include <iostream>
#include <iterator>

int main(int, char** argv) {
    std::ifstream file(argv[1], std::ios::binary);
    const std::string page(std::istreambuf_iterator<char>(file), {});
    const textkit::Detection found = textkit::Detect(page);  // kGbk, and how sure that is
    const textkit::Decoded decoded = textkit::Decode(page, found.encoding);
    std::cout << textkit::PageText(decoded.text) << '\n';
}
