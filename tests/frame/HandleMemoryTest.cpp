// Handle memory.
#include "HandleMemory.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(HandleMemory, ClearsNewBlocksAndKeepsThemOnFailure)
{
    HMEM__* const handle = MEMMANAlloc(1000);
    ASSERT_NE(handle, nullptr);
    auto* const bytes = static_cast<char*>(MEMMANLock(handle));
    EXPECT_TRUE(std::all_of(bytes, bytes + 1000, [](char c) { return c == 0; }));
    std::memset(bytes, 7, 1000);

    for (const int refused : {-1, INT_MIN, 0}) {
        EXPECT_EQ(MEMMANReAlloc(handle, refused), nullptr) << refused;
        EXPECT_EQ(MEMMANLock(handle), bytes) << refused;
        EXPECT_EQ(MEMMANGetSize(handle), 1000) << refused;
    }
    EXPECT_EQ(MEMMANReAlloc(handle, 5000), handle);
    EXPECT_EQ(MEMMANGetSize(handle), 5000);

    HMEM__* const copy = MEMMANDuplicate(handle);
    EXPECT_EQ(std::memcmp(MEMMANLock(copy), MEMMANLock(handle), 1000), 0);
    EXPECT_NE(MEMMANLock(copy), MEMMANLock(handle));
    EXPECT_EQ(MEMMANFree(copy), 1);
    EXPECT_EQ(MEMMANFree(handle), 1);
    EXPECT_EQ(MEMMANAlloc(-1), nullptr);
}

TEST(HandleMemory, LocksCostNothing)
{
    HMEM__* const handle = MMAllocTemp(nullptr, nullptr, 64);
    EXPECT_EQ(MEMMANGetSize(handle), 64);
    EXPECT_EQ(MEMMANLock(handle), MMLockTemp(handle));
    EXPECT_EQ(MEMMANUnlock(handle), 1);
    EXPECT_EQ(MEMMANGetLockCount(handle), 0);
    EXPECT_EQ(MEMMANGetFlags(handle), 0);
    EXPECT_EQ(MMFreeTemp(handle), 1);
}

TEST(HandleMemory, CombinedCallsRefuseNullArguments)
{
    HMEM__* handle = nullptr;
    void* pointer = &handle;
    EXPECT_EQ(MEMMANAllocLock(&handle, nullptr, 8), 0);
    EXPECT_EQ(MEMMANAllocLock(nullptr, &pointer, 8), 0);
    EXPECT_EQ(MEMMANAllocLock(&handle, &pointer, -1), 0);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(pointer, &handle);

    EXPECT_EQ(MMAllocLockTemp(&handle, &pointer, 8), 1);
    EXPECT_EQ(pointer, MEMMANLock(handle));
    EXPECT_EQ(MEMMANReAllocLock(&handle, &pointer, -1), 0);
    EXPECT_EQ(pointer, MEMMANLock(handle));
    EXPECT_EQ(MMReAllocLockTemp(&handle, &pointer, 100000), 1);
    EXPECT_EQ(pointer, MEMMANLock(handle));

    EXPECT_EQ(MEMMANUnlockFree(&handle), 1);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(MMUnlockFreeTemp(&handle), 1);
    EXPECT_EQ(MEMMANUnlockFree(nullptr), 0);
    EXPECT_EQ(MEMMANReAllocLock(&handle, &pointer, 8), 0);
}

TEST(HandleMemory, NullHandlesAreRefused)
{
    char bytes[] = "abcdef";
    EXPECT_EQ(MEMMANFree(nullptr), 0);
    EXPECT_EQ(MEMMANLock(nullptr), nullptr);
    EXPECT_EQ(MEMMANReAlloc(nullptr, 1), nullptr);
    EXPECT_EQ(MEMMANDuplicate(nullptr), nullptr);
    EXPECT_EQ(MEMMANGetSize(nullptr), 0);
    EXPECT_EQ(MEMMANMoveHuge(nullptr, bytes, 1), 0);
    EXPECT_EQ(MEMMANMoveHuge(bytes, nullptr, 1), 0);
    EXPECT_EQ(MEMMANMoveHuge(bytes + 1, bytes, 4), 1);
    EXPECT_STREQ(bytes, "aabcdf");
}

}   // namespace
