// Words compared whatever their width, case, brackets and punctuation.
#include <TextKit.h>

#include <iostream>

int main() {
    textkit::FoldOptions options;  // width and case
    std::cout << textkit::Fold("ＡＢＣ１２３（上），ÉTÉ", options) << '\n';
    options.brackets = options.separators = options.blanks = true;
    std::cout << textkit::Fold("【ABC】、 def", options) << '\n';
    const bool same = textkit::Fold("ＴＥＬ：１２３") == textkit::Fold("tel:123");
    std::cout << (same ? "the same" : "different") << '\n';
}
