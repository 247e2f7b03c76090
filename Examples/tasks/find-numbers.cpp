// The numbers of a text, in digits and in Chinese, with their values.
#include <TextKit.h>

#include <iostream>

int main() {
    for (const textkit::NumberMatch& number : textkit::Numbers("第十二章：增长5%，约三万五千人")) {
        std::cout << number.text << " = " << number.value.ToDouble() << '\n';
    }
}
