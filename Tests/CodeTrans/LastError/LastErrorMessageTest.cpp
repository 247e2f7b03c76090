#include "CodeTrans/LastError/LastErrorMessage.h"

#include <gtest/gtest.h>

#include <memory>

#include "Support/TestSupport.h"
#include "Utility/Global.h"
#include "Utility/Runtime/BufferManager.h"

namespace {

TEST(LastErrorMessageTest, HandsOutCopiesInTheWantedEncoding) {
    const test_support::Restore message(g_sLastErrorMessage);
    const test_support::Restore encoding(g_nEncodeType);
    const struct {
        std::string gbk, utf8;
    } rows[] = {{"", ""}, {"\xD6\xD0\xCE\xC4", "\xE4\xB8\xAD\xE6\x96\x87"}, {"a\xD6", "a"}};
    for (const auto& row : rows) {
        g_sLastErrorMessage = row.gbk;
        for (int encode_type : {0, 1, 2}) {
            g_nEncodeType = encode_type;
            const std::unique_ptr<char[]> first(GetLastErrorMsg()), second(GetLastErrorMsg());
            EXPECT_EQ(first.get(), encode_type == 1 ? row.utf8 : row.gbk);
            EXPECT_STREQ(first.get(), second.get());
            EXPECT_NE(first.get(), second.get());
        }
    }
    EXPECT_EQ(g_sLastErrorMessage, "a\xD6");
}

TEST(LastErrorMessageTest, GivesTheCopyToTheBufferManager) {
    const test_support::Restore installed(g_pBufManager);
    CBufferManager manager;
    g_pBufManager = &manager;
    const char* const text = GetLastErrorMsg();
    ASSERT_EQ(manager.m_vBuffers.size(), 1u);
    EXPECT_EQ(manager.m_vBuffers[0], text);  // which the manager frees
}

}  // namespace
