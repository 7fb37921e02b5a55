// Patching a value in place.
#include "CExif.h"
#include "ExifBlock.h"

#include <gtest/gtest.h>
#include <optional>

namespace {
using TvlUtils::Stream;

/// Bytes that differ, as first position and new bytes of the shortest range that holds them all.
struct Change {
    std::size_t at;
    ExifBlock::Bytes bytes;
    bool operator==(const Change&) const = default;
};

std::optional<Change> Difference(const ExifBlock::Bytes& before, const ExifBlock::Bytes& after)
{
    std::optional<Change> change;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i])
            continue;
        if (!change)
            change = Change{i, {}};
        change->bytes.assign(after.begin() + static_cast<std::ptrdiff_t>(change->at),
            after.begin() + static_cast<std::ptrdiff_t>(i + 1));
    }
    return change;
}

class ExifPatch : public testing::TestWithParam<bool> { };
INSTANTIATE_TEST_SUITE_P(ByteOrders, ExifPatch, testing::Bool(),
    [](const auto& order) { return order.param ? "BigEndian" : "LittleEndian"; });

TEST_P(ExifPatch, OverwritesTheValueFieldAndNoOtherByte)
{
    using Bytes = ExifBlock::Bytes;
    const bool big = GetParam();
    const auto entry = [&](unsigned type, std::uint32_t count) {
        // Filled with a byte that no patch writes.
        return ExifBlock(big)
            .Shorts(256, {7})
            .Entry(274, type, count, Bytes(std::size_t{count} * 8, 0x55))
            .Shorts(274, {7})
            .Build();
    };
    struct Case {
        unsigned type;
        Bytes field;
    };
    const Case cases[] = {
        {1, {4, 0, 0, 0}},
        {2, {0, 0, 0, 0}},
        {3, big ? Bytes{3, 4, 0, 0} : Bytes{4, 3, 0, 0}},
        {4, big ? Bytes{1, 2, 3, 4} : Bytes{4, 3, 2, 1}},
        {5, {0, 0, 0, 0}},
        {7, {0, 0, 0, 0}},
        {9, {0, 0, 0, 0}},
        {10, {0, 0, 0, 0}},
    };
    constexpr std::size_t kField = 8 + 2 + 12 + 8;   // of the second entry
    for (const auto& [type, field] : cases) {
        const auto before = entry(type, 1);
        auto expected = before;
        std::copy(field.begin(), field.end(), expected.begin() + kField);
        auto after = before;
        CExif exif;
        EXPECT_EQ(exif.ReplaceData(Stream::OverMemory(after.data(), after.size()), 274, 0x01020304), 1) << type;
        EXPECT_EQ(after, expected) << type;
        EXPECT_EQ(exif.GetAt(0), nullptr);
    }
}

TEST_P(ExifPatch, FindsTagsOfTheExifDirectory)
{
    auto block = CameraBlock(GetParam());
    const auto before = block;
    CExif exif;
    const auto patch = [&](int tag, int value) {
        return exif.ReplaceData(Stream::OverMemory(block.data(), block.size()), tag, value);
    };
    EXPECT_EQ(patch(40961, 0xFFFF), 1);
    ASSERT_EQ(exif.ParseData(Stream::OverMemory(block.data(), block.size())), 1);
    unsigned short colorSpace = 0;
    EXPECT_EQ(exif.FindTag(40961)->GetSingleValue(0, &colorSpace, 2), 1);
    EXPECT_EQ(colorSpace, 0xFFFF);
    EXPECT_EQ(Difference(before, block)->bytes.size(), 2u);

    EXPECT_EQ(patch(40961, 1), 1);
    EXPECT_EQ(block, before);
    for (const int absent : {34665, 37500, 0, -1, 12345, 40961 + 65536}) {
        EXPECT_EQ(patch(absent, 1), 0) << absent;
        EXPECT_EQ(block, before) << absent;
    }
}

TEST_P(ExifPatch, LeavesTheTagsThatWereReadBefore)
{
    auto block = CameraBlock(GetParam());
    const auto stream = [&] { return Stream::OverMemory(block.data(), block.size()); };
    CExif exif;
    short before = 0, after = 0, stored = 0;
    ASSERT_EQ(exif.ParseData(stream()), 1);
    ASSERT_EQ(exif.GetOrientation(before), 1);
    EXPECT_EQ(exif.ReplaceData(stream(), 274, before + 1), 1);
    EXPECT_EQ(exif.GetOrientation(after), 1);
    EXPECT_EQ(after, before);
    CExif anew;
    ASSERT_EQ(anew.ParseData(stream()), 1);
    EXPECT_EQ(anew.GetOrientation(stored), 1);
    EXPECT_EQ(stored, before + 1);
}

TEST_P(ExifPatch, PassesOverEntriesThatAreNotRead)
{
    // The first has no size, the value of the second lies outside.
    auto block = ExifBlock(GetParam())
                     .Raw(274, 11, 1, "abcd")
                     .Entry(274, 2, 30, {0x7F, 0x7F, 0x7F, 0x7F})
                     .Shorts(274, {1})
                     .Build();
    auto expected = block;
    expected[8 + 2 + 24 + 8 + (GetParam() ? 1 : 0)] = 5;
    EXPECT_EQ(CExif().ReplaceData(Stream::OverMemory(block.data(), block.size()), 274, 5), 1);
    EXPECT_EQ(block, expected);
}

TEST_P(ExifPatch, FailsOnBrokenStructureAndReadOnlyStreams)
{
    const auto whole = CameraBlock(GetParam());
    CExif exif;
    EXPECT_EQ(exif.ReplaceData(Stream::OverMemory(whole.data(), whole.size()), 274, 1), 0) << "read-only";
    for (const std::size_t size : {0u, 7u, 9u, 10u + 3 * 12 + 11}) {
        auto block = whole;
        EXPECT_EQ(exif.ReplaceData(Stream::OverMemory(block.data(), size), 274, 1), 0) << size;
        EXPECT_EQ(block, whole) << size;
    }
}

}   // namespace
