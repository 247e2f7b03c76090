// How many characters a text has, and of which kind.
#include <TextKit.h>

#include <iostream>

int main() {
    const textkit::ClassCounts counts = textkit::CountClasses("GBK 有 21791 个码位。");
    std::cout << counts.total() << " characters, " << counts[textkit::CharacterClass::kHan] << " of them Chinese, "
              << counts[textkit::CharacterClass::kDigit] << " digits\n";
}
