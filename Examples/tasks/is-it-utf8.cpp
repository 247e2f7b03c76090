// Whether bytes are UTF-8, and where the first is that is not.
#include <TextKit.h>

#include <iostream>

int main() {
    for (const std::string_view bytes : {"中文", "\xE4\xB8\xAD\xE6\x96", "caf\xE9"}) {
        const textkit::Decoded decoded = textkit::Decode(bytes, textkit::Encoding::kUtf8);
        std::cout << decoded.text << ": ";
        if (textkit::IsValidUtf8(bytes)) {
            std::cout << "UTF-8\n";
        } else {
            std::cout << "not UTF-8 from byte " << decoded.first_replaced << " on\n";
        }
    }
}
