// Blocks that no camera wrote.
#include "CExif.h"
#include "ExifBlock.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {
using Bytes = ExifBlock::Bytes;
using TvlUtils::Stream;

struct Outcome {
    int result;
    int tags;
    bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out)
{
    *out << "result " << outcome.result << ", " << outcome.tags << " tags";
}

/// Reads a block and shows every tag.
Outcome Read(const Bytes& block)
{
    CExif exif;
    const int result = exif.ParseData(Stream::OverMemory(block.data(), block.size()));
    int tags = 0;
    TvlString text;
    for (; CExifTag* tag = exif.GetAt(tags); ++tags) {
        tag->GetDisplayLabel(text);
        tag->GetDisplayValue(text);
    }
    return {result, tags};
}

Bytes Load(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes numbers of a block as they are.
class RawBlock {
public:
    explicit RawBlock(bool bigEndian, std::uint32_t offset = 8) : m_bigEndian(bigEndian)
    {
        m_bytes.insert(m_bytes.end(), 2, bigEndian ? 'M' : 'I');
        Put(42, 2).Put(offset, 4);
    }
    RawBlock& Put(std::uint32_t number, unsigned width)
    {
        for (unsigned i = 0; i < width; ++i)
            m_bytes.push_back(static_cast<unsigned char>(number >> 8 * (m_bigEndian ? width - 1 - i : i)));
        return *this;
    }
    RawBlock& Entry(unsigned id, unsigned type, std::uint32_t count, std::uint32_t value)
    {
        return Put(id, 2).Put(type, 2).Put(count, 4).Put(value, 4);
    }
    Bytes& Get() { return m_bytes; }

private:
    bool m_bigEndian;
    Bytes m_bytes;
};

/// `count` directories of one pointer each, the last of which leads to `last`.
Bytes Chain(std::uint32_t count, std::uint32_t last)
{
    RawBlock block(false);
    for (std::uint32_t i = 0; i < count; ++i)
        block.Put(1, 2).Entry(34665, 4, 1, i + 1 < count ? 8 + 18 * (i + 1) : last).Put(0, 4);
    return block.Get();
}

struct FileCase {
    const char* name;   // of the file before "_le.bin" and "_be.bin"
    Outcome outcome;
};
constexpr FileCase kFiles[] = {
    {"chain_2000", {1, 2000}},
    {"count0", {1, 1}},
    {"count_65535", {0, 20}},
    {"display_cfa_wide", {1, 1}},
    {"display_comment_unicode_11", {1, 1}},
    {"display_flashpix_long", {1, 1}},
    {"display_string_high", {1, 1}},
    {"loop_pair", {0, 2}},
    {"loop_self", {0, 2}},
    {"loop_three", {0, 3}},
    {"max_byte", {1, 1}},
    {"off7", {0, 0}},
    {"off8_eof", {0, 0}},
    {"off_end", {0, 0}},
    {"off_max", {0, 0}},
    {"off_neg", {0, 0}},
    {"pointer_byte", {1, 2}},
    {"pointer_rational", {1, 1}},
    {"pointer_short", {1, 2}},
    {"pointer_twice", {1, 2}},
    {"shared_value_3000x20000", {1, 3000}},
    {"type0", {1, 1}},
    {"type65535", {1, 1}},
    {"value_at_end", {1, 0}},
    {"value_in_header", {1, 1}},
    {"value_offset_max", {1, 0}},
    {"value_offset_wrap", {1, 0}},
    {"wrap_long", {1, 1}},
    {"wrap_long_to_0", {1, 1}},
    {"wrap_rational", {1, 1}},
    {"wrap_short", {1, 1}},
    {"wrap_srational", {1, 1}},
};

TEST(ExifHostile, EndsInTheStatedResultForEachFile)
{
    for (const auto& [name, outcome] : kFiles) {
        int found = 0;
        for (const char* order : {"_le.bin", "_be.bin"}) {
            const auto path = std::filesystem::path(EXIF_BLOCKS) / (std::string(name) + order);
            if (!std::filesystem::exists(path))
                continue;
            ++found;
            EXPECT_EQ(Read(Load(path)), outcome) << path;
        }
        EXPECT_GT(found, 0) << name;
    }
}

TEST(ExifHostile, RefusesOtherHeaders)
{
    for (const char* mark : {"IM", "MI", "ii", "\0\0"}) {
        auto block = ExifBlock(false).Shorts(274, {1}).Build();
        block[0] = static_cast<unsigned char>(mark[0]);
        block[1] = static_cast<unsigned char>(mark[1]);
        EXPECT_EQ(Read(block), (Outcome{0, 0})) << mark;
    }
    auto swapped = ExifBlock(true).Shorts(274, {1}).Build();
    std::swap(swapped[2], swapped[3]);
    EXPECT_EQ(Read(swapped), (Outcome{0, 0}));
}

TEST(ExifHostile, ReadsChainsOfAnyLengthAndEndsLoops)
{
    EXPECT_EQ(Read(Chain(100'000, 0)), (Outcome{1, 100'000}));
    EXPECT_EQ(Read(Chain(100'000, 8)), (Outcome{0, 100'000}));
    EXPECT_EQ(Read(Chain(100'000, 8 + 18 * 99'999)), (Outcome{0, 100'000}));
    Bytes block = Chain(100'000, 8);
    EXPECT_EQ(CExif().ReplaceData(Stream::OverMemory(block.data(), block.size()), 274, 1), 0);
}

TEST(ExifHostile, StopsAtSixtyFourMebibytesOfValues)
{
    constexpr std::uint32_t kSize = 60'000;
    constexpr std::uint32_t kEntries = 1500;
    RawBlock block(true);
    block.Put(kEntries, 2);
    for (std::uint32_t i = 0; i + 1 < kEntries; ++i)
        block.Entry(700, 7, kSize, 8 + 2 + 12 * kEntries + 4);
    block.Entry(274, 3, 1, 6 << 16).Put(0, 4);
    block.Get().resize(block.Get().size() + kSize, '\5');

    CExif exif;
    EXPECT_EQ(exif.ParseData(Stream::OverMemory(block.Get().data(), block.Get().size())), 1);
    constexpr int kKept = (64 << 20) / kSize;
    EXPECT_EQ(exif.GetAt(kKept - 1)->GetID(), 700u);
    EXPECT_EQ(exif.GetAt(kKept)->GetID(), 274u) << "a small value behind still has room";
    EXPECT_EQ(exif.GetAt(kKept + 1), nullptr);

    // What is there counts for a second block, too.
    EXPECT_EQ(exif.ParseData(Stream::OverMemory(block.Get().data(), block.Get().size())), 1);
    EXPECT_EQ(exif.GetAt(kKept + 1)->GetID(), 274u);
}

/// 30,000 directories of 30,000 entries each in 720 KB: they lie on each other, one entry further each. The entry before a
/// directory gives its count with the low half of its value, and its last entry points to the next one.
TEST(ExifHostile, EndsDirectoriesThatShareTheirEntries)
{
    constexpr std::uint32_t kCount = 30'000;
    RawBlock block(true);
    block.Put(kCount, 2);
    for (std::uint32_t i = 0; i + 1 < kCount; ++i)
        block.Entry(34665, 0, 1, kCount);
    for (std::uint32_t i = 1; i < kCount; ++i)
        block.Entry(34665, 4, 1, 8 + 12 * i);
    for (const bool patches : {false, true}) {
        const auto stream = Stream::OverMemory(block.Get().data(), block.Get().size());
        CExif exif;
        EXPECT_EQ(patches ? exif.ReplaceData(stream, 274, 1) : exif.ParseData(stream), 0);
        EXPECT_EQ(exif.GetAt(10'000), nullptr) << "ends long before the last";
    }
}

TEST(ExifHostile, ShowsTheLongestValues)
{
    const auto shown = [](unsigned id, unsigned type, std::uint32_t count, const Bytes& value) {
        const auto block = ExifBlock(true).Entry(id, type, count, value).Build();
        CExif exif;
        EXPECT_EQ(exif.ParseData(Stream::OverMemory(block.data(), block.size())), 1);
        TvlString text;
        EXPECT_EQ(exif.GetAt(0)->GetDisplayValue(text), 1) << id;
        return text;
    };
    EXPECT_EQ(shown(700, 1, 65536, Bytes(65536, 255)).GetLength(), 65536 * 5 - 2);
    EXPECT_EQ(shown(37121, 7, 65536, Bytes(65536, 1)).GetLength(), 65536 * 3 - 2);
    EXPECT_EQ(shown(36864, 7, 65536, Bytes(65536, '9')), L"9999");
    EXPECT_EQ(shown(40960, 7, 65536, Bytes(65536, '9')), L"9999");
    Bytes comment(65536, 'x');
    std::copy_n("ASCII\0\0\0", 8, comment.begin());
    EXPECT_EQ(shown(37510, 7, 65536, comment).GetLength(), 65528);
    Bytes pattern(65536, 2);
    std::copy_n("\x7F\xFE\0\2", 4, pattern.begin());
    EXPECT_EQ(shown(41730, 7, 65536, pattern).Right(14), L"e, Blue, Blue}");
}

}   // namespace
