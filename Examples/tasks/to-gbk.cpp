// Text for a system that reads GBK only; nothing that GBK lacks is lost.
#include <TextKit.h>

#include <iostream>

int main() {
    using namespace textkit;
    const std::string_view text = "价格：€5，版权©2026，😀";
    const Encoded gbk = Encode(text, Encoding::kGbk, Unmappable::kNumericReference);
    std::cout << gbk.bytes.size() << " bytes, " << gbk.replaced << " replaced, the first at " << gbk.first_replaced
              << '\n'
              << Decode(gbk.bytes, Encoding::kGbk).text << '\n'
              << DecodeReferences(Decode(gbk.bytes, Encoding::kGbk).text) << '\n';
}
