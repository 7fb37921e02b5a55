// Handle memory on a heap that fails.
#include "FailingHeap.h"
#include "HandleMemory.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(HandleMemoryFailure, NewHandlesAreWholeOrNothing)
{
    constexpr int kRecordAndBlock = 2;
    for (const int size : {0, 16, 4096, 1 << 20}) {
        HMEM__* handle = nullptr;
        void* pointer = &handle;
        FailEachAllocation(
            kRecordAndBlock, [&] { handle = MEMMANAlloc(size); },
            [&](bool failed) {
                EXPECT_EQ(handle == nullptr, failed);
                MEMMANFree(handle);
            });
        FailEachAllocation(
            kRecordAndBlock, [&] { MEMMANAllocLock(&handle, &pointer, size); },
            [&](bool failed) {
                EXPECT_EQ(handle == nullptr, failed);
                EXPECT_EQ(pointer, failed ? &handle : MEMMANLock(handle));
                MEMMANFree(handle);
            });

        HMEM__* const source = MEMMANAlloc(size);
        std::memset(MEMMANLock(source), 7, static_cast<std::size_t>(size));
        FailEachAllocation(
            kRecordAndBlock, [&] { handle = MEMMANDuplicate(source); },
            [&](bool failed) {
                EXPECT_EQ(handle == nullptr, failed);
                EXPECT_TRUE(!handle
                    || std::memcmp(MEMMANLock(handle), MEMMANLock(source), static_cast<std::size_t>(size)) == 0);
                MEMMANFree(handle);
            });
        MEMMANFree(source);
    }
}

TEST(HandleMemoryFailure, AFailedResizeLeavesAllAsItWas)
{
    HMEM__* handle = MEMMANAlloc(100);
    void* const block = MEMMANLock(handle);
    std::memset(block, 7, 100);
    HMEM__* result = nullptr;
    void* pointer = nullptr;
    int done = 0;
    const auto check = [&](bool failed) {
        ASSERT_EQ(done, failed ? 0 : 1);
        if (failed) {
            EXPECT_EQ(MEMMANLock(handle), block);
            EXPECT_EQ(MEMMANGetSize(handle), 100);
            EXPECT_EQ(pointer, nullptr);
        }
        EXPECT_EQ(static_cast<char*>(MEMMANLock(handle))[99], 7);
    };
    FailEachAllocation(
        1,
        [&] {
            result = MEMMANReAlloc(handle, 100000);
            done = result != nullptr;
        },
        check);
    EXPECT_EQ(MEMMANReAlloc(handle, 100), handle);
    void* const now = MEMMANLock(handle);
    FailEachAllocation(
        1, [&] { done = MEMMANReAllocLock(&handle, &pointer, 200000); },
        [&](bool failed) {
            EXPECT_EQ(done, failed ? 0 : 1);
            EXPECT_EQ(pointer, failed ? nullptr : MEMMANLock(handle));
            EXPECT_EQ(MEMMANGetSize(handle), failed ? 100 : 200000);
            EXPECT_TRUE(!failed || MEMMANLock(handle) == now);
        });
    MEMMANFree(handle);
}

}   // namespace
