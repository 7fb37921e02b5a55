#include "TasksPage.h"

#include "ControlIds.h"

#include <cmath>
#include <commctrl.h>

namespace {
constexpr UINT kTasksChanged = WM_APP;
constexpr int kTop = 92;
constexpr int kRowHeight = 50;
constexpr int kBarEnd = 1000;

int RowId(int row) { return kFirstTask + row * kTaskStride; }
}   // namespace

TasksPage::TasksPage(HWND parent) : Page(parent), m_feed(Window(), kTasksChanged)
{
    AddLabel(L"Start work on threads of its own:", {16, 16, 220, 18});
    AddButton(L"&Short", kTaskShort, {240, 12, 90, 26});
    AddButton(L"&Long", kTaskLong, {340, 12, 90, 26});
    AddButton(L"&Failing", kTaskFailing, {440, 12, 90, 26});
    AddButton(L"Cancel &all", kTaskCancelAll, {556, 12, 100, 26});
    AddLabel(L"", {16, 52, 640, 18}, kTaskCount);
    for (int row = 0; row < kTaskRows; ++row)
        AddRow(row);
    ShowTasks();
}

void TasksPage::AddRow(int row)
{
    const int id = RowId(row);
    const int y = kTop + row * kRowHeight;
    const std::wstring cancel = L"Cancel &" + std::to_wstring(row + 1);
    AddLabel(L"", {16, y, 140, 18}, id);
    AddLabel(L"", {160, y, 380, 18}, id + kTaskStep);
    const HWND bar = Add(PROGRESS_CLASSW, L"", 0, id + kTaskBar, {16, y + 20, 524, 16});
    SendMessageW(bar, PBM_SETRANGE32, 0, kBarEnd);
    AddButton(cancel.c_str(), id + kTaskCancel, {556, y + 8, 100, 26});
}

void TasksPage::ShowTasks()
{
    m_tasks = m_feed.Take();
    for (int row = 0; row < kTaskRows; ++row) {
        const auto index = static_cast<std::size_t>(row);
        ShowRow(row, index < m_tasks.size() ? &m_tasks[index] : nullptr);
    }
    const std::wstring end = m_feed.LastEnd();
    std::wstring count = m_tasks.empty() ? L"No task is running."
        : m_tasks.size() == 1            ? L"1 task is running."
                                         : std::to_wstring(m_tasks.size()) + L" tasks are running.";
    SetText(kTaskCount, (end.empty() ? count : count + L"   Last: " + end).c_str());
}

void TasksPage::ShowRow(int row, const TaskState* task)
{
    const int id = RowId(row);
    if (task) {
        SetText(id, task->name.c_str());
        SetText(id + kTaskStep, task->isCancelled ? L"Cancelling" : task->step.c_str());
        SendMessageW(Control(id + kTaskBar), PBM_SETPOS, static_cast<WPARAM>(std::lround(task->progress * kBarEnd)), 0);
        EnableWindow(Control(id + kTaskCancel), !task->isCancelled);
    }
    // The keyboard's place is not to vanish with a row.
    if (!task && GetFocus() == Control(id + kTaskCancel))
        SetFocus(Control(kTaskShort));
    for (const int part : {0, int{kTaskStep}, int{kTaskBar}, int{kTaskCancel}})
        ShowWindow(Control(id + part), task ? SW_SHOWNA : SW_HIDE);
}

bool TasksPage::OnMessage(UINT message, WPARAM, LPARAM)
{
    if (message == kTasksChanged)
        ShowTasks();
    return message == kTasksChanged;
}

void TasksPage::OnCommand(int id, int)
{
    if (id >= kTaskShort && id <= kTaskFailing)
        return m_work.Start(static_cast<SampleWork::Kind>(id - kTaskShort));
    if (id == kTaskCancelAll)
        return SampleWork::CancelAll();
    const int row = (id - kFirstTask) / kTaskStride;
    if (id == RowId(row) + kTaskCancel && static_cast<std::size_t>(row) < m_tasks.size())
        SampleWork::Cancel(m_tasks[static_cast<std::size_t>(row)].group);
}
