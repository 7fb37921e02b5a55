// Named objects over files that their holders share.
#include "Windows/SystemPorts.h"
#include "Windows/linux/SharedStateFile.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <linux/futex.h>
#include <map>
#include <mutex>
#include <optional>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace Ports {

namespace {
using Clock = std::chrono::steady_clock;

/// The end of a wait; none for one that never ends.
std::optional<Clock::time_point> Deadline(DWORD milliseconds)
{
    if (milliseconds == kWaitForever)
        return std::nullopt;
    return Clock::now() + std::chrono::milliseconds(milliseconds);
}

/// A file's name for an object's name: what might mean something in a path is written as "%" and two digits. Empty for
/// a name that can't be one.
std::string FileName(const std::wstring& name, const char* kind)
{
    constexpr std::size_t kMost = 200;
    if (name.empty() || name.find_first_of(L"\\/") != std::wstring::npos)
        return std::string();
    std::string file;
    for (const char c : TvlPlatform::ToUtf8(name)) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-'
            || c == '_' || c == '.';
        constexpr const char* kDigits = "0123456789abcdef";
        if (isPlain)
            file += c;
        else
            file.append(
                {'%', kDigits[static_cast<unsigned char>(c) / 16], kDigits[static_cast<unsigned char>(c) % 16]});
    }
    return file.size() > kMost ? std::string() : file + kind;
}

// ---- Mutexes. The first word of the file says that a thread owns the mutex: who finds it set took it from the dead.

constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kOwned = 1;

/// One mutex as the threads of this process share it.
class ProcessMutex {
public:
    explicit ProcessMutex(std::unique_ptr<SharedStateFile> file) : m_file(std::move(file)) { }

    WaitResult Take(DWORD milliseconds, bool& isFirst);
    /// `isLast` says that the thread owns it no longer.
    bool Release(bool& isLast);
    /// The thread that owns it ends.
    void Abandon();

private:
    bool WaitForThreads(std::unique_lock<std::mutex>& hold, const std::optional<Clock::time_point>& deadline);
    bool WaitForProcesses(const std::optional<Clock::time_point>& deadline);
    void LetOthersIn();

    std::unique_ptr<SharedStateFile> m_file;
    std::mutex m_lock;
    std::condition_variable m_freed;
    std::thread::id m_owner;   // also while it still waits for other processes
    int m_depth = 0;           // times that the owner took it
};

WaitResult ProcessMutex::Take(DWORD milliseconds, bool& isFirst)
{
    const auto deadline = Deadline(milliseconds);
    std::unique_lock hold(m_lock);
    isFirst = m_owner != std::this_thread::get_id();
    if (!isFirst) {
        ++m_depth;
        return kWaitDone;
    }
    if (!WaitForThreads(hold, deadline))
        return kWaitTimeout;
    m_owner = std::this_thread::get_id();
    hold.unlock();
    const bool owned = WaitForProcesses(deadline);
    hold.lock();
    if (!owned) {
        m_owner = {};
        m_freed.notify_one();
        return kWaitTimeout;
    }
    m_depth = 1;
    return m_file->Word(0).exchange(kOwned) == kOwned ? kWaitAbandoned : kWaitDone;
}

bool ProcessMutex::WaitForThreads(std::unique_lock<std::mutex>& hold, const std::optional<Clock::time_point>& deadline)
{
    const auto isFree = [this] { return m_owner == std::thread::id(); };
    if (deadline)
        return m_freed.wait_until(hold, *deadline, isFree);
    m_freed.wait(hold, isFree);
    return true;
}

bool ProcessMutex::WaitForProcesses(const std::optional<Clock::time_point>& deadline)
{
    if (!deadline)
        return m_file->Own(true);
    // A lock of a file can be waited for, but not for a time.
    constexpr std::chrono::milliseconds kLongestPause{16};
    for (std::chrono::milliseconds pause{1}; !m_file->Own(false); pause = std::min(2 * pause, kLongestPause)) {
        const auto left = *deadline - Clock::now();
        if (left <= Clock::duration::zero())
            return false;
        std::this_thread::sleep_for(std::min<Clock::duration>(pause, left));
    }
    return true;
}

bool ProcessMutex::Release(bool& isLast)
{
    const std::lock_guard hold(m_lock);
    if (m_owner != std::this_thread::get_id())
        return false;
    isLast = --m_depth == 0;
    if (isLast) {
        m_file->Word(0).store(kFree);
        LetOthersIn();
    }
    return true;
}

void ProcessMutex::Abandon()
{
    const std::lock_guard hold(m_lock);
    LetOthersIn();
}

void ProcessMutex::LetOthersIn()
{
    m_depth = 0;
    m_owner = {};
    m_file->Disown();
    m_freed.notify_one();
}

/// What a thread owns. A thread that ends abandons it; a process that ends leaves that to the kernel.
class OwnedMutexes {
public:
    ~OwnedMutexes()
    {
        for (const auto& mutex : m_mutexes)
            mutex->Abandon();
    }
    void Add(std::shared_ptr<ProcessMutex> mutex) { m_mutexes.push_back(std::move(mutex)); }
    void Remove(const std::shared_ptr<ProcessMutex>& mutex) { std::erase(m_mutexes, mutex); }

private:
    std::vector<std::shared_ptr<ProcessMutex>> m_mutexes;
};

OwnedMutexes& MutexesOfThread()
{
    static thread_local OwnedMutexes mutexes;
    return mutexes;
}

class LinuxMutex final : public NamedMutex {
public:
    explicit LinuxMutex(std::shared_ptr<ProcessMutex> mutex) : m_mutex(std::move(mutex)) { }

    WaitResult Wait(DWORD milliseconds) override
    {
        bool isFirst = false;
        const WaitResult result = m_mutex->Take(milliseconds, isFirst);
        if (isFirst && result != kWaitTimeout)
            MutexesOfThread().Add(m_mutex);
        return result;
    }

    bool Release() override
    {
        bool isLast = false;
        const bool released = m_mutex->Release(isLast);
        if (isLast)
            MutexesOfThread().Remove(m_mutex);
        return released;
    }

private:
    std::shared_ptr<ProcessMutex> m_mutex;
};

// ---- Events. The first word of the file says whether the event is set, the second whether it stays so.

constexpr std::uint32_t kUnset = 0;
constexpr std::uint32_t kSet = 1;

class LinuxEvent final : public NamedEvent {
public:
    explicit LinuxEvent(std::unique_ptr<SharedStateFile> file) : m_file(std::move(file)) { }

    WaitResult Wait(DWORD milliseconds) override
    {
        const auto deadline = Deadline(milliseconds);
        while (!Take()) {
            if (!deadline) {
                Sleep(nullptr);
                continue;
            }
            const auto left = *deadline - Clock::now();
            if (left <= Clock::duration::zero())
                return kWaitTimeout;
            const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
            const timespec time{seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
            Sleep(&time);
        }
        return kWaitDone;
    }

    bool Set() override
    {
        m_file->Word(0).store(kSet);
        // All of them: the one that is woken might be killed before it takes an event that resets itself.
        constexpr int kAll = std::numeric_limits<int>::max();
        syscall(SYS_futex, m_file->Address(0), FUTEX_WAKE, kAll, nullptr, nullptr, 0);
        return true;
    }

    bool Reset() override
    {
        m_file->Word(0).store(kUnset);
        return true;
    }

private:
    bool Take()
    {
        if (m_file->Word(1).load())
            return m_file->Word(0).load() == kSet;
        std::uint32_t expected = kSet;
        return m_file->Word(0).compare_exchange_strong(expected, kUnset);
    }
    /// Until the event is set or the time is over, or less.
    void Sleep(const timespec* time) { syscall(SYS_futex, m_file->Address(0), FUTEX_WAIT, kUnset, time, nullptr, 0); }

    std::unique_ptr<SharedStateFile> m_file;
};

class LinuxNamedObjects final : public NamedObjects {
public:
    std::unique_ptr<NamedMutex> CreateMutexW(const std::wstring& name) override
    {
        const std::string file = SharedStateFile::Path(FileName(name, ".mutex"));
        if (file.empty())
            return nullptr;
        const std::lock_guard hold(m_lock);
        std::erase_if(m_mutexes, [](const auto& entry) { return entry.second.expired(); });
        std::shared_ptr<ProcessMutex> mutex = m_mutexes[file].lock();
        if (!mutex) {
            auto state = SharedStateFile::Hold(file, StateFileUse::OpenOrMake, {kFree, 0});
            if (!state)
                return nullptr;
            mutex = std::make_shared<ProcessMutex>(std::move(state));
            m_mutexes[file] = mutex;
        }
        return std::make_unique<LinuxMutex>(std::move(mutex));
    }

    std::unique_ptr<NamedEvent> CreateEventW(const std::wstring& name, bool manualReset, bool initiallySet) override
    {
        return HoldEvent(name, StateFileUse::OpenOrMake, {initiallySet ? kSet : kUnset, manualReset});
    }

    std::unique_ptr<NamedEvent> OpenEventW(const std::wstring& name) override
    {
        return HoldEvent(name, StateFileUse::OpenHeld, {kUnset, 0});
    }

private:
    static std::unique_ptr<NamedEvent> HoldEvent(
        const std::wstring& name, StateFileUse use, const std::uint32_t (&words)[2])
    {
        auto state = SharedStateFile::Hold(SharedStateFile::Path(FileName(name, ".event")), use, words);
        return state ? std::make_unique<LinuxEvent>(std::move(state)) : nullptr;
    }

    std::mutex m_lock;
    // By the path of the file: a thread owns a mutex whichever handle it took it through.
    std::map<std::string, std::weak_ptr<ProcessMutex>> m_mutexes;
};
}   // namespace

template <>
NamedObjects& SystemPort<NamedObjects>()
{
    static LinuxNamedObjects& objects = *new LinuxNamedObjects;
    return objects;
}

}   // namespace Ports
