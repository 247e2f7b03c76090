// Single values out of XML and JSON, without a parser.
#include <TextKit.h>

#include <iostream>

int main() {
    const char xml[] = "<book id='7'><title>红楼梦 &amp; 续</title></book>";
    const auto title = textkit::XmlItem(xml, "title");
    const auto id = textkit::XmlAttribute(xml, "book", "id");
    const auto pages = textkit::JsonItem(R"({"name": "\u77f3头记", "pages": 1606})", "pages");
    if (!title || !id || !pages) return 1;
    std::cout << *id << ": " << textkit::DecodeReferences(*title) << ", " << *pages << " pages\n";
}
