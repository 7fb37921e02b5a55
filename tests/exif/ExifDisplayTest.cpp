// Labels and values for display, in English.
#include "CExif.h"
#include "ExifBlock.h"

#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace {
using TvlUtils::Stream;
using namespace std::string_view_literals;

/// The value as it is shown; "0: " before the text when the call gives 0.
std::wstring Shown(CExifTag& tag)
{
    TvlString text = L"untouched";
    const int result = tag.GetDisplayValue(text);
    return (result ? L"" : L"0: ") + text.Std();
}

std::wstring ShownOnly(const ExifBlock& block)
{
    const auto bytes = block.Build();
    CExif exif;
    EXPECT_EQ(exif.ParseData(Stream::OverMemory(bytes.data(), bytes.size())), 1);
    CExifTag* const tag = exif.GetAt(0);
    return tag ? Shown(*tag) : L"no tag";
}

TEST(ExifLabel, FindsRowsUpToTheFirstAboveTheTag)
{
    struct Case {
        unsigned id;
        std::optional<std::wstring> label;
    };
    const Case cases[] = {{0, L"GPS version"}, {1, {}}, {3, {}}, {26, L"GPS destination distance"}, {27, {}}, {274, {}},
        {272, L"Camera model"}, {37122, L"Compressed bits per pixel"}, {37377, {}}, {37381, {}}, {37386, {}},
        {37500, L"Maker note"}, {37510, L"User comment"}, {37522, L"Date digitized, fraction of a second"}, {37523, {}},
        {40960, L"FlashPix version"}, {41730, L"Color filter array pattern"}, {41731, {}}, {65536, {}},
        {65536 + 272, {}}};
    for (const auto& [id, label] : cases) {
        CExifTag tag;
        tag.id = id;
        TvlString text = L"untouched";
        EXPECT_EQ(tag.GetDisplayLabel(text), label.has_value()) << id;
        EXPECT_EQ(text.Std(), label.value_or(L"untouched")) << id;
    }
}

class ExifDisplay : public testing::TestWithParam<bool> {
protected:
    ExifBlock Block() const { return ExifBlock(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(ByteOrders, ExifDisplay, testing::Bool(),
    [](const auto& order) { return order.param ? "BigEndian" : "LittleEndian"; });

TEST_P(ExifDisplay, ShowsPlainValuesByType)
{
    struct Case {
        ExifBlock block;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {Block().Raw(700, 1, 3, "\0\x7F\xFF"sv), L"0, 127, 255"},
        {Block().Text(270, "Harbour at dusk"), L"Harbour at dusk"},
        {Block().Raw(270, 2, 8, "abc\0defg"sv), L"abc"},
        {Block().Raw(270, 2, 4, "\xC3\xA9x?"sv), L"\u00E9x"},
        {Block().Raw(270, 2, 1, "x"), L""},
        {Block().Shorts(258, {1, 2, 3}), L"1, 2, 3"},
        {Block().Shorts(258, {65535}), L"65535"},
        {Block().Longs(256, {0, 4294967295}), L"0, 4294967295"},
        {Block().Undefined(700, "\x0A\xFF\0"sv), L"a, ff, 0"},
        {Block().Entry(700, 9, 1, {0xFF, 0xFF, 0xFF, 0xFF}), L"-1"},
        {Block().Rationals(37380, {0xFFFFFFFD, 2, 1, 0, 0x80000000, 0xFFFFFFFF}, 10),
            L"-1.500000, 0, 2147483648.000000"},
        {Block().Rationals(282, {300, 1, 72, 0, 1, 3}), L"300.000000, 0, 0.333333"},
        {Block().Rationals(33434, {1, 250}), L"1/250"},
        {Block().Rationals(33434, {2, 1}), L"2.000000"},
        {Block().Rationals(33434, {3, 3}), L"1.000000"},
        {Block().Rationals(33434, {1, 0}), L"0"},
        {Block().Rationals(33434, {0xFFFFFFFE, 0xFFFFFFFF}), L"-2/-1"},
        {Block().Rationals(41486, {3000, 1}), L"3000/1 (3000.000000)"},
        {Block().Rationals(41487, {1, 3}), L"1/3 (0.333333)"},
        {Block().Rationals(41487, {1, 0}), L"0"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(ShownOnly(test.block), test.shown) << &test - cases;
}

TEST_P(ExifDisplay, ShowsEnumeratedValues)
{
    struct Case {
        ExifBlock block;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {Block().Shorts(34850, {1}), L"Manual"},
        {Block().Shorts(34850, {8, 1}), L"Landscape mode"},
        {Block().Shorts(34850, {0}), L"0"},
        {Block().Raw(34850, 1, 1, "\1"), L"Unreadable"},
        {Block().Longs(34850, {65538}), L"Normal program"},
        {Block().Shorts(40961, {1}), L"sRGB"},
        {Block().Shorts(40961, {65535}), L"Uncalibrated"},
        {Block().Shorts(40961, {2}), L"2"},
        {Block().Shorts(41488, {3}), L"Centimeter"},
        {Block().Shorts(41488, {1}), L"1"},
        {Block().Shorts(41495, {7}), L"Trilinear sensor"},
        {Block().Shorts(41495, {6}), L"6"},
        {Block().Undefined(41728, "\3"), L"Digital still camera"},
        {Block().Undefined(41728, "\4"), L"4"},
        {Block().Undefined(41729, "\1"), L"Directly photographed"},
        {Block().Undefined(41729, "\xFF"), L"255"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(ShownOnly(test.block), test.shown) << &test - cases;
}

TEST_P(ExifDisplay, ShowsVersionsComponentsAndPatterns)
{
    struct Case {
        ExifBlock block;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {Block().Undefined(36864, "0220"), L"2.2"},
        {Block().Undefined(36864, "0210"), L"2.1"},
        {Block().Undefined(36864, "0230"), L"0230"},
        {Block().Undefined(36864, "02309999"), L"0230"},
        {Block().Undefined(36864, "02\0\0"sv), L"02"},
        {Block().Undefined(36864, "022"), L"Unreadable"},
        {Block().Undefined(40960, "0100"), L"1.0"},
        {Block().Undefined(40960, "0101"), L"0101"},
        {Block().Undefined(40960, "010"), L"Unreadable"},
        {Block().Undefined(37121, "\1\2\3\0"sv), L"Y, Cb, Cr, None"},
        {Block().Undefined(37121, "\4\5\6\xC8\7"), L"Red, Green, Blue, Unknown (c8), Unknown (7)"},
        {Block().Undefined(37121, "\1\2\3"), L"Unreadable"},
        {Block().Undefined(41730, "\0\2\0\2\0\1\1\2"sv), L"(2 x 2): {Red, Green}, {Green, Blue}"},
        {Block().Undefined(41730, "\0\1\0\3\6\7\5\4"sv), L"(1 x 3): {White}, {Unknown}"},
        {Block().Undefined(41730, "\0\0\0\0"sv), L"(0 x 0): {}, {}"},
        {Block().Undefined(41730, "\0\3\0\2\0\1\1\2"sv), L"Unreadable"},
        {Block().Undefined(41730, "\xFF\xFF\0\2\0\1\1\2"sv), L"Unreadable"},
        {Block().Undefined(41730, "\0\2\0"sv), L"Unreadable"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(ShownOnly(test.block), test.shown) << &test - cases;
}

TEST_P(ExifDisplay, ShowsCommentsByTheirCharacterCode)
{
    struct Case {
        std::string_view comment;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {"ASCII\0\0\0pier"sv, L"pier"},
        {"ASCII\0\0\0pier\0more"sv, L"pier"},
        {"ASCII\0\0\0"sv, L"0: "},
        {"UNICODE\0A\0B\0"sv, L"AB"},
        {"UNICODE\0A\0\0\0B\0"sv, L"A"},
        {"UNICODE\0A"sv, L"A"},
        {"UNICODE\0A\0B"sv, L"AB"},
        {"UNICODE\0\xAC\x20\x3D\xD8\x00\xDE"sv, L"\u20AC\U0001F600"},
        {"UNICODE\0\x00\xD8\x00\xD8"sv, L"\uFFFD\uFFFD"},
        {"UNICODE\0\x41\x00\x3D\xD8"sv, L"A\uFFFD"},
        {"JIS\0\0\0\0\0abc"sv, L"0: "},
        {"\0\0\0\0\0\0\0\0abc"sv, L"0: "},
    };
    for (const auto& [comment, shown] : cases)
        EXPECT_EQ(ShownOnly(Block().Undefined(37510, comment)), shown) << comment;
}

/// Tags that no directory gives.
TEST(ExifDisplayOfOtherTags, ShowsMakerNotesUpToAHundredBytes)
{
    for (const unsigned size : {1u, 100u, 101u}) {
        CExifTag tag;
        tag.id = 37500;
        tag.type = 7;
        tag.count = size;
        tag.data = CExifTag::AllocateData(size);
        std::memset(tag.data, 'm', size);
        EXPECT_EQ(Shown(tag), size <= 100 ? std::wstring(size, L'm') : L"0: ") << size;
    }
}

TEST(ExifDisplayOfOtherTags, EndsTextsThatNobodyHasEnded)
{
    CExifTag tag;
    tag.id = 270;
    tag.type = 2;
    tag.count = 3;
    tag.data = CExifTag::AllocateData(3);
    std::memcpy(tag.data, "abc", 3);
    EXPECT_EQ(Shown(tag), L"ab");
    EXPECT_EQ(tag.data[2], 0);
}

TEST(ExifDisplayOfOtherTags, ShowsNothingOfWhatIsNotThere)
{
    CExifTag empty;
    EXPECT_EQ(Shown(empty), L"0: untouched");
    CExifTag unread;
    unread.count = 0xFFFFFFFF;
    for (unsigned type = 0; type < 14; ++type) {
        unread.type = type;
        EXPECT_EQ(Shown(unread), L"") << type;
    }
    for (const unsigned id : {34850u, 36864u, 37121u, 40960u, 41728u, 41730u}) {
        unread.id = id;
        EXPECT_EQ(Shown(unread), L"Unreadable") << id;
    }
    unread.id = 37510;
    EXPECT_EQ(Shown(unread), L"0: ");
}

}   // namespace
