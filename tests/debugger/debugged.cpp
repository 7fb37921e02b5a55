// What a debugger is shown: a list of each kind, papers, and a task two levels deep.
#include "ITaskProgressMgr.h"
#include "ListMan.h"
#include "PaperTypes.h"
#include "TaskProgress.h"
#include "WGList.h"

namespace {
/// The debugger stops here and looks at the caller's objects.
[[gnu::noinline]] void Look(const void* address) { asm volatile("" : : "r"(address) : "memory"); }
}   // namespace

int main()
{
    WGList list;
    list.InsertEnd("ab", 2);
    list.InsertEnd("0123456789abcdefg", 17);
    list.Delete(0);
    list.SetHeader("head", 4);

    HMEM__* handle = LIST_Ctor();
    LIST_Push(handle, "xyz", 3);

    PaperTypeInformation paper;
    paper.DisplayName = L"Plakat \u00e4";
    paper.Width = 2100000;
    paper.Height = 2970005;
    paper.CustomId = 150;

    TvlUtl::ITaskProgress* const task = TvlUtl::ITaskProgressMgr::GetInst().CreateTask(5, 2, L"Export");
    task->SetProgress(20, L"Reading");
    task->BeginSubTask(40, 8);
    task->SetProgress(3, L"Rendering");
    task->Cancel();

    // The class behind the interface, for the debugger that reads what this program was compiled with.
    const auto* const counted = static_cast<const TvlUtl::TaskProgress*>(task);
    Look(counted);

    LIST_Dtor(handle);
    task->Finish();
}
