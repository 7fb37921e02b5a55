// Running tasks, with their progress and a button that cancels each.
#pragma once

#include "Page.h"
#include "SampleWork.h"
#include "TaskFeed.h"

class TasksPage : public Page {
public:
    explicit TasksPage(HWND parent);

private:
    void OnCommand(int id, int code) override;
    bool OnMessage(UINT message, WPARAM first, LPARAM second) override;
    void AddRow(int row);
    void ShowTasks();
    void ShowRow(int row, const TaskState* task);

    std::vector<TaskState> m_tasks;   // as they are shown
    // The work ends before what listens to it.
    TaskFeed m_feed;
    SampleWork m_work;
};
