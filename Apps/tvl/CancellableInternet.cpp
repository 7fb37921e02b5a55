#include "CancellableInternet.h"

#include "DataSize.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace {
constexpr std::size_t kBlock = std::size_t{64} << 10;
constexpr std::size_t kMostBlocks = 16;   // that wait for their reader

/// What the fetching thread and the reader share.
struct Answer {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::vector<char>> blocks;
    bool isOpen = false;
    bool hasEnded = false;      // nothing more comes
    bool hasFailed = false;     // the connection broke, or there was none
    bool isCancelled = false;   // the reader has gone or wants no more
};

void End(Answer& answer, bool hasFailed)
{
    const std::lock_guard hold(answer.mutex);
    answer.hasEnded = true;
    answer.hasFailed = hasFailed;
    answer.changed.notify_all();
}

/// Waits for room; false when the reader wants no more.
bool Put(Answer& answer, std::vector<char> block)
{
    std::unique_lock hold(answer.mutex);
    answer.changed.wait(hold, [&] { return answer.isCancelled || answer.blocks.size() < kMostBlocks; });
    answer.blocks.push_back(std::move(block));
    answer.changed.notify_all();
    return !answer.isCancelled;
}

/// Fetches blocks up to the end of the answer, or until the reader wants no more; false when the connection failed.
bool FetchBlocks(Ports::InternetFile& file, Answer& answer)
{
    while (true) {
        std::vector<char> block(kBlock);
        const auto count = file.Read(block.data(), block.size());
        if (!count || *count == 0)
            return count.has_value();
        block.resize(*count);
        if (!Put(answer, std::move(block)))
            return true;
    }
}

/// The connection is closed when this returns: nobody waits for this thread once it has told of the end.
bool FetchAll(Ports::Internet& internet, Answer& answer, const std::wstring& agent, const std::wstring& url,
    const std::wstring& headers)
try {
    const auto file = internet.OpenUrl(agent, url, headers);
    if (!file)
        return false;
    {
        const std::lock_guard hold(answer.mutex);
        answer.isOpen = true;
        answer.changed.notify_all();
    }
    return FetchBlocks(*file, answer);
} catch (const std::exception&) {
    return false;
}

/// The reader's side.
class FetchedFile final : public Ports::InternetFile {
public:
    FetchedFile(TvlUtl::ITaskProgress& task, std::shared_ptr<Answer> answer)
        : m_task(task), m_answer(std::move(answer)),
          m_cancelled(task.GetCancelledEvent().Subscribe([shared = m_answer](void*) { Cancel(*shared); }))
    {
    }
    FetchedFile(const FetchedFile&) = delete;
    FetchedFile& operator=(const FetchedFile&) = delete;
    ~FetchedFile() override { Cancel(*m_answer); }

    /// Whether there is an answer.
    bool WaitForOpening()
    {
        std::unique_lock hold(m_answer->mutex);
        Wait(hold, [this] { return m_answer->isOpen || m_answer->hasEnded; });
        return m_answer->isOpen;
    }

    std::optional<std::size_t> Read(void* data, std::size_t size) override
    {
        if (m_taken == m_block.size() && !NextBlock()) {
            const std::lock_guard hold(m_answer->mutex);
            return m_answer->hasFailed ? std::nullopt : std::optional<std::size_t>(0);
        }
        const std::size_t count = std::min(size, m_block.size() - m_taken);
        std::memcpy(data, m_block.data() + m_taken, count);
        m_taken += count;
        return count;
    }

private:
    using Clock = std::chrono::steady_clock;

    static void Cancel(Answer& answer)
    {
        const std::lock_guard hold(answer.mutex);
        answer.isCancelled = true;
        answer.changed.notify_all();
    }

    template <class Condition>
    void Wait(std::unique_lock<std::mutex>& hold, Condition condition)
    {
        m_answer->changed.wait(hold, [&] { return m_answer->isCancelled || condition(); });
        if (m_answer->isCancelled)
            throw DownloadCancelled();
    }

    bool NextBlock()
    {
        {
            std::unique_lock hold(m_answer->mutex);
            Wait(hold, [this] { return !m_answer->blocks.empty() || m_answer->hasEnded; });
            if (m_answer->blocks.empty())
                return false;
            m_block = std::move(m_answer->blocks.front());
            m_answer->blocks.pop_front();
            m_answer->changed.notify_all();
        }
        m_taken = 0;
        m_received += m_block.size();
        Tell();
        return true;
    }

    /// Nobody knows the whole, so that the bytes alone are told.
    void Tell()
    {
        const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
        TvlString text = TvlUtl::FormatDataSize(m_received);
        if (seconds >= 1.0)
            text += L", "
                + TvlUtl::FormatDataSize(static_cast<unsigned long long>(static_cast<double>(m_received) / seconds))
                + L"/s";
        m_task.SetProgress(0, text.c_str());
    }

    TvlUtl::ITaskProgress& m_task;
    std::shared_ptr<Answer> m_answer;
    TvlUtils::Subscription m_cancelled;
    std::vector<char> m_block;
    std::size_t m_taken = 0;   // of the block
    unsigned long long m_received = 0;
    Clock::time_point m_start = Clock::now();
};
}   // namespace

CancellableInternet::CancellableInternet(TvlUtl::ITaskProgress& task) : m_system(Ports::Internet::Get()), m_task(task)
{
    SetForTests(this);
}

CancellableInternet::~CancellableInternet() { SetForTests(nullptr); }

std::unique_ptr<Ports::InternetFile> CancellableInternet::OpenUrl(
    const std::wstring& agent, const std::wstring& url, const std::wstring& headers)
{
    const auto answer = std::make_shared<Answer>();
    auto file = std::make_unique<FetchedFile>(m_task, answer);
    std::thread([&internet = m_system, answer, agent, url, headers] {
        End(*answer, !FetchAll(internet, *answer, agent, url, headers));
    }).detach();
    if (!file->WaitForOpening())
        return nullptr;
    return file;
}
