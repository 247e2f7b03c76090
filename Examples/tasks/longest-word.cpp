// The longest words of a dictionary, from left to right through a text: the simplest way to cut Chinese into words.
#include <TextKit.h>

#include <iostream>

int main() {
    const textkit::Dictionary words({"人民", "中华人民共和国", "中华", "万岁"});  // in any order
    std::string_view text = "中华人民共和国万岁，中华！";
    while (!text.empty()) {
        std::size_t length = words.Longest(text).length;
        if (length == 0) length = textkit::Characters(text).begin()->bytes.size();
        std::cout << text.substr(0, length) << '/';
        text.remove_prefix(length);
    }
    std::cout << '\n';
}
