// The database of the registry on a disk that fails, is full, or loses its process: preferences and the language are the old
// ones or the new ones, and what was told to be stored is there.
#include "../ProcessWorld.h"
#include "Tally.h"

#include <gtest/gtest.h>

namespace {
constexpr int kKinds = 4;   // of faults, as the worker numbers them from 1

TEST(DatabaseFaults, LeaveTheOldValueOrTheNewOne)
{
    const ProcessWorld world;
    EXPECT_EQ(world.Work("prefer", 1).exitCode, 0);
    int met = 0;
    for (int kind = 1; kind <= kKinds; ++kind) {
        int quiet = 0;   // runs in a row that met no fault
        for (int point = 1; quiet < 2 && !HasFailure(); ++point) {
            SCOPED_TRACE(testing::Message() << "operation " << point << ", fault " << kind);
            world.ClearLedger();
            const std::string before = world.Start().preference;
            const ChildResult result = world.Work("prefer", 1, [&](ChildProcess& child) {
                child.environment["FAULT_DATABASE"] = std::to_string(point);
                child.environment["FAULT_KIND"] = std::to_string(kind);
            });
            quiet = result.exitCode == 0 ? quiet + 1 : 0;
            met += result.exitCode != 0;
            const Entries ledger = world.Ledger();
            const State state = world.Start();
            EXPECT_TRUE(state.preference == ledger.lastBegun || (state.preference == before && ledger.lastDone.empty()))
                << state.preference;
            EXPECT_TRUE(state.language == "DEU" || state.language == "ENU") << state.language;
            EXPECT_TRUE(state.language == (state.preference == "on" ? "DEU" : "ENU") || result.exitCode != 0);
            Tally::Get().Add("faults of the database survived");
        }
    }
    EXPECT_GT(met, 4 * kKinds) << "the seam has come loose";
}
}   // namespace
