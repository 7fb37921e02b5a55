// The database of the registry on a disk that fails, is full, or loses its process: preferences, settings and the language
// are the old ones or the new ones, and what was told to be stored is there.
#include "../CheckedWork.h"
#include "../worker/ExitCodes.h"
#include "Tally.h"
#include "siblings/TvlUtils/FileLayer.h"

namespace {
constexpr int kKinds = 4;   // of faults, as the worker numbers them from 1
constexpr int kStop = 4;    // the one that ends the process

class DatabaseFaults : public CheckedWork {
protected:
    /// One piece of work that is to meet a fault; whether it did.
    bool Try(int point, int kind)
    {
        const WorkerResult result =
            world.Work(work, 1, {{"FAULT_DATABASE", std::to_string(point)}, {"FAULT_KIND", std::to_string(kind)}});
        const bool isStopped = kind == kStop && result.exitCode == TvlUtils::SystemIO::kFileStopExitCode;
        EXPECT_TRUE(isStopped || result.exitCode == 0 || result.exitCode == kRefused) << result.errors;
        const State state = CheckNextStart();
        // The language is stored behind the preference.
        const bool isAlike = state.language == (state.preference == "on" ? "DEU" : "ENU");
        EXPECT_TRUE(work != "prefer" || isAlike || result.exitCode != 0) << state.language;
        const bool isMet = isStopped || result.counted.met > 0;
        Tally::Get().Add("faults of the database survived", isMet && !HasFailure());
        return isMet;
    }
};

TEST_P(DatabaseFaults, LeaveTheOldStateOrTheNewOne)
{
    EXPECT_EQ(world.Work(work, 1).exitCode, 0);
    const int count = world.Work(work, 1, {{"FAULT_DATABASE", "0"}}).counted.database;
    EXPECT_GE(count, GetParam().recorded) << "the seam has come loose";
    const int step = StepBetween(count, DATABASE_POINTS);
    int tried = 0;
    int met = 0;   // what runs before have left in the database decides on the last of its operations
    for (int kind = 1; kind <= kKinds; ++kind) {
        for (int point = 1; point <= count && !HasFailure(); point += step, ++tried) {
            SCOPED_TRACE(testing::Message() << "operation " << point << " of " << count << ", fault " << kind);
            met += Try(point, kind);
        }
        CheckNextSuccess();
    }
    EXPECT_GE(met, tried * 3 / 4) << "of " << tried;
}

INSTANTIATE_TEST_SUITE_P(Work, DatabaseFaults,
    testing::Values(NamedWork{"prefer", 6}, NamedWork{"apply", 6}, NamedWork{"switch", 12}),
    [](const auto& work) { return std::string(work.param.name); });
}   // namespace
