#include "Tally.h"

#include "windows/Environment.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

Tally& Tally::Get()
{
    static Tally tally;
    return tally;
}

void Tally::Print() const
{
    for (const auto& [what, count] : m_counts)
        std::printf("%12lld %s\n", count, what.c_str());
    std::fflush(stdout);
}

bool IsWholeRun()
{
    static const bool isWhole = Ports::Environment::Get().Variable(L"TVL_FAULTS") == L"whole";
    return isWhole;
}

int StepBetween(int count, int most) { return IsWholeRun() ? 1 : std::max(1, (count + most - 1) / most); }

namespace {
class TallyEnvironment : public testing::Environment {
public:
    void TearDown() override { Tally::Get().Print(); }
};

const auto* const environment = testing::AddGlobalTestEnvironment(new TallyEnvironment);
}   // namespace
