// The text of a page in whatever encoding it is: what its bytes say, and in doubt what it declares.
#include <TextKit.h>

#include <iostream>

int main(int, char** argv) {
    std::error_code error;
    const std::string page = textkit::ReadFile(argv[1], error);
    if (error) {
        std::cerr << argv[1] << ": " << error.message() << '\n';
        return 1;
    }
    const textkit::Detection found = textkit::DetectPage(page);
    std::cout << textkit::EncodingName(found.encoding) << (found.confidence > 0.9 ? ", sure" : ", not sure") << '\n';
    const std::string text = textkit::PageText(textkit::Decode(page, found.encoding).text);
    std::cout << text.substr(0, text.find('\n')) << '\n';
}
