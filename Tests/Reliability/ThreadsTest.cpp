// Every operation on text, in many threads at once, gives the answers that it gives alone.

#include <STLCodeTrans.h>

#include <atomic>

#include "Checks/TextOperations.h"
#include "Support/LogSupport.h"

namespace {

class Threads : public test_support::LoggedTest {};

TEST_F(Threads, ShareEveryOperationOnText) {
    ASSERT_EQ(CodeTrans_Initialize(UTILITY_TEST_DATA_FILE), 0);
    g_bLog = false;
    const std::string texts[] = {"<p>The year 2024-03-05, a@b.cn; \"k\":\"v\"</p>",
                                 "\xD6\xD0\xB9\xFA\xC8\xCB, \xA3\xB1\x81", "中文，2024年3月5日。<a>&#20013;</a>"};
    const auto answers = [&texts] {
        std::vector<std::string> all;
        for (const checks::TextOperation& operation : checks::TextOperations())
            for (const std::string& text : texts) all.push_back(operation.run({text.data(), text.size()}));
        return all;
    };
    const std::vector<std::string> expected = answers();
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 100; ++i) wrong += answers() != expected;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    CodeTrans_Destroy();
}

}  // namespace
