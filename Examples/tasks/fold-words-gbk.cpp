// Words in GBK compared whatever their width and case.
#include <STLCodeTrans.h>
#include <TextKit.h>

#include <iostream>

std::string Folded(std::string_view utf8) {
    std::string word = textkit::Encode(utf8, textkit::Encoding::kGbk).bytes;
    word.resize(str_normalization(word.data(), word.size(), true));  // in place; "true" keeps , / and _
    return textkit::Decode(word, textkit::Encoding::kGbk).text;
}

int main() {
    std::cout << Folded("ＡＢＣ１２３（上）") << ' ' << Folded("Abc123(上)") << '\n'
              << (Folded("ＴＥＬ") == Folded("tel") ? "the same" : "different") << '\n';
}
