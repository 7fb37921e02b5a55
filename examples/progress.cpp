// An operation in two steps reports how far it is, listeners hear of it, and somebody cancels.
#include "ITaskProgressMgr.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <iostream>

namespace {

void Export(TvlUtl::ITaskProgress& task, int pages)
{
    task.BeginSubTask(
        40, static_cast<unsigned long long>(pages));   // 40 of the task's 100 units, one of our own a page
    for (int page = 1; page <= pages && !task.IsCancelled(); ++page)
        task.SetProgress(static_cast<unsigned long long>(page), L"Rendering");
    task.EndSubTask();
}

}   // namespace

int main()
{
    using namespace TvlUtl;
    ITaskProgressMgr& manager = ITaskProgressMgr::GetInst();
    ITaskProgress* const task = manager.CreateTask(5, 2, L"Export");   // group 5, a type of our own
    // A handler is called as long as its subscription lives, on the thread that reports.
    const auto progress = task->GetProgressEvent().Subscribe([](void* sender) {
        auto* const changed = static_cast<ITaskProgress*>(sender);
        std::cout << static_cast<int>(changed->GetProgress() * 100.0 + 0.5) << " % "
                  << TvlPlatform::ToUtf8(changed->GetStepName()) << '\n';
    });

    task->SetProgress(20, L"Reading");
    Export(*task, 2);
    std::cout << manager.GetTaskCount(5, eTaskAnyType, eTaskStateAny) << " task in group 5\n";
    manager.CancelGroup(5, eTaskAnyType);
    std::cout << (task->IsCancelled() ? "cancelled" : "going on") << '\n';
    task->Finish();   // destroys the task
    std::cout << manager.GetTaskCount(5, eTaskAnyType, eTaskStateAny) << " tasks in group 5\n";
}
