// A text cut at a separator, at any character of a set, into tokens, and put together again.
#include <TextKit.h>

#include <iostream>

int main() {
    for (const std::string_view piece : textkit::Split("a，b，，c", "，")) std::cout << '[' << piece << ']';
    for (const std::string_view piece : textkit::SplitAny("北京、上海；广州", "、；")) std::cout << '[' << piece << ']';
    std::cout << '\n' << textkit::Join(textkit::Tokens("iPhone手机：1,284.50 元。"), " | ") << '\n';
}
