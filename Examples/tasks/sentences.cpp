// The sentences of a text in Chinese and English.
#include <TextKit.h>

#include <iostream>

int main() {
    const char text[] = "他说：“走吧！”然后走了。It costs 3.5 yuan. 真的？\n新的一行";
    for (const std::string_view sentence : textkit::Sentences(text)) std::cout << '[' << sentence << "]\n";
}
