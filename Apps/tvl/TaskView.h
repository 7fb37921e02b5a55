// Shows the running tasks at the terminal's lower end, or tells of long ones in plain lines where there is no terminal.
#pragma once

#include "ITaskProgressMgr.h"

#include <chrono>
#include <functional>
#include <iosfwd>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// Follows the manager's events as long as it lives. Tasks may be reported on by any thread.
class TaskView {
public:
    using Time = std::chrono::steady_clock::time_point;
    struct Screen {
        std::optional<int> columns;   // width of the terminal; empty where there is none
        bool hasEscapes = false;      // whether it knows the escape sequences that move the cursor
    };

    /// @param out  the terminal, or what stands in its place
    /// @param now  tells the time
    TaskView(std::ostream& out, Screen screen, std::function<Time()> now = std::chrono::steady_clock::now);
    TaskView(const TaskView&) = delete;
    TaskView& operator=(const TaskView&) = delete;
    ~TaskView();

    /// Takes the tasks off the screen as long as it lives, for other output. Its thread must not create or finish tasks
    /// meanwhile.
    class Pause {
    public:
        explicit Pause(TaskView& view);

    private:
        std::unique_lock<std::mutex> m_hold;
    };
    /// Whether tasks are drawn on a terminal: other output must be flushed before it goes on.
    bool IsOnScreen() const { return m_screen.columns.has_value(); }

private:
    struct Entry {
        TvlUtl::ITaskProgress* task;
        unsigned long long group;
        Time start;
        Time nextLine;   // when a plain line is due
        bool isTold = false;
    };

    void Add(TvlUtl::ITaskProgress* task);
    void Remove(TvlUtl::ITaskProgress* task);
    void Show();
    void Tell(Time now);
    void Draw();
    void Clear();
    std::vector<std::wstring> Lines(Time now) const;

    std::ostream& m_out;
    const Screen m_screen;
    const std::function<Time()> m_now;
    std::mutex m_mutex;   // guards the rest. Changes are told under the manager's lock at times: they only try it
    std::vector<Entry> m_entries;
    std::size_t m_shownLines = 0;
    std::size_t m_shownWidth = 0;   // columns of the last line
    Time m_nextDrawing;             // drawing often would cost more than the work
    std::vector<TvlUtils::Subscription> m_subscriptions;
};
