#include "Support/TestSupport.h"
#include "Utility.h"

namespace {

// Too long for the string object itself: a constructor that ran later would lose it.
const std::string assigned_before_main = g_sLogPath = g_sLastErrorMessage = std::string(100, 'x');

TEST(Settings, KeepWhatAnInitialiserOfTheHostAssigned) {
    EXPECT_EQ(g_sLogPath, assigned_before_main);
    EXPECT_EQ(g_sLastErrorMessage, assigned_before_main);
}

// What is freed twice, too early or not at all is for the address sanitizer to see, here and below.
TEST(BufferManager, FreesTheOldestInBatchesAndAllOnRequest) {
    CBufferManager manager;
    for (std::size_t added = 1; added <= 55000; ++added) {
        const std::string text = std::to_string(added);
        const char* const held = added % 2 == 0 ? manager.AddBuffer(new char[1]{'x'}) : manager.AddBuffer(text.c_str());
        const std::size_t size = added <= 20001 ? added : 10002 + (added - 20002) % 10000;
        ASSERT_EQ(manager.m_vBuffers.size(), size) << added;
        ASSERT_EQ(manager.m_vBuffers[0], std::to_string(added - size + 1)) << added;
        ASSERT_EQ(manager.m_vBuffers.back(), held) << added;
    }
    const std::size_t size = manager.m_vBuffers.size();
    manager.ReleaseBuf(true);
    EXPECT_EQ(manager.m_vBuffers, std::vector<char*>(size, nullptr));
    manager.m_nReleasing = 1;  // as while another thread frees
    for (int added = 0; added < 20002; ++added) manager.AddBuffer("y");
    EXPECT_EQ(manager.m_vBuffers.size(), size + 20002);
}

TEST(BufferManager, ThreadsShareOne) {
    CBufferManager manager;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&manager, thread] {
            for (int i = 1; i <= 20000; ++i) {
                manager.AddBuffer("text");
                if (i % 10000 == 3000 * thread) manager.ReleaseBuf(true);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(manager.m_nReleasing, 0);
    // While one thread frees, others append without freeing: the list may hold up to all 160,000 entries, of which each
    // addition now frees a batch.
    for (int i = 0; i < 16; ++i) manager.AddBuffer("text");
    EXPECT_EQ(manager.m_vBuffers.size() % 10000, 16u);  // only whole batches leave the list
    EXPECT_LE(manager.m_vBuffers.size(), 20016u);
}

}  // namespace
