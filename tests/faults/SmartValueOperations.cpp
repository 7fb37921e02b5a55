// Defaults that are round in every unit, and presets of scales.
#include "HeapOperation.h"
#include "SmartValue.h"
#include "WorldScale.h"

#include <gtest/gtest.h>

namespace {
struct Values {
    Values()
    {
        pair.AddValue(1, 8.5);
        smart.SetValues(pair);
        smart.SetIncrements(pair);
        for (unsigned unit = 2; unit <= kMany; ++unit)
            many.AddValue(unit, 1.0);
    }
    static constexpr unsigned kMany = 5;

    WUnitValuePair pair;
    WUnitValuePair many;
    WSmartUnitValue smart;
    std::size_t count = 0;
};

/// What was there before is there, or all of what was to take its place.
void ExpectOldOrNew(const Values& values, std::size_t wanted, const HeapRun& outcome)
{
    double inches = 0.0;
    EXPECT_TRUE(values.pair.GetValue(1, inches));
    const std::size_t size = values.pair.GetAllEntries().size();
    EXPECT_TRUE(size == wanted || (size == 1 && outcome.hasFailed)) << size;
}
}   // namespace

HeapOperations SmartValueOperations()
{
    return {
        Row<Values>(
            "AddValue", [](Values& values) { values.pair.AddValue(2, 216.0); },
            [](Values& values, const HeapRun& outcome) {
                double inches = 0.0;
                EXPECT_TRUE(values.pair.GetValue(1, inches) && inches == 8.5);
                ExpectOldOrNew(values, 2, outcome);
            }),
        Row<Values>(
            "LoadFromString",
            [](Values& values) { values.pair.LoadFromString(L"8.25in;210mm;51,6cc;3px;7.0000000000pt"); },
            [](Values& values, const HeapRun& outcome) { ExpectOldOrNew(values, 5, outcome); }),
        Row<Values>(
            "SetValues",
            [](Values& values) {
                values.smart.SetValues(values.many);
                values.smart.SetIncrements(values.many);
            },
            [](Values& values, const HeapRun& outcome) {
                for (const WUnitValuePair* const kept : {&values.smart.GetValues(), &values.smart.GetIncrements()})
                    EXPECT_TRUE(!(*kept != values.many) || (outcome.hasFailed && !(*kept != values.pair)));
            }),
        Row<Values>(
            "GetPresets", [](Values& values) { values.count = TvlUtl::WorldScale::GetPresets().size(); },
            [](Values& values, const HeapRun& outcome) {
                EXPECT_TRUE(values.count == 30 || outcome.hasFailed) << values.count;
                values.count = 0;
            }),
    };
}
