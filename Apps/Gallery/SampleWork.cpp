#include "SampleWork.h"

#include "ITaskProgressMgr.h"

#include <chrono>
#include <string>

namespace {
using TvlUtl::ITaskProgress;
using TvlUtl::ITaskProgressMgr;

constexpr int kType = 2;
constexpr unsigned long long kWhole = 100;   // units of a fresh task
constexpr auto kUnitTime = std::chrono::milliseconds(50);

/// Works off the units of the innermost step; false when the task was cancelled.
bool WorkThrough(ITaskProgress& task, unsigned long long units, const std::wstring& step)
{
    for (unsigned long long done = 0; done < units && !task.IsCancelled(); ++done) {
        std::this_thread::sleep_for(kUnitTime);
        task.SetProgress(done + 1, step.c_str());
    }
    return !task.IsCancelled();
}

void WorkShortly(ITaskProgress& task)
{
    task.BeginSubTask(kWhole, 20);
    WorkThrough(task, 20, L"Counting");
    task.EndSubTask();
}

/// Ten pages, each in a short step and one that is worth twice as much.
void WorkLong(ITaskProgress& task)
{
    constexpr unsigned long long kPages = 10;
    constexpr unsigned long long kPageUnits = 3;
    task.BeginSubTask(kWhole, kPages * kPageUnits);
    for (unsigned long long page = 1; page <= kPages && !task.IsCancelled(); ++page) {
        const std::wstring name = L"Page " + std::to_wstring(page);
        task.BeginSubTask(1, 20);
        WorkThrough(task, 20, name + L": reading");
        task.EndSubTask();
        task.BeginSubTask(2, 40);
        WorkThrough(task, 40, name + L": drawing");
        task.EndSubTask();
    }
    task.EndSubTask();
}

void WorkInVain(ITaskProgress& task)
{
    task.BeginSubTask(kWhole, 40);
    if (WorkThrough(task, 20, L"Writing"))
        task.SetError(L"the disk is full");
}

struct Sample {
    const wchar_t* name;
    void (*work)(ITaskProgress&);
};

constexpr Sample kSamples[] = {{L"Short", &WorkShortly}, {L"Long", &WorkLong}, {L"Failing", &WorkInVain}};
}   // namespace

SampleWork::~SampleWork() { CancelAll(); }

void SampleWork::Start(Kind kind)
{
    const Sample& sample = kSamples[static_cast<std::size_t>(kind)];
    const unsigned long long group = ++m_lastGroup;
    const std::wstring name = std::wstring(sample.name) + L" " + std::to_wstring(group - 100);
    ITaskProgress* const task = ITaskProgressMgr::GetInst().CreateTask(group, kType, name.c_str());
    m_threads.emplace_back([task, work = sample.work] {
        work(*task);
        task->Finish();
    });
}

void SampleWork::Cancel(unsigned long long group)
{
    // By the group, as the task itself may end meanwhile.
    ITaskProgressMgr::GetInst().CancelGroup(group, TvlUtl::eTaskAnyType);
}

void SampleWork::CancelAll() { ITaskProgressMgr::GetInst().CancelAll(TvlUtl::eTaskAnyType); }
