// Reading blocks of both byte orders.
#include "CExif.h"
#include "ExifBlock.h"
#include "FailingHeap.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace {
using TvlUtils::SeekOrigin;
using TvlUtils::Stream;

Stream Over(const ExifBlock::Bytes& block) { return Stream::OverMemory(block.data(), block.size()); }

int CountTags(CExif& exif)
{
    int count = 0;
    while (exif.GetAt(count))
        ++count;
    return count;
}

std::string BytesOf(CExifTag& tag)
{
    std::string bytes(tag.GetBufferSize(), '?');
    EXPECT_EQ(tag.GetAllValues(bytes.data(), tag.GetBufferSize()), 1);
    return bytes;
}

class ExifParse : public testing::TestWithParam<bool> {
protected:
    ExifBlock Block() const { return ExifBlock(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(ByteOrders, ExifParse, testing::Bool(),
    [](const auto& order) { return order.param ? "BigEndian" : "LittleEndian"; });

TEST_P(ExifParse, ReadsEveryTypeIntoHostOrder)
{
    using namespace std::string_view_literals;
    const auto block = Block()
                           .Raw(1, 1, 5, "\1\2\3\4\5")
                           .Text(270, "Harbour")
                           .Shorts(3, {1, 0x203, 0xFFFE})
                           .Longs(4, {0x01020304})
                           .Rationals(5, {0x01020304, 0x0A0B0C0D})
                           .Undefined(7, "\xFF\0\x7F"sv)
                           .Raw(9, 9, 1, GetParam() ? "\xFF\xFF\xFF\xFE"sv : "\xFE\xFF\xFF\xFF"sv)
                           .Rationals(10, {0xFFFFFFFF, 2}, 10)
                           .Build();
    CExif exif;
    ASSERT_EQ(exif.ParseData(Over(block)), 1);
    ASSERT_EQ(CountTags(exif), 8);
    const std::string_view values[] = {"\1\2\3\4\5"sv, "Harbour\0"sv, "\1\0\3\2\xFE\xFF"sv, "\4\3\2\1"sv,
        "\4\3\2\1\x0D\x0C\x0B\x0A"sv, "\xFF\0\x7F"sv, "\xFE\xFF\xFF\xFF"sv, "\xFF\xFF\xFF\xFF\2\0\0\0"sv};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(BytesOf(*exif.GetAt(i)), values[i]) << "tag at " << i;
    EXPECT_EQ(exif.GetAt(2)->GetID(), 3u);
    EXPECT_EQ(exif.GetAt(2)->GetValueType(), 3u);
    EXPECT_EQ(exif.GetAt(2)->GetValueCount(), 3u);
}

TEST_P(ExifParse, ReadsTheExifDirectoryBehindTheFirst)
{
    const auto block = CameraBlock(GetParam());
    CExif exif;
    ASSERT_EQ(exif.ParseData(Over(block)), 1);
    EXPECT_EQ(CountTags(exif), 51);
    EXPECT_EQ(exif.GetAt(12)->GetID(), 34665u) << "the pointer stays in the list";
    EXPECT_EQ(exif.GetAt(13)->GetID(), 33434u);
    EXPECT_EQ(exif.GetAt(-1), nullptr);
    EXPECT_EQ(exif.GetAt(51), nullptr);
    EXPECT_EQ(exif.FindTag(1), nullptr);

    // Once more on the same object appends.
    EXPECT_EQ(exif.ParseData(Over(block)), 1);
    EXPECT_EQ(CountTags(exif), 102);
}

TEST_P(ExifParse, IgnoresTheLinkToANextDirectory)
{
    auto block = Block().Shorts(274, {1}).Build();
    // The link, the last 4 bytes, leads back to the directory itself.
    block[block.size() - (GetParam() ? 1 : 4)] = 8;
    CExif exif;
    EXPECT_EQ(exif.ParseData(Over(block)), 1);
    EXPECT_EQ(CountTags(exif), 1);
}

TEST_P(ExifParse, DropsEntriesThatItCannotHold)
{
    struct Case {
        unsigned type;
        std::uint32_t count;
        std::size_t bytes;
        int kept;
    };
    const Case cases[] = {{2, 4, 4, 1}, {2, 5, 5, 1}, {1, 0, 0, 0}, {0, 4, 4, 0}, {6, 4, 4, 0}, {8, 2, 4, 0},
        {11, 1, 4, 0}, {12, 1, 8, 0}, {13, 1, 4, 0}, {65535, 1, 4, 0}, {1, 65536, 65536, 1}, {1, 65537, 65537, 0},
        {3, 32768, 65536, 1}, {3, 32769, 65538, 0}, {5, 8192, 65536, 1}, {5, 0x20000001, 8, 0}, {4, 0x40000001, 4, 0},
        {3, 0x80000002, 4, 0}, {1, 0xFFFFFFFF, 4, 0}};
    for (const auto& [type, count, bytes, kept] : cases) {
        const auto block = Block().Entry(270, type, count, ExifBlock::Bytes(bytes, 'x')).Shorts(274, {3}).Build();
        CExif exif;
        EXPECT_EQ(exif.ParseData(Over(block)), 1) << type << " x " << count;
        EXPECT_EQ(CountTags(exif), kept + 1) << type << " x " << count;
    }
    CExif exif;
    EXPECT_EQ(exif.ParseData(Over(Block().Undefined(37500, "maker note").Build())), 1);
    EXPECT_EQ(exif.FindTag(37500), nullptr);
}

TEST_P(ExifParse, EndsEveryTextWithZero)
{
    const auto block = Block().Raw(270, 2, 4, "abcd").Raw(271, 2, 6, "abcdef").Build();
    CExif exif;
    ASSERT_EQ(exif.ParseData(Over(block)), 1);
    EXPECT_EQ(BytesOf(*exif.GetAt(0)), std::string("abc\0", 4));
    EXPECT_EQ(BytesOf(*exif.GetAt(1)), std::string("abcde\0", 6));
}

TEST_P(ExifParse, KeepsWhatStandsBeforeACutEnd)
{
    const auto whole = CameraBlock(GetParam());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        CExif exif;
        const int result = exif.ParseData(Stream::OverMemory(whole.data(), size));
        const int tags = CountTags(exif);
        // Of the first directory the entries before the cut, less those whose values lie behind it.
        if (size < 10 + 13 * 12) {
            EXPECT_EQ(result, 0) << size;
            EXPECT_LE(tags, std::max(0, (static_cast<int>(size) - 10) / 12)) << size;
        }
    }
    CExif exif;
    EXPECT_EQ(exif.ParseData(Stream::OverMemory(whole.data(), 10 + 4 * 12 + 11)), 0);
    EXPECT_EQ(CountTags(exif), 1) << "three texts lie behind the cut, the orientation does not";
}

TEST_P(ExifParse, FollowsPointersOfUpToFourBytes)
{
    using Bytes = ExifBlock::Bytes;
    const bool big = GetParam();
    // The second directory always begins at 26, behind one entry.
    struct Case {
        unsigned type;
        std::uint32_t count;
        Bytes value;
        int result;
        int tags;
    };
    const Case cases[] = {
        {4, 1, big ? Bytes{0, 0, 0, 26} : Bytes{26, 0, 0, 0}, 1, 2},
        {9, 1, big ? Bytes{0, 0, 0, 26} : Bytes{26, 0, 0, 0}, 1, 2},
        {3, 1, big ? Bytes{0, 26, 255, 255} : Bytes{26, 0, 255, 255}, 1, 2},
        {1, 1, {26, 255, 255, 255}, 1, 2},
        {1, 4, {26, 255, 255, 255}, 1, 2},
        {7, 1, {26, 255, 255, 255}, 1, 2},
        {2, 1, {26, 255, 255, 255}, 1, 1},   // a text's last byte becomes 0
        {4, 1, {0, 0, 0, 0}, 1, 1},
        {4, 1, {255, 255, 255, 255}, 1, 1},   // offsets are signed
        // Only the first directory may not begin in the header. Here the header itself counts 8 entries.
        {4, 1, big ? Bytes{0, 0, 0, 6} : Bytes{4, 0, 0, 0}, 0, 1},
        {4, 1, big ? Bytes{0, 0, 1, 0} : Bytes{0, 1, 0, 0}, 0, 1},
        {11, 1, {26, 0, 0, 0}, 1, 0},
    };
    const auto second = ExifBlock(big).Shorts(274, {6}).Build();
    for (const auto& [type, count, value, result, tags] : cases) {
        auto block = ExifBlock(big).Entry(34665, type, count, value).Build();
        block.insert(block.end(), second.begin() + 8, second.end());
        CExif exif;
        EXPECT_EQ(exif.ParseData(Over(block)), result) << type << " x " << count;
        EXPECT_EQ(CountTags(exif), tags) << type << " x " << count;
    }
}

TEST_P(ExifParse, FindsTheFirstOfTagsWithOneId)
{
    const auto block = Block().Shorts(256, {7}).Shorts(274, {6}).Shorts(274, {8}).Build();
    CExif exif;
    ASSERT_EQ(exif.ParseData(Over(block)), 1);
    short orientation = 0;
    EXPECT_EQ(exif.FindTag(274), exif.GetAt(1));
    EXPECT_EQ(exif.GetOrientation(orientation), 1);
    EXPECT_EQ(orientation, 6);
}

TEST_P(ExifParse, TellsResolutionAndOrientation)
{
    struct Case {
        ExifBlock block;
        int result;
        double resolution;
        unsigned short unit;
    };
    const Case cases[] = {
        {Block().Rationals(282, {300, 1}).Shorts(296, {2}), 1, 300.0, 2},
        {Block().Rationals(282, {1, 3}).Shorts(296, {3}), 1, 1.0 / 3.0, 3},
        {Block().Rationals(282, {0xFFFFFFFF, 1}), 1, 4294967295.0, 9},
        {Block().Rationals(282, {72, 0}).Shorts(296, {2}), 0, -1.0, 2},
        {Block().Longs(282, {72}).Shorts(296, {2}), 0, -1.0, 2},
        {Block().Shorts(296, {2}), 0, -1.0, 9},
        {Block().Rationals(282, {72, 1}).Longs(296, {2}), 1, 72.0, 9},
        {Block().Rationals(282, {72, 1}).Raw(296, 1, 1, "\3"), 1, 72.0, 3},
    };
    for (const Case& test : cases) {
        const auto block = test.block.Build();
        CExif exif;
        ASSERT_EQ(exif.ParseData(Over(block)), 1);
        double resolution = -1.0;
        unsigned short unit = 9;
        const auto row = &test - cases;
        EXPECT_EQ(exif.GetHRes(resolution, unit), test.result) << row;
        EXPECT_EQ(resolution, test.resolution) << row;
        EXPECT_EQ(unit, test.unit) << row;
        EXPECT_EQ(exif.GetVRes(resolution, unit), 0) << row;
    }

    struct Orientation {
        ExifBlock block;
        int result;
        short value;
    };
    const Orientation orientations[] = {{Block().Shorts(274, {6}), 1, 6}, {Block().Shorts(274, {8, 1}), 1, 8},
        {Block().Raw(274, 1, 1, "\6"), 1, 0x7706}, {Block().Longs(274, {6}), 0, 0x7777}, {Block(), 0, 0x7777}};
    for (const Orientation& test : orientations) {
        const auto block = test.block.Build();
        CExif exif;
        ASSERT_EQ(exif.ParseData(Over(block)), 1);
        short orientation = 0x7777;
        EXPECT_EQ(exif.GetOrientation(orientation), test.result) << &test - orientations;
        EXPECT_EQ(orientation, test.value) << &test - orientations;
    }
}

TEST_P(ExifParse, GivesItemsOneByOne)
{
    const auto block = Block().Shorts(3, {10, 20, 30}).Build();
    CExif exif;
    ASSERT_EQ(exif.ParseData(Over(block)), 1);
    CExifTag& tag = *exif.GetAt(0);
    std::uint16_t items[3] = {};
    EXPECT_EQ(tag.GetSingleValue(2, items, 2), 1);
    EXPECT_EQ(items[0], 30);
    EXPECT_EQ(tag.GetSingleValue(3, items, 2), 0);
    EXPECT_EQ(tag.GetSingleValue(0, items, 1), 0);
    EXPECT_EQ(tag.GetAllValues(items, 5), 0);
    EXPECT_EQ(tag.GetAllValues(items, 6), 1);
    EXPECT_EQ(items[1], 20);

    // Counted, but never read.
    CExifTag unread;
    unread.type = 3;
    unread.count = 2;
    EXPECT_EQ(unread.GetSingleValue(0, items, 6), 0);
    EXPECT_EQ(unread.GetAllValues(items, 6), 0);
    unread.type = 0;   // no type that there is: items of no bytes
    EXPECT_EQ(unread.GetSingleValue(1, items, 0), 1);
    EXPECT_EQ(unread.GetSingleValue(2, items, 0), 0);
    EXPECT_EQ(unread.GetAllValues(items, 0), 1);
    EXPECT_EQ(items[1], 20);
}

TEST_P(ExifParse, ReadsOneTagAtTheStreamsPosition)
{
    const auto block = Block().Text(270, "a text behind").Shorts(274, {1}).Undefined(37500, "m").Build();
    Stream stream = Over(block);
    ASSERT_TRUE(stream.Seek(10, SeekOrigin::Start));
    CExifTag tag;
    EXPECT_EQ(tag.ReadTag(stream, GetParam()), eFileReadOk);
    EXPECT_EQ(stream.GetPosition(), 22) << "back behind the entry";
    EXPECT_EQ(tag.ReadTag(stream, GetParam()), eFileReadOk) << "a tag may be read anew";
    EXPECT_EQ(tag.GetID(), 274u);
    EXPECT_EQ(tag.ReadTag(stream, GetParam()), eFileReadSkipped);
    EXPECT_EQ(tag.data, nullptr);
    TvlString text;
    EXPECT_EQ(tag.GetDisplayValue(text), 1) << "an unread value shows nothing";
    ASSERT_TRUE(stream.Seek(static_cast<long long>(block.size()) - 11, SeekOrigin::Start));
    EXPECT_EQ(tag.ReadTag(stream, GetParam()), eFileReadError);

    // A value that the stream does not hold: the position is behind the entry all the same.
    Stream cut = Stream::OverMemory(block.data(), 30);
    ASSERT_TRUE(cut.Seek(10, SeekOrigin::Start));
    EXPECT_EQ(tag.ReadTag(cut, GetParam()), eFileReadNoValue);
    EXPECT_EQ(cut.GetPosition(), 22);
}

TEST(ExifTag, SharesBytesWithItsCopies)
{
    static_assert(offsetof(CExifTag, id) == 0 && offsetof(CExifTag, type) == 4 && offsetof(CExifTag, count) == 8
        && offsetof(CExifTag, data) == 16);
    const auto block = CameraBlock(false);
    CExifTag copy;
    {
        CExif exif;
        ASSERT_EQ(exif.ParseData(Over(block)), 1);
        CExifTag& tag = *exif.FindTag(272);
        copy = tag;
        EXPECT_EQ(copy.data, tag.data);
        // The copy takes the bytes over and outlives the list.
        tag.data = nullptr;
    }
    EXPECT_STREQ(reinterpret_cast<const char*>(copy.data), "Northlight Meridian 5");
}

TEST(ExifTag, NamesCharacterCodes)
{
    using namespace std::string_view_literals;
    const std::pair<std::string_view, int> codes[] = {{"ASCII\0\0\0"sv, 11}, {"UNICODE\0"sv, 12},
        {"JIS\0\0\0\0\0"sv, 13}, {"ASCII\0\0 "sv, 13}, {"UNICODE "sv, 13}, {"\0\0\0\0\0\0\0\0"sv, 13}};
    CExifTag tag;
    for (const auto& [code, number] : codes) {
        ExifBlock::Bytes prefix(code.begin(), code.end());
        EXPECT_EQ(tag.GetByteCode(prefix.data()), number) << code;
    }
    EXPECT_EQ(tag.GetByteCode(nullptr), 13);
}

TEST(Exif, DeletesItsTemporaryFile)
{
    const auto path = std::filesystem::temp_directory_path() / "exif-test-temporary.bin";
    std::ofstream(path) << "x";
    {
        CExif exif;
        exif.SetTempFileName(path.wstring());
        exif.GetTempFileNameW() += L".other";
        EXPECT_EQ(exif.GetTempFileNameW(), (path.wstring() + L".other").c_str());
        exif.GetTempFileNameW() = path.wstring();
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

// Allocations of reading and of patching the camera's block.
constexpr int kParseAllocations = 2;
constexpr int kReplaceAllocations = 2;

TEST(Exif, SurvivesEveryFailedAllocation)
{
    auto block = CameraBlock(true);
    Stream stream = Stream::OverMemory(block.data(), block.size());
    std::optional<CExif> exif;
    int result = 0;
    const auto rewind = [&] {
        stream.Seek(0, SeekOrigin::Start);
        exif.emplace();
    };

    rewind();
    FailEachAllocation(
        kParseAllocations, [&] { result = exif->ParseData(stream); },
        [&](bool failed) {
            EXPECT_TRUE(failed || (result == 1 && CountTags(*exif) == 51));
            for (int i = 0; CExifTag* tag = exif->GetAt(i); ++i)
                EXPECT_NE(tag->data, nullptr);
            rewind();
        });
    FailEachAllocation(
        kReplaceAllocations, [&] { exif->ReplaceData(stream, 41990, 1); }, [&](bool) { rewind(); });
}

}   // namespace
