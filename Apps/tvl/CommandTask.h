// A long piece of a command's work: shown while it goes on, and cancelled by Ctrl-C.
#pragma once

#include "TaskView.h"

#include <condition_variable>
#include <thread>

/// Cancels all tasks when the user presses Ctrl-C, as long as it lives. A second press ends the program at once. A
/// program that was started with Ctrl-C turned off takes no notice of it. One object at a time.
class Interrupts {
public:
    Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;
    ~Interrupts();

private:
    void (*m_before)(int) = nullptr;   // what the signal did
    std::mutex m_mutex;
    std::condition_variable_any m_stopped;
    std::jthread m_watcher;   // ends first
};

/// A task of the command that runs, with its view on standard error.
class CommandTask {
public:
    /// @param name  what is being done
    explicit CommandTask(const wchar_t* name);
    CommandTask(const CommandTask&) = delete;
    CommandTask& operator=(const CommandTask&) = delete;
    /// The work ends, well or not.
    ~CommandTask();

    TvlUtl::ITaskProgress& Task() { return *m_task; }
    TaskView& View() { return m_view; }
    /// Enters the one step that is the whole work.
    void Begin(unsigned long long totalUnits);
    /// Ends the command with kInterrupted when the user wants that. For places where nothing is half done.
    void EndIfCancelled();

private:
    TaskView m_view;
    Interrupts m_interrupts;
    TvlUtl::ITaskProgress* m_task;
};

/// Ends the command that the user interrupted.
[[noreturn]] void EndInterrupted();
