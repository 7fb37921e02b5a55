// Exif blocks: what finds no memory is left away or ends the reading, and the tags read so far stay.
#include "CExif.h"
#include "ExifBlock.h"
#include "HeapOperation.h"

#include <gtest/gtest.h>
#include <optional>

namespace {
const ExifBlock::Bytes& Block()
{
    static const ExifBlock::Bytes block = CameraBlock(true);
    return block;
}

int CountTags(CExif& exif)
{
    int count = 0;
    while (exif.GetAt(count))
        ++count;
    return count;
}

struct Parsing {
    std::optional<CExif> exif;
    ExifBlock::Bytes bytes = Block();
    TvlString text;
    int result = 0;
};

struct Parsed : Parsing {
    Parsed()
    {
        exif.emplace();
        result = exif->ParseData(TvlUtils::Stream::OverMemory(Block().data(), Block().size()));
    }
};
}   // namespace

HeapOperations ExifOperations()
{
    return {
        SilentRow<Parsing>(
            "ParseData",
            [](Parsing& parsing) {
                parsing.exif.emplace();
                parsing.result = parsing.exif->ParseData(TvlUtils::Stream::OverMemory(Block().data(), Block().size()));
            },
            [](Parsing& parsing, const HeapRun& outcome) {
                const int whole = 50;   // without the pointer to the second directory
                const int count = parsing.exif ? CountTags(*parsing.exif) : 0;
                EXPECT_TRUE((parsing.result == 1 && count >= whole) || outcome.hasFailed) << count;
                for (int i = 0; i < count; ++i)
                    EXPECT_NE(parsing.exif->GetAt(i)->data, nullptr);
            }),
        Row<Parsed>(
            "GetDisplayValue",
            [](Parsed& parsed) {
                parsed.result = 0;
                for (int i = 0; CExifTag* const tag = parsed.exif->GetAt(i); ++i)
                    parsed.result += tag->GetDisplayValue(parsed.text) + tag->GetDisplayLabel(parsed.text);
            },
            [](Parsed& parsed, const HeapRun& outcome) {
                EXPECT_TRUE(parsed.result >= 80 || outcome.hasFailed) << parsed.result;
                EXPECT_GE(CountTags(*parsed.exif), 50);
            }),
        Row<Parsed>(
            "ReplaceData",
            [](Parsed& parsed) {
                parsed.result = parsed.exif->ReplaceData(
                    TvlUtils::Stream::OverMemory(parsed.bytes.data(), parsed.bytes.size()), 274, 1);
            },
            [](Parsed& parsed, const HeapRun& outcome) {
                EXPECT_TRUE(parsed.result == 1 || outcome.hasFailed);
                EXPECT_EQ(parsed.bytes.size(), Block().size());
                EXPECT_TRUE(parsed.result == 1 || parsed.bytes == Block()) << "nothing is half written";
                parsed.result = 0;
            },
            [](Parsed& parsed) { return parsed.result == 0; }),
        Row<Parsing>(
            "AllocateData",
            [](Parsing& parsing) {
                CExifTag tag;
                tag.id = 270;
                tag.type = 2;
                tag.count = 1000;
                tag.data = CExifTag::AllocateData(1000);
                parsing.result = tag.data != nullptr;
            },
            [](Parsing& parsing, const HeapRun& outcome) { EXPECT_EQ(parsing.result == 0, outcome.hasFailed); },
            [](Parsing& parsing) { return parsing.result == 0; }),
    };
}
