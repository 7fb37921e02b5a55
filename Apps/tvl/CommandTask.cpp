#include "CommandTask.h"

#include "Commands.h"
#include "TerminalFilter.h"
#include "windows/Terminal.h"

#include <CLI/CLI.hpp>
#include <atomic>
#include <csignal>
#include <iostream>

namespace {
constexpr unsigned long long kCommandGroup = 1;
constexpr int kCommandType = 2;   // the command tells of its own end itself
constexpr unsigned long long kWhole = 100;
constexpr auto kLookingPause = std::chrono::milliseconds(50);

// A signal's handler may do no more than set it.
std::atomic<bool> isInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void TakeInterrupt(int signal)
{
    isInterrupted.store(true, std::memory_order_relaxed);
    std::signal(signal, SIG_DFL);
}

TaskView::Screen ErrorScreen()
{
    const Ports::Terminal& terminal = Ports::Terminal::Get();
    return {terminal.ErrorColumns(), terminal.UnderstandsEscapes()};
}
}   // namespace

Interrupts::Interrupts()
{
    isInterrupted.store(false, std::memory_order_relaxed);
    // Who started the program may have turned Ctrl-C off for it, as shells do for what runs in the background.
    m_before = std::signal(SIGINT, SIG_IGN);
    if (m_before != SIG_IGN)
        std::signal(SIGINT, &TakeInterrupt);
    m_watcher = std::jthread([this](std::stop_token stop) {
        std::unique_lock hold(m_mutex);
        while (!m_stopped.wait_for(hold, stop, kLookingPause, [&] { return stop.stop_requested(); }))
            if (isInterrupted.load(std::memory_order_relaxed))
                TvlUtl::ITaskProgressMgr::GetInst().CancelAll(TvlUtl::eTaskAnyType);
    });
}

Interrupts::~Interrupts()
{
    if (m_before != SIG_ERR)
        std::signal(SIGINT, m_before);
}

CommandTask::CommandTask(const wchar_t* name)
    : m_view(UnfilteredErrors(), ErrorScreen()),
      m_task(TvlUtl::ITaskProgressMgr::GetInst().CreateTask(kCommandGroup, kCommandType, name))
{
}

CommandTask::~CommandTask() { m_task->Finish(); }

void CommandTask::Begin(unsigned long long totalUnits) { m_task->BeginSubTask(kWhole, totalUnits); }

void CommandTask::EndIfCancelled()
{
    if (m_task->IsCancelled())
        EndInterrupted();
}

void EndInterrupted()
{
    std::cout.flush();
    throw CLI::RuntimeError(kInterrupted);
}
