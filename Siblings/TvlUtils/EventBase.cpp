#include "TvlUtils/EventState.h"

#include <algorithm>
#include <new>

namespace TvlUtils {

/// A thread on its way through a list, which stays as it is meanwhile.
class EventState::Walk {
public:
    explicit Walk(EventState& state) : m_state(state)
    {
        const Hold hold(state.m_lock);
        m_list = state.m_list.load(std::memory_order_relaxed);
        if (m_list)
            ++m_list->users;
        ++state.m_owners;
    }
    ~Walk()
    {
        std::unique_ptr<List> doomed;
        bool isLast = false;
        {
            const Hold hold(m_state.m_lock);
            if (m_list && --m_list->users == 0 && m_state.m_list.load(std::memory_order_relaxed) != m_list)
                doomed.reset(m_list);
            isLast = --m_state.m_owners == 0;
        }
        if (isLast)
            delete &m_state;
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    const List* Handlers() const { return m_list; }

private:
    EventState& m_state;
    List* m_list = nullptr;
};

void EventState::Raise(void* sender)
{
    if (!m_list.load(std::memory_order_relaxed))
        return;
    const Walk walk(*this);
    if (!walk.Handlers())
        return;
    for (const auto& slot : walk.Handlers()->slots)
        if (slot->isSubscribed.load(std::memory_order_acquire))
            slot->handler(sender);
}

auto EventState::CopyList(std::size_t more) const -> std::unique_ptr<List>
{
    auto copy = std::make_unique<List>();
    if (const List* const list = m_list.load(std::memory_order_relaxed)) {
        copy->slots.reserve(list->slots.size() + more);
        std::copy_if(list->slots.begin(), list->slots.end(), std::back_inserter(copy->slots),
            [](const auto& slot) { return slot->isSubscribed.load(std::memory_order_relaxed); });
    }
    return copy;
}

auto EventState::Replace(std::unique_ptr<List> list) noexcept -> std::unique_ptr<List>
{
    const Hold hold(m_lock);
    std::unique_ptr<List> old(m_list.exchange(list.release()));
    if (old && old->users > 0) [[maybe_unused]]
        List* const walked = old.release();
    return old;
}

Subscription EventState::Add(EventBase::Handler handler)
{
    auto slot = std::make_shared<EventSlot>(std::move(handler));
    EventSlot* const added = slot.get();
    std::unique_ptr<List> old;   // deleted behind the lock
    const std::lock_guard hold(m_changes);
    auto list = CopyList(1);
    list->slots.push_back(std::move(slot));
    old = Replace(std::move(list));
    Retain();
    return Subscription(this, added);
}

void EventState::Remove(EventSlot* slot) noexcept
{
    std::unique_ptr<List> old;
    const std::lock_guard hold(m_changes);
    const List* const list = m_list.load(std::memory_order_relaxed);
    if (!list)
        return;
    const auto isSlot = [slot](const auto& kept) { return kept.get() == slot; };
    const auto found = std::find_if(list->slots.begin(), list->slots.end(), isSlot);
    if (found == list->slots.end())
        return;
    (*found)->isSubscribed.store(false, std::memory_order_release);
    try {
        auto shorter = CopyList(0);
        old = Replace(shorter->slots.empty() ? nullptr : std::move(shorter));
    } catch (const std::bad_alloc&) {
        // It stays in the list, where it is passed over, until the next change.
    }
}

void EventState::End() noexcept
{
    std::unique_ptr<List> old;
    const std::lock_guard hold(m_changes);
    m_hasEnded.store(true, std::memory_order_release);
    if (const List* const list = m_list.load(std::memory_order_relaxed))
        for (const auto& slot : list->slots)
            slot->isSubscribed.store(false, std::memory_order_release);
    old = Replace(nullptr);
}

void EventState::Retain() noexcept
{
    const Hold hold(m_lock);
    ++m_owners;
}

void EventState::Release() noexcept
{
    bool isLast = false;
    {
        const Hold hold(m_lock);
        isLast = --m_owners == 0;
    }
    if (isLast)
        delete this;
}

Subscription& Subscription::operator=(Subscription&& other) noexcept
{
    if (this != &other) {
        Unsubscribe();
        m_state = std::exchange(other.m_state, nullptr);
        m_slot = std::exchange(other.m_slot, nullptr);
    }
    return *this;
}

void Subscription::Unsubscribe() noexcept
{
    if (!m_state)
        return;
    // Cleared first: what the handler has captured may end with it, and hold this very object.
    EventState* const state = std::exchange(m_state, nullptr);
    state->Remove(std::exchange(m_slot, nullptr));
    state->Release();
}

void Subscription::MakePermanent() noexcept
{
    m_slot = nullptr;
    if (EventState* const state = std::exchange(m_state, nullptr))
        state->Release();
}

bool Subscription::IsActive() const noexcept { return m_state && !m_state->HasEnded(); }

EventBase::~EventBase()
{
    if (EventState* const state = m_state.load(std::memory_order_acquire)) {
        state->End();
        state->Release();
    }
}

Subscription EventBase::Subscribe(Handler handler)
{
    EventState* state = m_state.load(std::memory_order_acquire);
    if (!state) {
        auto* const made = new EventState;
        if (m_state.compare_exchange_strong(state, made, std::memory_order_acq_rel))
            state = made;
        else
            made->Release();   // another thread was faster
    }
    return state->Add(std::move(handler));
}

void EventBase::RaiseTo(EventState& state, void* sender) { state.Raise(sender); }

}   // namespace TvlUtils
