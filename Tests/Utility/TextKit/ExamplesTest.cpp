// The examples of the public comments, as they stand there.

#include <TextKit.h>
#include <gtest/gtest.h>

namespace {

using textkit::Encoding;

TEST(TextKitExamples, Encodings) {
    if (std::optional<textkit::CodeMaps> maps = textkit::CodeMaps::Load(UTILITY_TEST_DATA_FILE))
        EXPECT_EQ(textkit::Detect("\xD6\xD0\xB9\xFA", *maps).encoding, Encoding::kGbk);
    else
        ADD_FAILURE() << "no data file";
#ifdef UTILITY_EMBED_CODEMAPS
    EXPECT_EQ(textkit::Detect("\xD6\xD0\xB9\xFA\xC8\xCB\xC3\xF1").encoding, Encoding::kGbk);
#endif
    EXPECT_EQ(textkit::Detect("plain").confidence, 1);
    EXPECT_EQ(textkit::Decode("\xD6\xD0"
                              "A",
                              Encoding::kGbk)
                  .text,
              "中A");
    const textkit::Decoded decoded = textkit::Decode("a\xD6\n", Encoding::kGbk);
    EXPECT_EQ(decoded.text, "a\uFFFD\n");
    EXPECT_EQ(decoded.replaced, 1u);
    EXPECT_EQ(decoded.first_replaced, 1u);
    EXPECT_EQ(textkit::Encode("中", Encoding::kGbk).bytes, "\xD6\xD0");
    EXPECT_EQ(textkit::Encode("A©", Encoding::kGbk, textkit::Unmappable::kNumericReference).bytes, "A&#169;");
    EXPECT_TRUE(textkit::IsValidUtf8("中"));
    EXPECT_FALSE(textkit::IsValidUtf8("\xC0\x80"));
}

TEST(TextKitExamples, Pages) {
    EXPECT_EQ(textkit::PageText("<p>5 &lt; 6&nbsp;&nbsp;<b>x</b>y<p>z<script async>f()</script>"), "5 < 6 xy\nz");
    EXPECT_EQ(textkit::DecodeReferences("&copy;2026 &#20013;&#x6587; AT&T &notin;"), "©2026 中文 AT&T ∉");
}

}  // namespace
