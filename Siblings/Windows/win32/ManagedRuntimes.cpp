// The .NET runtimes through the runtime host of mscoree.
#include "Windows/SystemPorts.h"

#include <memory>
#include <windows.h>

#include <objidl.h>

namespace Ports {

// The host's interfaces from the headers of .NET, up to the operation that is called. Not in the unnamed namespace: nothing
// implements them there, so that the compiler would take every call for one that never happens.
struct RuntimeInfo : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetVersionString(wchar_t* buffer, DWORD* characters) = 0;
};

struct RuntimeHost : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetRuntime(const wchar_t* version, REFIID type, void** runtime) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVersionFromFile(const wchar_t* path, wchar_t* buffer, DWORD* characters) = 0;
    virtual HRESULT STDMETHODCALLTYPE EnumerateInstalledRuntimes(IEnumUnknown** runtimes) = 0;
};

namespace {
constexpr GUID kHostClass = {0x9280188d, 0x0e8e, 0x4867, {0xb3, 0x0c, 0x7f, 0xa8, 0x38, 0x84, 0xe8, 0xde}};
constexpr GUID kHost = {0xd332db9e, 0xb9b3, 0x4125, {0x82, 0x07, 0xa1, 0x48, 0x84, 0xf5, 0x32, 0x16}};
constexpr GUID kRuntimeInfo = {0xbd39d1d2, 0xba2f, 0x486a, {0x89, 0xb0, 0xb4, 0xb0, 0xcb, 0x46, 0x68, 0x91}};

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Releaser>;

Owned<RuntimeHost> Host()
{
    using Create_t = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    // Loaded once: a runtime host that has been asked can't leave the process.
    static const HMODULE library = Modules::Get().LoadFromSystem(L"mscoree.dll");
    const auto create =
        library ? reinterpret_cast<Create_t>(Modules::Get().Address(library, "CLRCreateInstance")) : nullptr;
    void* host = nullptr;
    if (!create || FAILED(create(kHostClass, kHost, &host)))
        return nullptr;
    return Owned<RuntimeHost>(static_cast<RuntimeHost*>(host));
}

std::wstring Version(IUnknown& unknown)
{
    void* found = nullptr;
    if (FAILED(unknown.QueryInterface(kRuntimeInfo, &found)))
        return {};
    const Owned<RuntimeInfo> runtime(static_cast<RuntimeInfo*>(found));
    wchar_t version[MAX_PATH] = {};
    DWORD characters = MAX_PATH;
    return SUCCEEDED(runtime->GetVersionString(version, &characters)) ? version : L"";
}

class Win32ManagedRuntimes final : public ManagedRuntimes {
public:
    std::optional<std::vector<std::wstring>> Installed() const override
    {
        const Owned<RuntimeHost> host = Host();
        IEnumUnknown* list = nullptr;
        if (!host || FAILED(host->EnumerateInstalledRuntimes(&list)))
            return std::nullopt;
        const Owned<IEnumUnknown> runtimes(list);
        std::vector<std::wstring> versions;
        IUnknown* next = nullptr;
        while (runtimes->Next(1, &next, nullptr) == S_OK) {
            const Owned<IUnknown> runtime(next);
            if (std::wstring version = Version(*runtime); !version.empty())
                versions.push_back(std::move(version));
        }
        return versions;
    }
};
}   // namespace

template <>
ManagedRuntimes& SystemPort<ManagedRuntimes>()
{
    static Win32ManagedRuntimes runtimes;
    return runtimes;
}

}   // namespace Ports
