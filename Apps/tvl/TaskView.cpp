#include "TaskView.h"

#include "TaskText.h"
#include "TerminalText.h"
#include "siblings/TvlPlatform/OneLine.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <ostream>

namespace {
constexpr auto kDrawingPause = std::chrono::milliseconds(100);
constexpr auto kFirstDrawing = std::chrono::milliseconds(300);   // shorter tasks would only flicker
constexpr auto kFirstLine = std::chrono::seconds(2);             // shorter tasks need no plain line
constexpr auto kLinePause = std::chrono::seconds(5);
constexpr std::size_t kBarWidth = 24;
constexpr int kBarNeedsColumns = 60;

TvlUtl::ITaskProgress* TaskOf(void* sender) { return static_cast<TvlUtl::ITaskProgress*>(sender); }

std::wstring NameOf(TvlUtl::ITaskProgress& task) { return task.GetDisplayName().Std(); }

/// A line of output. Names of files and messages of failures may hold anything.
std::string LineOf(const std::wstring& text) { return TvlPlatform::ToUtf8(TvlPlatform::OneLine(text, L' ')); }
}   // namespace

TaskView::TaskView(std::ostream& out, Screen screen, std::function<Time()> now)
    : m_out(out), m_screen(screen), m_now(std::move(now))
{
    auto& manager = TvlUtl::ITaskProgressMgr::GetInst();
    m_subscriptions.push_back(manager.GetTaskAddedEvent().Subscribe([this](void* sender) { Add(TaskOf(sender)); }));
    m_subscriptions.push_back(
        manager.GetTaskRemovedEvent().Subscribe([this](void* sender) { Remove(TaskOf(sender)); }));
    m_subscriptions.push_back(manager.GetTaskChangedEvent().Subscribe([this](void*) { Show(); }));
}

TaskView::~TaskView()
{
    m_subscriptions.clear();
    const std::lock_guard hold(m_mutex);
    Clear();
}

TaskView::Pause::Pause(TaskView& view) : m_hold(view.m_mutex) { view.Clear(); }

void TaskView::Add(TvlUtl::ITaskProgress* task)
{
    const std::lock_guard hold(m_mutex);
    const Time now = m_now();
    if (m_entries.empty())
        m_nextDrawing = now + kFirstDrawing;
    // Tasks stand by group, and in a group in the order of their creation.
    const auto at = std::find_if(m_entries.begin(), m_entries.end(),
        [group = task->GetGroupId()](const Entry& entry) { return entry.group > group; });
    m_entries.insert(at, {task, task->GetGroupId(), now, now + kFirstLine});
}

void TaskView::Remove(TvlUtl::ITaskProgress* task)
{
    const std::lock_guard hold(m_mutex);
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [task](const Entry& entry) { return entry.task == task; });
    if (found == m_entries.end())
        return;
    if (found->isTold)
        m_out << LineOf(NameOf(*task) + L": " + EndText(*task, m_now() - found->start)) << std::endl;
    m_entries.erase(found);
    if (m_entries.empty())
        Clear();
}

void TaskView::Show()
{
    const std::unique_lock hold(m_mutex, std::try_to_lock);
    if (!hold)
        return;
    const Time now = m_now();
    if (!m_screen.columns)
        Tell(now);
    else if (now >= m_nextDrawing) {
        m_nextDrawing = now + kDrawingPause;
        Draw();
    }
}

void TaskView::Tell(Time now)
{
    for (Entry& entry : m_entries)
        if (now >= entry.nextLine) {
            entry.nextLine = now + kLinePause;
            entry.isTold = true;
            m_out << LineOf(NameOf(*entry.task) + L": " + ProgressText(*entry.task, now - entry.start, 0)) << std::endl;
        }
}

std::vector<std::wstring> TaskView::Lines(Time now) const
{
    const bool hasGroups = !m_entries.empty() && m_entries.front().group != m_entries.back().group;
    const std::size_t barWidth = *m_screen.columns >= kBarNeedsColumns ? kBarWidth : 0;
    std::vector<std::wstring> lines;
    const Entry* before = nullptr;
    for (const Entry& entry : m_entries) {
        if (hasGroups && (!before || before->group != entry.group)) {
            const double done = TvlUtl::ITaskProgressMgr::GetInst().GetGroupProgress(entry.group, TvlUtl::eTaskAnyType);
            lines.push_back(
                L"Group " + std::to_wstring(entry.group) + L": " + std::to_wstring(WholePercent(done)) + L" %");
        }
        const std::wstring indent = hasGroups ? L"  " : L"";
        lines.push_back(indent + NameOf(*entry.task) + L"  " + ProgressText(*entry.task, now - entry.start, barWidth));
        before = &entry;
    }
    return lines;
}

void TaskView::Draw()
{
    std::vector<std::wstring> lines = Lines(m_now());
    if (!m_screen.hasEscapes && lines.size() > 1)
        lines.resize(1);   // there is no way back to the lines above
    Clear();
    // The last column stays free: a full line would move the terminal on.
    const auto width = static_cast<std::size_t>(std::max(1, *m_screen.columns - 1));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        lines[i] = CutToColumns(lines[i], width);
        m_out << (i > 0 ? "\n" : "") << LineOf(lines[i]);
    }
    m_out << std::flush;
    m_shownLines = lines.size();
    m_shownWidth = lines.empty() ? 0 : ColumnsOf(lines.back());
}

void TaskView::Clear()
{
    if (m_shownLines == 0)
        return;
    if (m_screen.hasEscapes) {
        m_out << '\r';
        if (m_shownLines > 1)
            m_out << "\x1b[" << m_shownLines - 1 << 'A';
        m_out << "\x1b[J";   // erases down to the end
    } else {
        m_out << '\r' << std::string(m_shownWidth, ' ') << '\r';
    }
    m_out << std::flush;
    m_shownLines = 0;
}
