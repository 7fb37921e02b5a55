// Factors against the data of udunits2.
#include "WUnit.h"

#include <cmath>
#include <gtest/gtest.h>
#include <udunits2.h>

namespace {

struct Peer {
    int id;
    const char* name;
};

// Units whose factors are exact on both sides, a rounding aside.
constexpr Peer kLengths[] = {{1, "inch"}, {2, "mm"}, {3, "inch/6"}, {4, "inch/72"}, {5, "cm"}, {7, "foot"}, {8, "mile"},
    {9, "m"}, {10, "km"}, {12, "4.51187 mm"}, {13, "0.37592 mm"}, {14, "inch/14"}, {15, "inch"}, {16, "yard"},
    {24, "inch/6"}, {25, "4.51187 mm"}, {30, "foot"}, {31, "foot"}, {33, "inch"}, {34, "foot"}, {35, "4.51187 mm"},
    {36, "inch/6"}, {37, "mm/4"}, {38, "mm/4"}};
constexpr Peer kAngles[] = {
    {11, "degree"}, {26, "arc_minute"}, {27, "arc_second"}, {28, "degree"}, {29, "degree"}, {32, "radian"}};
constexpr Peer kMetre = {9, "m"};
constexpr Peer kRadian = {32, "radian"};

class Udunits : public testing::Test {
protected:
    void SetUp() override
    {
        ut_set_error_message_handler(ut_ignore);
        m_system = ut_read_xml(nullptr);
        ASSERT_NE(m_system, nullptr);
    }
    void TearDown() override { ut_free_system(m_system); }

    void ExpectFactor(const Peer& peer, const Peer& base)
    {
        ut_unit* const unit = ut_parse(m_system, peer.name, UT_ASCII);
        ut_unit* const target = ut_parse(m_system, base.name, UT_ASCII);
        cv_converter* const converter = ut_get_converter(unit, target);
        ASSERT_NE(converter, nullptr) << peer.name;
        const double expected = cv_convert_double(converter, 1.0);
        const double factor = WUnit::GetDefaultWUnit().ConvertFromUnitToUnit(peer.id, base.id, 1.0, 0.0);
        EXPECT_LE(std::fabs(factor - expected), std::nextafter(expected, HUGE_VAL) - expected) << peer.name;
        cv_free(converter);
        ut_free(unit);
        ut_free(target);
    }

private:
    ut_system* m_system = nullptr;
};

TEST_F(Udunits, AgreeWithTheFactors)
{
    for (const Peer& length : kLengths)
        ExpectFactor(length, kMetre);
    for (const Peer& angle : kAngles)
        ExpectFactor(angle, kRadian);
}

}   // namespace
