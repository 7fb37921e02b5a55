// Slider transformations.
#include "SliderTransform.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <vector>

using namespace Framework::UI::Experimental;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<std::unique_ptr<WICmnUISliderTransform>> EveryKind(double centre)
{
    std::vector<std::unique_ptr<WICmnUISliderTransform>> kinds;
    kinds.push_back(std::make_unique<WCmnUIDefaultSliderTransformation>());
    kinds.push_back(std::make_unique<WCmnUILogarithmicSliderTransformation>());
    kinds.push_back(std::make_unique<WCmnUIExponentialSliderTransformation>());
    kinds.push_back(std::make_unique<WCmnUICombinedSliderTransformation>(centre));
    return kinds;
}

TEST(SliderTransform, SnapsToStepsAndStaysInTheRange)
{
    struct Row {
        double value;
        double position;
        double back;
    };
    constexpr Row kRows[] = {
        {54, 100, 50},   // position of the nearest step
        {55, 120, 60},
        {-4, 0, 0},
        {-1000, 0, 0},
        {1000, 200, 100},
        {100, 200, 100},
        {1e300, 0, 0},   // more steps than a 32-bit integer counts
        {-1e300, 0, 0},
        {kInfinity, 0, 0},
        {kNaN, 0, 0},
    };
    WCmnUIDefaultSliderTransformation slider;
    ASSERT_EQ(slider.InitTransformation(0.0, 100.0, 200.0), 1);
    EXPECT_EQ(slider.GetMappedValue(103.0), 50.0);
    for (const auto& [value, position, back] : kRows) {
        EXPECT_EQ(slider.GetLinearValue(value), position) << value;
        EXPECT_EQ(slider.GetMappedValue(slider.GetLinearValue(value)), back) << value;
    }
    // A truncated step below the minimum is still in the range.
    ASSERT_EQ(slider.InitTransformation(-3.0, 100.0, 200.0), 1);
    EXPECT_EQ(slider.GetMappedValue(0.0), -3.0);
    EXPECT_EQ(slider.GetMappedValue(200.0), 97.0);
}

TEST(SliderTransform, RefusesRangesAndStepsThatMakeNoSense)
{
    WCmnUIDefaultSliderTransformation slider;
    EXPECT_EQ(slider.GetIncrementValue(), 10.0);
    for (const double step : {0.0, -1.0, kNaN})
        EXPECT_EQ(slider.SetIncrementValue(step), 0);
    EXPECT_EQ(slider.GetIncrementValue(), 10.0);
    EXPECT_EQ(slider.SetIncrementValue(0.5), 1);
    EXPECT_EQ(slider.GetIncrementValue(), 0.5);

    EXPECT_EQ(slider.SetRangeMax(-1.0), 0);   // the minimum is 0.0 still
    EXPECT_EQ(slider.InitTransformation(-5.0, -1.0, 100.0), 0);
    EXPECT_EQ(slider.GetRangeMin(), 0.0);
    EXPECT_EQ(slider.SetRangeMax(5.0), 1);
    EXPECT_EQ(slider.SetRangeMin(6.0), 0);
    EXPECT_EQ(slider.SetRangeMin(5.0), 1);
    // The maximum is taken before the minimum is refused, and the slider's range is not reached.
    EXPECT_EQ(slider.InitTransformation(8.0, 7.0, 100.0), 0);
    EXPECT_EQ(slider.GetRangeMax(), 7.0);
    EXPECT_EQ(slider.GetRangeMin(), 5.0);
    EXPECT_EQ(slider.GetSliderRange(), 0.0);
}

TEST(SliderTransform, BendsOnlyARangeWithExtent)
{
    auto kinds = EveryKind(50.0);
    kinds.erase(kinds.begin());   // the linear one admits equal ends
    for (const auto& slider : kinds) {
        ASSERT_NE(slider->InitTransformation(0.0, 100.0, 200.0), 0);
        for (const double max : {5.0, 4.0, kNaN})
            EXPECT_EQ(slider->InitTransformation(5.0, max, 100.0), 0) << max;
        EXPECT_EQ(slider->GetRangeMin(), 0.0);
        EXPECT_EQ(slider->GetRangeMax(), 100.0);
        EXPECT_EQ(slider->GetSliderRange(), 200.0);
        EXPECT_EQ(slider->InitTransformation(kNaN, 5.0, 100.0), 0);
    }
}

TEST(SliderTransform, ReachesTheBoundsOfItsFunction)
{
    EXPECT_EQ(WCmnUILogarithmicSliderTransformation::kdMaxLogBound, 50.0);
    EXPECT_EQ(WCmnUIExponentialSliderTransformation::kdMaxExpBound, 10.0);
    WCmnUILogarithmicSliderTransformation logarithmic;
    WCmnUIExponentialSliderTransformation exponential;
    ASSERT_EQ(logarithmic.InitTransformation(1.0, 1000.0, 200.0), 1);
    ASSERT_EQ(exponential.InitTransformation(1.0, 1000.0, 200.0), 1);
    EXPECT_NEAR(logarithmic.FunctionTransform(1.0), 0.0, 1e-12);
    EXPECT_NEAR(logarithmic.FunctionTransform(1000.0), std::log(50.0), 1e-12);
    EXPECT_NEAR(exponential.FunctionTransform(1.0), std::exp(1.0), 1e-12);
    EXPECT_NEAR(exponential.FunctionTransform(1000.0), std::exp(10.0), 1e-8);
    // Half the way is the geometric mean of the argument's ends here, and the logarithm of their mean there.
    logarithmic.SetIncrementValue(1e-6);
    exponential.SetIncrementValue(1e-6);
    EXPECT_NEAR(logarithmic.GetMappedValue(100.0), 1.0 + (std::sqrt(50.0) - 1.0) / 49.0 * 999.0, 1e-5);
    EXPECT_NEAR(exponential.GetMappedValue(100.0),
        1.0 + (std::log((std::exp(10.0) + std::exp(1.0)) / 2.0) - 1.0) / 9.0 * 999.0, 1e-5);
}

TEST(SliderTransform, PutsTheCentreAtTheMiddle)
{
    struct Row {
        double centre;
        double position;
        double value;
    };
    constexpr Row kRows[] = {
        {20, 0, 0}, {20, 50, 10}, {20, 100, 20}, {20, 150, 60}, {20, 200, 100}, {90, 100, 90}, {90, 150, 95}};
    for (const auto& [centre, position, value] : kRows) {
        WCmnUICombinedSliderTransformation slider(centre);
        ASSERT_EQ(slider.InitTransformation(0.0, 100.0, 200.0), 1);
        slider.SetIncrementValue(1.0);
        EXPECT_NEAR(slider.GetMappedValue(position), value, 1e-9) << centre;
        EXPECT_NEAR(slider.GetLinearValue(value), position, 1e-9) << centre;
    }
}

TEST(SliderTransform, IsItsOwnInverseAtEveryStep)
{
    for (const auto& slider : EveryKind(100.0)) {
        ASSERT_NE(slider->InitTransformation(1.0, 1000.0, 200.0), 0);
        slider->SetIncrementValue(1.0);
        double last = -1.0;
        for (double value = 1.0; value <= 1000.0; ++value) {
            const double position = slider->GetLinearValue(value);
            ASSERT_GT(position, last);
            ASSERT_EQ(slider->GetMappedValue(position), value);
            last = position;
        }
        EXPECT_NEAR(last, 200.0, 1e-9);
    }
}

TEST(SliderTransform, DefinesWhatDividesByZero)
{
    for (const auto& slider : EveryKind(1.0)) {
        slider->InitTransformation(1.0, 1000.0, 0.0);
        EXPECT_EQ(slider->GetMappedValue(0.0), 1.0);   // not a number: the minimum
        EXPECT_EQ(slider->GetMappedValue(kNaN), 1.0);
    }
    WCmnUIDefaultSliderTransformation oneStep;
    oneStep.InitTransformation(0.0, 100.0, 200.0);
    EXPECT_EQ(oneStep.SetIncrementValue(kInfinity), 1);
    EXPECT_TRUE(std::isnan(oneStep.GetMappedValue(100.0)));
    WCmnUICombinedSliderTransformation atEnd(0.0);
    atEnd.InitTransformation(0.0, 100.0, 200.0);
    EXPECT_TRUE(std::isnan(atEnd.FunctionTransform(0.0)));
    EXPECT_EQ(atEnd.FunctionTransform(100.0), 100.0);
    WCmnUILogarithmicSliderTransformation fresh;
    EXPECT_EQ(fresh.GetMappedValue(5.0), 0.0);
    // The base refuses a negative range on a fresh object; the bend is the arguments' all the same.
    EXPECT_EQ(fresh.InitTransformation(-2.0, -1.0, 10.0), 1);
    EXPECT_EQ(fresh.GetRangeMax(), 0.0);
    EXPECT_NEAR(fresh.FunctionTransform(-1.0), std::log(50.0), 1e-12);
}

/// Slot of a virtual member in its table: the pointer holds 1 plus 8 times the slot.
template <class Member>
std::size_t Slot(Member member)
{
    std::uintptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
    return (words[0] - 1) / 8;
}

TEST(SliderTransform, KeepsItsSlotsAndFields)
{
    using Base = WICmnUISliderTransform;
    const std::size_t slots[] = {Slot(&Base::GetRangeMin), Slot(&Base::GetRangeMax), Slot(&Base::SetRangeMin),
        Slot(&Base::SetRangeMax), Slot(&Base::SetSliderRange), Slot(&Base::GetSliderRange),
        Slot(&Base::InitTransformation), Slot(&Base::SetIncrementValue), Slot(&Base::GetIncrementValue),
        Slot(&Base::GetLinearValue), Slot(&Base::GetMappedValue), Slot(&Base::FunctionTransform),
        Slot(&Base::InverseFunction)};
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i + 2);   // behind the two of the destructor

    WCmnUICombinedSliderTransformation slider(30.0);
    slider.InitTransformation(1.0, 100.0, 200.0);
    slider.SetIncrementValue(7.0);
    const WCmnUICombinedSliderTransformation copy = slider;
    double words[6];
    static_assert(sizeof copy == sizeof words);
    std::memcpy(words, static_cast<const void*>(&copy), sizeof words);
    constexpr double kFields[] = {100.0, 1.0, 200.0, 7.0, 30.0};
    EXPECT_EQ(std::memcmp(words + 1, kFields, sizeof kFields), 0);
    static_assert(sizeof(WCmnUILogarithmicSliderTransformation) == 7 * sizeof(double));
}

}   // namespace
