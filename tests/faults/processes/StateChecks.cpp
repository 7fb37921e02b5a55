#include "StateChecks.h"

#include "Tally.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {
constexpr int kPredefined = 149;   // papers of the suite

bool IsTorn(const SettingsOwner& owner) { return owner.name == kTorn; }

/// How old the latest settings of each workspace are: its own, those kept for it, or those on disk.
std::map<std::string, int> LatestAges(const State& state)
{
    std::map<std::string, int> ages;
    const auto take = [&](const SettingsOwner& owner) { ages[owner.name] = std::max(ages[owner.name], owner.age); };
    for (const auto* const owners : {&state.workspaces, &state.kept})
        for (const auto& [name, owner] : *owners)
            take(owner);
    take(state.settings);
    return ages;
}
}   // namespace

StateChecks::StateChecks(std::string work, const State& before) : m_work(std::move(work)), m_before(before) { }

int StateChecks::CountTorn(const State& state)
{
    // Of whole files one that nothing can be read of is none.
    int torn = state.predefined != kPredefined;
    for (const char* const name : {"_default", "A", "B"}) {
        const auto found = state.workspaces.find(name);
        torn += found == state.workspaces.end() || IsTorn(found->second) || found->second.name == kNoSettings;
    }
    for (const auto& [name, owner] : state.kept)
        torn += owner.name != name;
    torn += IsTorn(state.settings) + IsTorn(state.preferences) + IsTorn(state.extracted);
    Tally::Get().Add("torn files", torn);
    return torn;
}

void StateChecks::CheckNoLeftovers(const State& state)
{
    EXPECT_EQ(state.leftovers, std::vector<std::string>());
    Tally::Get().Add("leftovers after the next success", static_cast<long long>(state.leftovers.size()));
}

void StateChecks::Check(const State& state, const Entries& ledger)
{
    EXPECT_EQ(CountTorn(state), 0);
    for (const auto& [name, owner] : state.workspaces)
        EXPECT_EQ(owner.name, name) << "each workspace with settings of its own";
    EXPECT_EQ(state.settings.name, state.current);
    EXPECT_EQ(state.preferences.name, state.current);
    const int lost = (m_work == "save" ? CountLostPapers(state, ledger) : CountLostValues(state, ledger))
        + CountLostChanges(state, ledger);
    EXPECT_EQ(lost, 0);
    Tally::Get().Add("entries of the ledger lost", lost);
    Tally::Get().Add("entries of the ledger found", CountLookedFor(ledger) - lost);
    m_before = state;
}

int StateChecks::CountLookedFor(const Entries& ledger) const
{
    const std::size_t values = m_work == "save" ? ledger.all.size() : !ledger.lastDone.empty();
    return static_cast<int>(values + ledger.changed.size());
}

int StateChecks::CountLostPapers(const State& state, const Entries& ledger) const
{
    int lost = 0;
    const auto find = [&](const std::string& name) {
        EXPECT_TRUE(state.papers.contains(name)) << name << " is lost";
        lost += !state.papers.contains(name);
    };
    std::for_each(m_before.papers.begin(), m_before.papers.end(), find);
    std::for_each(ledger.all.begin(), ledger.all.end(), find);
    for (const std::string& name : state.papers)
        EXPECT_TRUE(m_before.papers.contains(name) || ledger.begun.contains(name)) << name << " was never added";
    return lost;
}

std::string StateChecks::ValueIn(const State& state) const
{
    if (m_work == "switch")
        return state.current;
    if (m_work == "extract")
        return state.extracted.name;
    return m_work == "apply" ? std::to_string(state.preferences.age) : state.preference;
}

int StateChecks::CountLostValues(const State& state, const Entries& ledger) const
{
    // The last one counts: what was there or done, or what was begun behind it.
    const std::string found = ValueIn(state);
    const std::string kept = ledger.lastDone.empty() ? ValueIn(m_before) : ledger.lastDone;
    const bool isKept = found == kept || (found == ledger.lastBegun && !found.empty());
    EXPECT_TRUE(isKept) << found << " where " << kept << " was there";
    return isKept ? 0 : 1;
}

int StateChecks::CountLostChanges(const State& state, const Entries& ledger) const
{
    std::map<std::string, int> expected = LatestAges(m_before);
    for (const auto& [name, age] : ledger.changed)
        expected[name] = std::max(expected[name], age);
    std::map<std::string, int> found = LatestAges(state);
    return static_cast<int>(std::count_if(expected.begin(), expected.end(), [&](const auto& workspace) {
        const auto& [name, age] = workspace;
        EXPECT_GE(found[name], age) << "settings of " << name;
        return found[name] < age;
    }));
}
