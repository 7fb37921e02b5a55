// Files that fail, in each file operation of what writes them. What is left is the old state or the new one; what was told
// to be done is there; and after the next success nothing else lies about.
#include "FileOperation.h"
#include "MemoryFiles.h"
#include "OldOrNew.h"
#include "Tally.h"

#include <gtest/gtest.h>
#include <string>

namespace {
using Fault = MemoryFiles::Fault;

struct NamedFault {
    const char* name;
    Fault fault;
};
constexpr NamedFault kFaults[] = {
    {"fails", Fault::Fail},
    {"fails, and all behind it", Fault::FailOnward},
    {"is cut short", Fault::ShortWrite},
    {"ends the process, and what was not flushed is gone", Fault::StopDropped},
    {"ends the process, and what was not flushed is torn", Fault::StopTorn},
    {"ends the process, and names that no folder was flushed with are gone", Fault::StopUnnamed},
    {"ends the process", Fault::StopKept},
};
constexpr std::size_t kMostPoints = 60;   // of one operation and fault, unless the run is whole
constexpr int kFullDisks = 40;            // places where the disk is full
constexpr int kMostBytes = 60000;         // by which files grow on the way, at most

std::vector<FileOperation> AllOperations()
{
    std::vector<FileOperation> all = WritesOfWorkspaces();
    for (FileOperations group : {WritesOfManagers(), WritesOfTheUser(), WritesOfPapers(), WritesOfContent()})
        for (FileOperation& operation : group)
            all.push_back(std::move(operation));
    return all;
}

class FileFaults : public testing::TestWithParam<FileOperation> {
protected:
    /// Runs the operation to its end or that of the process.
    static FileRun Run(const FileTrial& trial)
    {
        FileRun run;
        try {
            run.isDone = trial.run();
        } catch (const MemoryFiles::Stop&) {
            // The process ended.
        }
        run.hasFailed = trial.files->FaultReached();
        return run;
    }
    /// Files there are after two runs without faults.
    std::size_t FilesOfASoundRun() const
    {
        const FileTrial trial = GetParam().begin();
        FileRun run = Run(trial);
        EXPECT_TRUE(run.isDone) << "without any fault";
        trial.forget();
        trial.check(run);
        run = Run(trial);
        EXPECT_TRUE(run.isDone) << "a second time";
        trial.forget();
        trial.check(run);
        return trial.files->CountFiles();
    }
    /// One run with what `inject` does to the files.
    /// @param counted what the fault is counted as
    /// @return the file operation that a fault has happened in, or 0 for none
    template <class Inject>
    std::size_t Try(const std::string& counted, std::size_t soundFiles, Inject inject, bool endsSystem = false) const
    {
        const FileTrial trial = GetParam().begin();
        inject(*trial.files);
        FileRun run = Run(trial);
        run.isSystemDown = endsSystem;
        const std::size_t point = trial.files->FaultPoint();
        trial.files->EndProcess();
        trial.forget();
        trial.files->Restart();
        trial.check(run);
        Tally::Get().Add(run.hasFailed ? counted + " injected" : "runs that met no file fault");

        FileRun next = Run(trial);
        next.isSystemDown = endsSystem;
        EXPECT_TRUE(next.isDone) << "with sound files again";
        trial.forget();
        trial.check(next);
        ExpectNoLeftovers(trial.files->CountFiles(), soundFiles, trial.files->ListFiles());
        Tally::Get().Add(counted + " survived", run.hasFailed && !HasFailure() ? 1 : 0);
        return point;
    }
};

TEST_P(FileFaults, LeaveTheOldStateOrTheNewOne)
{
    const std::size_t files = FilesOfASoundRun();
    Tally::Get().Add("operations that write files");
    for (const auto& [name, fault] : kFaults) {
        std::size_t last = 0;
        std::size_t step = 1;
        for (std::size_t point = 1, met = 1; met > 0 && !HasFailure(); point = met + step) {
            SCOPED_TRACE(testing::Message() << "file operation " << point << " " << name);
            met = Try(
                "file faults", files, [&, what = fault](MemoryFiles& world) { world.Inject(point, what); },
                MemoryFiles::EndsSystem(fault));
            last = point;
            if (met >= kMostPoints && !IsWholeRun())
                step = 7;
        }
        // Which of them can be cut short is not recorded; where any can, the first point is met.
        const std::size_t least = fault != Fault::ShortWrite ? GetParam().recorded : GetParam().writesBytes ? 2 : 1;
        EXPECT_TRUE(HasFailure() || last >= least) << name << ": fewer file operations than recorded: " << last;
    }
}

TEST_P(FileFaults, OfAFullDiskLeaveTheOldStateOrTheNewOne)
{
    const std::size_t files = FilesOfASoundRun();
    const int step = StepBetween(kMostBytes, kFullDisks) + 10;
    bool reached = true;
    for (int room = 0; reached && room < kMostBytes && !HasFailure(); room += step) {
        SCOPED_TRACE(testing::Message() << "with room for " << room << " bytes");
        reached = Try("full disks", files, [&](MemoryFiles& world) {
            world.SetCapacity(world.UsedBytes() + static_cast<std::size_t>(room));
        }) > 0;
    }
    EXPECT_FALSE(reached) << "it needs more than that";
}

INSTANTIATE_TEST_SUITE_P(Operations, FileFaults, testing::ValuesIn(AllOperations()),
    [](const auto& operation) { return operation.param.name; });

}   // namespace
