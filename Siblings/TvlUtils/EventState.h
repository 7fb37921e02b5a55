// The handlers of one event.
#pragma once

#include "siblings/TvlUtils/EventBase.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace TvlUtils {

/// One handler. It is shared by the lists that it stands in.
struct EventSlot {
    explicit EventSlot(EventBase::Handler called) : handler(std::move(called)) { }

    EventBase::Handler handler;
    std::atomic<bool> isSubscribed = true;
};

/// The handlers, which the event, its subscriptions and the threads that raise it share; whoever lets go last deletes it.
/// The list of handlers is never changed but replaced, so that raising walks one in peace. Its users are counted under
/// the lock: two short sections for each raise, and nothing is left to pile up.
class EventState {
public:
    EventState() = default;
    EventState(const EventState&) = delete;
    EventState& operator=(const EventState&) = delete;

    Subscription Add(EventBase::Handler handler);
    void Remove(EventSlot* slot) noexcept;
    void Raise(void* sender);
    /// The event ends: no handler starts any more.
    void End() noexcept;
    bool HasEnded() const noexcept { return m_hasEnded.load(std::memory_order_acquire); }
    /// Lets go of the state.
    void Release() noexcept;

private:
    struct List {
        std::size_t users = 0;   // threads that walk it
        std::vector<std::shared_ptr<EventSlot>> slots;
    };
    class Walk;

    ~EventState() = default;

    // Sections under this lock take a few instructions and call nothing: no waiting list is worth its price.
    class Hold {
    public:
        explicit Hold(std::atomic_flag& flag) : m_flag(flag)
        {
            while (m_flag.test_and_set(std::memory_order_acquire))
                std::this_thread::yield();
        }
        ~Hold() { m_flag.clear(std::memory_order_release); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        std::atomic_flag& m_flag;
    };

    /// Puts a list in the place of the current one, which is returned for deletion, or left to those who walk it.
    std::unique_ptr<List> Replace(std::unique_ptr<List> list) noexcept;
    /// The handlers of the current list that are subscribed, with room for `more`.
    std::unique_ptr<List> CopyList(std::size_t more) const;
    void Retain() noexcept;

    std::atomic_flag m_lock;
    std::size_t m_owners = 1;              // the event, subscriptions and walks
    std::atomic<List*> m_list = nullptr;   // null without handlers
    std::atomic<bool> m_hasEnded = false;
    std::mutex m_changes;   // held by who makes a new list; nothing of a handler runs under it
};

}   // namespace TvlUtils
