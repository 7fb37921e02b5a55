#include "siblings/TvlUtils/InterProcess.h"

#include "windows/NamedObjects.h"

namespace TvlUtils {

namespace {
class SharedEvent final : public InterProcessEvent {
public:
    explicit SharedEvent(std::unique_ptr<Ports::NamedEvent> event) : m_event(std::move(event)) { }

    bool isSignalled() override { return wait(0); }
    void set() override { m_event->Set(); }
    void reset() override { m_event->Reset(); }
    bool wait(DWORD milliseconds) override { return m_event->Wait(milliseconds) == Ports::kWaitDone; }

private:
    std::unique_ptr<Ports::NamedEvent> m_event;
};

std::unique_ptr<InterProcessEvent> Shared(std::unique_ptr<Ports::NamedEvent> event)
{
    return event ? std::make_unique<SharedEvent>(std::move(event)) : nullptr;
}
}   // namespace

std::unique_ptr<InterProcessEvent> InterProcessEvent::createEvent(
    const TvlString& name, int autoReset, int initialState)
{
    return Shared(Ports::NamedObjects::Get().CreateEventW(name.Std(), autoReset == 0, initialState != 0));
}

std::unique_ptr<InterProcessEvent> InterProcessEvent::openEvent(const TvlString& name)
{
    return Shared(Ports::NamedObjects::Get().OpenEventW(name.Std()));
}

struct InterProcessMutex::Handle {
    std::unique_ptr<Ports::NamedMutex> mutex;   // null when it could not be made
};

InterProcessMutex::InterProcessMutex(const TvlString& name)
    : m_handle(new Handle{Ports::NamedObjects::Get().CreateMutexW(name.Std())})
{
}

InterProcessMutex::~InterProcessMutex() = default;

InterProcessMutex::operator bool() const { return m_handle->mutex != nullptr; }

MutexState InterProcessMutex::lock(DWORD milliseconds)
{
    if (!m_handle->mutex)
        return MutexState::Failed;
    switch (m_handle->mutex->Wait(milliseconds)) {
    case Ports::kWaitDone:
        return MutexState::Taken;
    case Ports::kWaitAbandoned:
        return MutexState::TakenFromTheDead;
    case Ports::kWaitTimeout:
        return MutexState::TimedOut;
    default:
        return MutexState::Failed;
    }
}

bool InterProcessMutex::unlock() { return m_handle->mutex && m_handle->mutex->Release(); }

InterProcessLock::InterProcessLock(InterProcessMutex& mutex, DWORD milliseconds)
    : m_mutex(mutex), m_state(mutex.lock(milliseconds))
{
}

InterProcessLock::~InterProcessLock()
{
    if (*this)
        m_mutex.unlock();
}

}   // namespace TvlUtils
