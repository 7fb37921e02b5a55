// A kind of work in a world of its own, with what every start behind it is checked for.
#pragma once

#include "StateChecks.h"

#include <gtest/gtest.h>

struct NamedWork {
    const char* name;
    int recorded;   // operations that it is known to do; fewer of them say that what counts them has come loose

    friend void PrintTo(const NamedWork& work, std::ostream* out) { *out << work.name; }
};

class CheckedWork : public testing::TestWithParam<NamedWork> {
protected:
    /// What the start behind something finds.
    State CheckNextStart()
    {
        const State state = world.Check();
        checks.Check(state, world.Ledger());
        world.ClearLedger();
        return state;
    }
    /// The same work once more: what failed before has left nothing then.
    void CheckNextSuccess()
    {
        EXPECT_EQ(world.Work(work, 2).exitCode, 0);
        StateChecks::CheckNoLeftovers(CheckNextStart());
    }

    const std::string work = GetParam().name;
    ProcessWorld world;
    StateChecks checks{work, world.Check()};
};
