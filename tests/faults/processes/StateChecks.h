// What holds after every start, whatever happened before it: nothing is torn, nothing that was told to be done is lost, and
// everything else is the old state or the new one.
#pragma once

#include "ProcessWorld.h"

/// Looks at the states that the starts of one world find, one after the other; what it looks for is counted by Tally.
class StateChecks {
public:
    /// @param work that is done in the world
    /// @param before what is there before the first
    StateChecks(std::string work, const State& before);

    /// @param ledger of the work since the last call
    void Check(const State& state, const Entries& ledger);
    /// Behind a success nothing is left of what failed before it.
    static void CheckNoLeftovers(const State& state);
    /// Files, and settings in the registry, that are neither whole nor of one state.
    static int CountTorn(const State& state);

private:
    /// What the work has written last; its entries in the ledger are alike.
    std::string ValueIn(const State& state) const;
    /// Entries of the ledger that can be found: all papers, but of values, which take each other's place, the last alone.
    int CountLookedFor(const Entries& ledger) const;
    int CountLostPapers(const State& state, const Entries& ledger) const;
    int CountLostValues(const State& state, const Entries& ledger) const;
    /// Changes of settings that were there, or that the ledger tells of: an old age in the place of a later one.
    int CountLostChanges(const State& state, const Entries& ledger) const;

    std::string m_work;
    State m_before;
};
