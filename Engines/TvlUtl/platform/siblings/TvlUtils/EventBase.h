// Events that listeners subscribe to.
#pragma once

#include "siblings/SiblingsApi.h"

#include <atomic>
#include <functional>
#include <utility>

namespace TvlUtils {

class EventState;
struct EventSlot;

/// One subscription of an event: the handler is called until this object ends. It may outlive the event.
class TVLSIBLINGS_API Subscription {
public:
    /// Subscribes to nothing.
    Subscription() = default;
    /// Stands for the other's subscription from now on; the other stands for none.
    Subscription(Subscription&& other) noexcept
        : m_state(std::exchange(other.m_state, nullptr)), m_slot(std::exchange(other.m_slot, nullptr))
    {
    }
    /// Unsubscribes and stands for the other's subscription from now on; the other stands for none.
    Subscription& operator=(Subscription&& other) noexcept;
    ~Subscription() { Unsubscribe(); }

    /// The handler starts no more. One that runs on another thread meanwhile runs to its end, and what it has captured
    /// stays until then.
    void Unsubscribe() noexcept;
    /// Keeps the handler as long as the event lives, and lets go of it here.
    void MakePermanent() noexcept;
    /// Whether this object stands for a subscription whose event lives.
    bool IsActive() const noexcept;

private:
    friend class EventState;
    Subscription(EventState* state, EventSlot* slot) : m_state(state), m_slot(slot) { }

    EventState* m_state = nullptr;
    EventSlot* m_slot = nullptr;
};

/// An event: calls its handlers one after another in the order of their subscriptions, on the thread that raises it.
/// Any thread may subscribe, unsubscribe and raise at any time. No lock is held while handlers run: they may subscribe,
/// unsubscribe, raise again, and end the event itself. An event without handlers costs eight bytes, and raising it one
/// load.
class TVLSIBLINGS_API EventBase {
public:
    /// @param sender who raised the event, as its class tells; the pointer has that class's type
    using Handler = std::function<void(void* sender)>;

    /// Without handlers.
    EventBase() = default;
    ~EventBase();
    EventBase(const EventBase&) = delete;
    EventBase& operator=(const EventBase&) = delete;

    /// Appends a handler, which must not be empty. While the event is being raised it is called from the next time on.
    [[nodiscard]] Subscription Subscribe(Handler handler);

    /// Calls the handlers that are there now; those that are unsubscribed before their turn are passed over, and all that
    /// are left when the event ends. What a handler throws comes out here, and the rest of the handlers is not called.
    void Raise(void* sender)
    {
        if (EventState* const state = m_state.load(std::memory_order_acquire))
            RaiseTo(*state, sender);
    }

private:
    static void RaiseTo(EventState& state, void* sender);

    std::atomic<EventState*> m_state = nullptr;   // made by the first subscription
};

static_assert(sizeof(EventBase) == 8);

}   // namespace TvlUtils
