#include "CodeTrans/LastError/LastErrorMessage.h"

#include "Support/TestSupport.h"
#include "Utility/Global.h"
#include "Utility/Runtime/BufferManager.h"

namespace {

using test_support::Restore;

TEST(LastErrorMessageTest, HandsOutCopiesInTheWantedEncoding) {
    const Restore message(g_sLastErrorMessage);
    const Restore encoding(g_nEncodeType);
    for (const auto& [gbk, utf8] : {std::pair("", ""), {"\xD6\xD0\xCE\xC4", "中文"}, {"a\xD6", "a"}}) {
        g_sLastErrorMessage = gbk;
        for (const int encode_type : {0, 1, 2}) {
            g_nEncodeType = encode_type;
            const std::unique_ptr<char[]> first(GetLastErrorMsg()), second(GetLastErrorMsg());
            EXPECT_STREQ(first.get(), encode_type == 1 ? utf8 : gbk);
            EXPECT_STREQ(first.get(), second.get());
            EXPECT_NE(first.get(), second.get());
        }
    }
    EXPECT_EQ(g_sLastErrorMessage, "a\xD6");
    const Restore installed(g_pBufManager);
    CBufferManager manager;
    g_pBufManager = &manager;
    char* const text = GetLastErrorMsg();
    EXPECT_EQ(manager.m_vBuffers, std::vector<char*>{text});  // which the manager frees
}

}  // namespace
