// The text of an HTML page, a paragraph a line, and a reference in an attribute.
#include <TextKit.h>

#include <iostream>

int main() {
    const char page[] =
        "<title>天气 &amp; 新闻</title><style>p{}</style><h1>天气</h1>\n"
        "<p>今天<b>晴</b>，\n最高 25&deg;。<p>明天 &lt;多云&gt;。<script>f()</script>";
    std::cout << textkit::PageText(page) << '\n' << textkit::DecodeReferences("?a=1&amp;b=%20&#20013;") << '\n';
}
