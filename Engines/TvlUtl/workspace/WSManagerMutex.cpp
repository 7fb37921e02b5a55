#include "WSManagerMutex.h"

#include "siblings/TvlConfig/WorkspaceFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/DataEncoding.h"
#include "siblings/TvlUtils/Hash.h"
#include "windows/NamedObjects.h"

#include <mutex>

namespace {
using Ports::NamedMutex;
using Ports::NamedObjects;

/// The process's only handle: it stays open until the process ends, so that another process sees a mutex of this one.
/// Null when the system refuses it, and is asked again next time.
std::shared_ptr<NamedMutex> ProcessHandle()
{
    static const TvlString name = WSManagerMutex::NameFor(GetUserProfileWorkspaceDir());
    static std::mutex lock;
    static std::shared_ptr<NamedMutex> handle;
    static const NamedObjects* maker = nullptr;
    const std::lock_guard hold(lock);
    NamedObjects& objects = NamedObjects::Get();
    if (!handle || maker != &objects) {
        handle = objects.CreateMutexW(name.Std());
        maker = &objects;
    }
    return handle;
}

bool IsTaken(Ports::WaitResult result) { return result == Ports::kWaitDone || result == Ports::kWaitAbandoned; }
}   // namespace

struct WSManagerMutex::Impl {
    std::shared_ptr<NamedMutex> handle;   // null when nothing is held
    bool wasAbandoned = false;
};

WSManagerMutex::WSManagerMutex() : m_impl(std::make_unique<Impl>()) { Acquire(); }

WSManagerMutex::~WSManagerMutex() { Release(); }

bool WSManagerMutex::Acquire()
{
    if (m_impl->handle)
        return true;
    m_impl->handle = ProcessHandle();
    if (!m_impl->handle)
        return false;
    Ports::WaitResult result = m_impl->handle->Wait(0);
    if (!IsTaken(result))
        result = m_impl->handle->Wait(Ports::kWaitForever);
    m_impl->wasAbandoned = result == Ports::kWaitAbandoned;
    return IsTaken(result);
}

void WSManagerMutex::Release()
{
    if (!m_impl->handle)
        return;
    m_impl->handle->Release();
    m_impl->handle.reset();
}

bool WSManagerMutex::HasMutex() const { return m_impl->handle != nullptr; }

bool WSManagerMutex::WasAbandoned() const { return m_impl->wasAbandoned; }

TvlString WSManagerMutex::NameFor(const TvlString& workspaceFolder)
{
    TvlString folder = workspaceFolder;
    folder.MakeLower();
    const std::vector<std::uint8_t> bytes = TvlPlatform::ToUtf16Le(folder);
    TvlString text;
    if (const auto digest = TvlUtils::Hash::Md5(bytes.data(), bytes.size()))
        text = TvlUtils::DataEncoding::HexEncode(digest->data(), digest->size());
    return L"WSMANAGER_INTERPROCESS_" + (text.IsEmpty() ? folder : text);
}
