// Named objects of the session.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
struct CloseHandleOf {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseHandleOf>;

class Win32Mutex final : public NamedMutex {
public:
    explicit Win32Mutex(Handle handle) : m_handle(std::move(handle)) { }
    WaitResult Wait(DWORD milliseconds) override
    {
        return static_cast<WaitResult>(WaitForSingleObject(m_handle.get(), milliseconds));
    }
    bool Release() override { return ReleaseMutex(m_handle.get()); }

private:
    Handle m_handle;
};

class Win32Event final : public NamedEvent {
public:
    explicit Win32Event(Handle handle) : m_handle(std::move(handle)) { }
    WaitResult Wait(DWORD milliseconds) override
    {
        return static_cast<WaitResult>(WaitForSingleObject(m_handle.get(), milliseconds));
    }
    bool Set() override { return SetEvent(m_handle.get()); }
    bool Reset() override { return ResetEvent(m_handle.get()); }

private:
    Handle m_handle;
};

template <class Object, class Interface>
std::unique_ptr<Interface> Owned(HANDLE handle)
{
    Handle owned(handle);
    return owned ? std::make_unique<Object>(std::move(owned)) : nullptr;
}

/// An empty name would give an object that nobody shares, and a separator one of another session.
bool IsName(const std::wstring& name) { return !name.empty() && name.find_first_of(L"\\/") == std::wstring::npos; }

class Win32NamedObjects final : public NamedObjects {
public:
    std::unique_ptr<NamedMutex> CreateMutexW(const std::wstring& name) override
    {
        return Owned<Win32Mutex, NamedMutex>(IsName(name) ? ::CreateMutexW(nullptr, FALSE, name.c_str()) : nullptr);
    }

    std::unique_ptr<NamedEvent> CreateEventW(const std::wstring& name, bool manualReset, bool initiallySet) override
    {
        return Owned<Win32Event, NamedEvent>(
            IsName(name) ? ::CreateEventW(nullptr, manualReset, initiallySet, name.c_str()) : nullptr);
    }

    std::unique_ptr<NamedEvent> OpenEventW(const std::wstring& name) override
    {
        return Owned<Win32Event, NamedEvent>(
            IsName(name) ? ::OpenEventW(SYNCHRONIZE | EVENT_MODIFY_STATE, FALSE, name.c_str()) : nullptr);
    }
};
}   // namespace

template <>
NamedObjects& SystemPort<NamedObjects>()
{
    static Win32NamedObjects objects;
    return objects;
}

}   // namespace Ports
