// The addresses of a mail header or of running text, with their names.
#include <TextKit.h>

#include <iostream>

int main() {
    const char header[] = "收件人：张三 <zhang.san@Example.com>, =?gb2312?B?wO7LxA==?= <li.si@example.org>";
    for (const textkit::EmailAddress& email : textkit::EmailAddresses(header)) {
        std::cout << email.address << ": " << email.name << '\n';
    }
}
