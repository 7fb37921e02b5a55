// Drawing scales.
#include "WorldScale.h"
#include "FakeLocale.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

using namespace TvlUtl::WorldScale;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

TEST(WorldScale, OffersPresetsInTheirOrder)
{
    struct Row {
        double scale;
        bool metric;
        const char* label;
    };
    constexpr Row kRows[] = {
        {1, true, "1:1"},
        {2, true, "1:2"},
        {4, true, "1:4"},
        {8, true, "1:8"},
        {10, true, "1:10"},
        {16, true, "1:16"},
        {20, true, "1:20"},
        {30, true, "1:30"},
        {40, true, "1:40"},
        {50, true, "1:50"},
        {100, true, "1:100"},
        {4, false, "3\" = 1'"},
        {8, false, "1 1/2\" = 1'"},
        {12, false, "1\" = 1'"},
        {16, false, "3/4\" = 1'"},
        {24, false, "1/2\" = 1'"},
        {32, false, "3/8\" = 1'"},
        {48, false, "1/4\" = 1'"},
        {64, false, "3/16\" = 1'"},
        {96, false, "1/8\" = 1'"},
        {128, false, "3/32\" = 1'"},
        {192, false, "1/16\" = 1'"},
        {384, false, "1/32\" = 1'"},
        {768, false, "1/64\" = 1'"},
        {1563, false, "1/128\" = 1'"},
        {0.5, true, "2:1"},
        {0.25, true, "4:1"},
        {0.125, true, "8:1"},
        {0.1, true, "10:1"},
        {0.01, true, "100:1"},
    };
    const std::vector<Preset> list = GetPresetList();
    ASSERT_EQ(list.size(), std::size(kRows));
    const PresetSet set = GetPresets();
    ASSERT_EQ(set.size(), std::size(kRows));
    auto fromSet = set.begin();
    for (std::size_t i = 0; i < list.size(); ++i, ++fromSet) {
        const auto& [scale, metric, label] = kRows[i];
        EXPECT_EQ(list[i].Scale(), scale);
        EXPECT_EQ(list[i].IsMetric(), metric) << scale;
        EXPECT_EQ(TvlPlatform::ToUtf8(list[i].Label()), label);
        EXPECT_EQ(list[i].WorldDist() / list[i].PageDist(), scale);
        EXPECT_FALSE(list[i].IsCustomWithUnits());
        EXPECT_EQ(fromSet->Label(), list[i].Label());
    }
}

Preset Plain(double scale, bool metric = true) { return Preset(scale, 0, 1.0, 0, scale, L"", metric); }

TEST(WorldScale, OrdersPresets)
{
    const Preset withUnits(2.0, 9, 1.0, 9, 2.0, L"", true);
    EXPECT_TRUE(withUnits.IsCustomWithUnits());
    EXPECT_TRUE(Preset(2.0, 0, 1.0, 9, 2.0, L"", true).IsCustomWithUnits());
    const Preset inOrder[] = {Plain(1.0), Plain(2.0), withUnits, Plain(kInfinity), Plain(1.0, false), Plain(0.9),
        Plain(0.1), Plain(0.0), Plain(-3.0), Plain(kNaN), Plain(0.5, false)};
    const PresetOrder isBefore;
    for (std::size_t i = 0; i < std::size(inOrder); ++i)
        for (std::size_t j = 0; j < std::size(inOrder); ++j)
            EXPECT_EQ(isBefore(inOrder[i], inOrder[j]), i < j) << i << ' ' << j;
    EXPECT_FALSE(isBefore(Plain(0.5), Plain(0.5 - kEpsilon)));
    EXPECT_FALSE(isBefore(Plain(0.5 - kEpsilon), Plain(0.5)));
    EXPECT_TRUE(isBefore(Plain(0.5), Plain(0.5 - 2 * kEpsilon)));
}

struct FormatRow {
    double scale;
    int worldUnit;
    int pageUnit;
    double world;
    double page;
    bool hasUnits;
    const char* label;
};

TEST(WorldScale, KeepsTheFieldsOfAPreset)
{
    struct Fields {
        double distances[3] = {4.0, 0.5, 8.0};   // world, page, scale
        std::int32_t units[2] = {9, 5};          // world, page
        bool metric = true;
    };
    const Preset preset(4.0, 9, 0.5, 5, 8.0, L"label", true);
    constexpr Fields kFields;
    EXPECT_EQ(std::memcmp(&preset, &kFields, offsetof(Fields, metric) + sizeof(bool)), 0);
    static_assert(sizeof(Preset) == sizeof(Fields) + sizeof(TvlString));
}

TEST(WorldScale, FormatsAnyScale)
{
    constexpr FormatRow kRows[] = {
        {4.0, 2, 2, 4, 1, false, "1:4"}, {0.25, 2, 2, 1, 4, false, "4:1"}, {1.0, 1, 1, 1, 1, false, "1:1"},
        {1563.0, 0, 0, 1563, 1, false, "1:1563"}, {2.5, 2, 2, 2.5, 1, true, "1.0 millimeters : 2.5 millimeters"},
        {0.4, 2, 2, 1, 2.5, true, "2.5 millimeters : 1.0 millimeters"},
        {50.0, 9, 5, 1, 2, true, "2.0 centimeters : 1.0 meters"},
        {200.0, 9, 5, 2, 1, true, "1.0 centimeters : 2.0 meters"}, {12.0, 7, 1, 1, 1, true, "1.0 inches : 1.0 feet"},
        {2.0, 22, 2, 2, 1, true, nullptr},   // nothing is converted to a number without a unit
        {0.5, 2, 0, 1, 2, true, nullptr}, {0.0, 2, 2, 1, 4503599627370496.0, false, "4503599627370496:1"},
        {-7.0, 2, 2, 1, 4503599627370496.0, false, "4503599627370496:1"},
        {0.001, 10, 21, 0, 1, true, nullptr},   // an id that has no conversion
    };
    const FakeLocale english;
    for (const auto& [scale, worldUnit, pageUnit, world, page, hasUnits, label] : kRows) {
        const Preset preset = Format(scale, worldUnit, pageUnit, 0.0);
        SCOPED_TRACE(testing::Message() << scale << ' ' << worldUnit << ' ' << pageUnit);
        EXPECT_EQ(preset.WorldDist(), world);
        EXPECT_EQ(preset.PageDist(), page);
        EXPECT_EQ(preset.WorldUnit(), hasUnits ? worldUnit : 0);
        EXPECT_EQ(preset.PageUnit(), hasUnits ? pageUnit : 0);
        EXPECT_EQ(preset.Scale(), std::max(scale, kEpsilon));
        EXPECT_TRUE(preset.IsMetric());
        if (label) {
            EXPECT_EQ(TvlPlatform::ToUtf8(preset.Label()), label);
        }
    }
}

TEST(WorldScale, ConvertsPixelsAtTheResolution)
{
    const double perInch72 = UNITConvertResToBase(72);
    const Preset preset = Format(1.0, 1, 6, perInch72);   // 1:1, shown as pixels to the inch
    EXPECT_EQ(preset.WorldDist(), 1.0);
    EXPECT_NEAR(preset.PageDist(), 72.0, 1e-9);
}

TEST(WorldScale, DefinesScalesThatAreNoNumbers)
{
    const Preset infinite = Format(kInfinity, 2, 2, 0.0);
    EXPECT_EQ(infinite.WorldDist(), kInfinity);
    EXPECT_EQ(infinite.PageDist(), 1.0);
    EXPECT_TRUE(infinite.IsCustomWithUnits());
    const Preset none = Format(kNaN, 2, 5, kNaN);
    EXPECT_EQ(none.WorldDist(), 1.0);
    EXPECT_TRUE(std::isnan(none.PageDist()));
    EXPECT_TRUE(none.IsCustomWithUnits());
    EXPECT_FALSE(Format(1e300, 2, 2, 0.0).Label().IsEmpty());
}

}   // namespace
