// Does one kind of work again and again, for tests that end it in the middle, and starts, with faults or to look at what is
// there:
//
//   fault_worker WORK LEDGER TIMES     a kind of work; see Work.h
//   fault_worker start                 comes up as an application does
//   fault_worker check                 the same, and tells what is there; see Checks.h
//
// Before each piece of work the ledger gets a line "begin ENTRY", and behind it, when it is done, "done ENTRY"; where settings
// have been changed on disk, "changed OWNER", as in SettingsText.h.
//
// Faults come from variables of the environment. FAULT_ALLOCATION gives the allocation of a start that fails, FAULT_FILE the
// file operation, and FAULT_DATABASE the operation on the registry's database that meets the fault FAULT_KIND; all are
// counted from 1. With FAULT_ONWARD=1 the allocations or file operations behind it fail as well. At its end the process
// tells what it has met and counted:
//
//   met COUNT                          faults
//   counted ALLOCATIONS FILES DATABASE   allocations of a start, and operations; with FAULT_DATABASE=0 they are counted too
#include "Checks.h"
#include "ExitCodes.h"
#include "FailingDatabase.h"
#include "FailingFiles.h"
#include "FailingHeap.h"
#include "Work.h"

#include <cstdlib>
#include <iostream>
#include <new>
#include <string>

namespace {
int Number(const char* variable)
{
    const char* const text = std::getenv(variable);
    return text ? std::atoi(text) : 0;
}

int RunWork(Work work, const char* ledgerPath, int times)
{
    Ledger ledger(ledgerPath);
    for (int number = 0; number < times; ++number)
        if (!work(ledger, number))
            return kRefused;
    return 0;
}

/// A start in which allocations are counted, and fail when that is wanted.
int RunStart(int& allocations, bool& hasFailed)
{
    const int point = Number("FAULT_ALLOCATION");
    const FailingHeap heap(point > 0 ? point - 1 : FailingHeap::kNever,
        Number("FAULT_ONWARD") != 0 ? FailingHeap::Extent::Onward : FailingHeap::Extent::Once);
    int exitCode = 0;
    try {
        Start();
    } catch (const std::bad_alloc&) {
        exitCode = kOutOfMemory;
    }
    allocations = heap.Count();
    hasFailed = heap.HasFailed();
    return exitCode;
}

int Run(int count, char** arguments)
{
    const FailingFiles files(Number("FAULT_FILE"), Number("FAULT_ONWARD") != 0);
    int allocations = 0;
    bool hasFailed = false;
    int exitCode = kRefused;
    if (count == 2)
        exitCode = RunStart(allocations, hasFailed);
    else if (const Work work = FindWork(arguments[1]))
        exitCode = RunWork(work, arguments[2], std::atoi(arguments[3]));
    std::cout << "met " << hasFailed + files.HasFailed() + HasDatabaseFailed() << "\ncounted " << allocations << ' '
              << files.Count() << ' ' << CountDatabaseOperations() << '\n';
    return exitCode;
}
}   // namespace

int main(int count, char** arguments)
{
    if (std::getenv("FAULT_DATABASE"))
        WatchDatabase(Number("FAULT_DATABASE"), static_cast<DatabaseFault>(Number("FAULT_KIND")));
    if (count == 2 && std::string(arguments[1]) == "check") {
        std::cout << ReportState();
        return 0;
    }
    const bool isStart = count == 2 && std::string(arguments[1]) == "start";
    return isStart || count == 4 ? Run(count, arguments) : kRefused;
}
