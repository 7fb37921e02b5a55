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

// Units whose factors are exact on both sides.
constexpr Peer kUnits[] = {{1, "inch"}, {2, "mm"}, {5, "cm"}, {7, "foot"}, {8, "mile"}, {9, "m"}, {10, "km"},
    {16, "yard"}, {11, "degree"}, {26, "arc_minute"}, {27, "arc_second"}, {32, "radian"}};

TEST(WUnit, FactorsAgreeWithUdunits)
{
    ut_set_error_message_handler(ut_ignore);
    ut_system* const system = ut_read_xml(nullptr);
    ASSERT_NE(system, nullptr);
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const auto& [id, name] : kUnits) {
        ut_unit* const unit = ut_parse(system, name, UT_ASCII);
        ut_unit* const base = ut_parse(system, id >= 11 && id != 16 ? "radian" : "m", UT_ASCII);
        cv_converter* const converter = ut_get_converter(unit, base);
        ASSERT_NE(converter, nullptr) << name;
        const double expected = cv_convert_double(converter, 1.0);
        const double factor = units.ConvertFromUnitToUnit(id, id >= 11 && id != 16 ? 32 : 9, 1.0, 0.0);
        EXPECT_LE(std::fabs(factor - expected), std::nextafter(expected, HUGE_VAL) - expected) << name;
        cv_free(converter);
        ut_free(unit);
        ut_free(base);
    }
    ut_free_system(system);
}

}   // namespace
