// What a run has tried: printed at its end, and kept with the results of the tests.
#pragma once

#include <map>
#include <string>

/// Counts by what was counted, such as "faults injected".
class Tally {
public:
    static Tally& Get();
    void Add(const std::string& what, long long count = 1) { m_counts[what] += count; }
    void Print() const;

private:
    std::map<std::string, long long> m_counts;
};

/// Whether every point of every operation is to be tried: TVL_FAULTS=whole in the environment. Otherwise a part of them is,
/// evenly spread.
bool IsWholeRun();
/// How many points there are between two that are tried, so that about `most` of `count` are; 1 in a whole run.
int StepBetween(int count, int most);
