// What is kept of the processor's identification.
#include "ProcessorIdentification.h"

#include "FakeProcessor.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(ProcessorIdentification, ReadsEveryLeaf)
{
    FakeProcessor processor;
    processor.SetHighest(9, "AuthenticAMD");
    for (ULONG leaf = 1; leaf <= 9; ++leaf)
        processor.leaves[{leaf, 0}] = {0, leaf, 10 * leaf, 100 * leaf};
    processor.leaves[{0x80000000, 0}] = {0x80000005, 0, 0, 0};
    processor.leaves[{0x80000001, 0}] = {0, 0, 5, 6};
    processor.leaves[{0x80000005, 0}] = {1, 2, 3, 4};
    const char brand[48] = "A processor with a long name of many characters";
    for (ULONG i = 0; i < 3; ++i)
        std::memcpy(&processor.leaves[{0x80000002 + i, 0}], brand + 16 * i, 16);
    const ProcessorIdentification read(processor);
    EXPECT_EQ(read.standardLeaves.size(), 10u);
    EXPECT_EQ(read.standardLeaves[9].edx, 900u);
    EXPECT_EQ(read.extendedLeaves.size(), 6u);
    EXPECT_EQ(read.extendedLeaves[5].edx, 4u);
    EXPECT_EQ(read.vendor, "AuthenticAMD");
    EXPECT_TRUE(read.isAmd);
    EXPECT_FALSE(read.isIntel);
    EXPECT_EQ(read.leaf1Ecx, 10u);
    EXPECT_EQ(read.leaf1Edx, 100u);
    EXPECT_EQ(read.leaf7Ebx, 7u);
    EXPECT_EQ(read.leaf7Ecx, 70u);
    EXPECT_EQ(read.extended1Ecx, 5u);
    EXPECT_EQ(read.extended1Edx, 6u);
    EXPECT_EQ(read.brand, brand);
    EXPECT_EQ(processor.queries, 10 + 6) << "each leaf once";
}

TEST(ProcessorIdentification, TakesNothingFromLeavesBeyondTheHighest)
{
    struct Row {
        ULONG highest, highestExtended;
        std::size_t standard, extended;
    };
    constexpr Row kRows[] = {
        {0, 0x80000000, 1, 1}, {6, 0x80000003, 7, 4}, {6, 0, 7, 0}, {6, 0x7FFFFFFF, 7, 0}, {~0u, ~0u, 256, 256}};
    for (const auto& [highest, highestExtended, standard, extended] : kRows) {
        FakeProcessor processor;
        processor.SetHighest(highest, "GenuineIntel");
        processor.leaves[{0x80000000, 0}] = {highestExtended, 0, 0, 0};
        const ProcessorIdentification read(processor);
        EXPECT_EQ(read.standardLeaves.size(), standard) << highest;
        EXPECT_EQ(read.extendedLeaves.size(), extended) << highestExtended;
        EXPECT_TRUE(read.isIntel);
        EXPECT_EQ(read.leaf1Ecx != 0, standard > 1) << highest;
        EXPECT_EQ(read.leaf7Ebx != 0, standard > 7) << highest;
        EXPECT_EQ(read.extended1Ecx != 0, extended > 1) << highestExtended;
        EXPECT_EQ(read.brand.empty(), extended <= 4) << highestExtended;
    }
}

}   // namespace
