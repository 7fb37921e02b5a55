// Modules and environment of a Windows process.
#include "Windows/SystemPorts.h"

#include <memory>
#include <windows.h>

#include <shellapi.h>

namespace Ports {

namespace {
class Win32Modules final : public Modules {
public:
    HMODULE Loaded(const std::wstring& name) const override { return GetModuleHandleW(name.c_str()); }

    HMODULE Load(const std::wstring& path) override { return LoadLibraryW(path.c_str()); }
    HMODULE LoadFromSystem(const std::wstring& name) override
    {
        std::wstring folder(GetSystemDirectoryW(nullptr, 0), L'\0');
        folder.resize(GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
        return LoadFrom(folder + L"\\", name);
    }

    HMODULE LoadFromProgramFolder(const std::wstring& name) override
    {
        const std::wstring program = ProgramPath();
        return LoadFrom(program.substr(0, program.rfind(L'\\') + 1), name);
    }

    HMODULE LoadAsData(const std::wstring& path) override
    {
        return LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    }

    void Unload(HMODULE module) override { FreeLibrary(module); }

    void* Address(HMODULE module, const std::string& name) const override
    {
        return reinterpret_cast<void*>(GetProcAddress(module, name.c_str()));
    }

    std::wstring ProgramPath() const override { return FileOf(nullptr); }

    DWORD ProcessId() const override { return GetCurrentProcessId(); }

    std::vector<std::wstring> Arguments() const override
    {
        int count = 0;
        const std::unique_ptr<wchar_t*, decltype(&LocalFree)> list(
            CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
        if (!list || count < 1)
            return {};
        return {list.get() + 1, list.get() + count};
    }

    std::wstring PathOf(const void* address) const override
    {
        constexpr DWORD kOnlyLook =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        HMODULE module = nullptr;
        return GetModuleHandleExW(kOnlyLook, static_cast<const wchar_t*>(address), &module) ? FileOf(module) : L"";
    }

private:
    /// Null is the program.
    static std::wstring FileOf(HMODULE module)
    {
        std::wstring path(MAX_PATH, L'\0');
        for (;;) {
            const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
            if (length < path.size())
                return path.substr(0, length);
            path.resize(path.size() * 2);
        }
    }

    /// By the full path: a name alone would be given a module that is loaded already, from wherever it came.
    static HMODULE LoadFrom(const std::wstring& folder, const std::wstring& name)
    {
        constexpr DWORD kSearch =
            LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;   // for what it needs
        if (folder.size() < 2 || name.empty() || name.find_first_of(L"\\/:") != std::wstring::npos)
            return nullptr;
        return LoadLibraryExW((folder + name).c_str(), nullptr, kSearch);
    }
};

class Win32Environment final : public Environment {
public:
    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        SetLastError(ERROR_SUCCESS);
        std::wstring value(GetEnvironmentVariableW(name.c_str(), nullptr, 0), L'\0');
        if (value.empty())
            return GetLastError() == ERROR_ENVVAR_NOT_FOUND ? std::nullopt : std::optional(value);
        value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size())));
        return value;
    }

    bool IsSandboxed() const override
    {
        // Looked up, since the function is younger than the oldest system that is supported.
        using PackageName = LONG(WINAPI*)(UINT32*, wchar_t*);
        FARPROC const address = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetCurrentPackageFullName");
        if (!address)
            return false;
        UINT32 length = 0;
        return reinterpret_cast<PackageName>(reinterpret_cast<void*>(address))(&length, nullptr)
            == ERROR_INSUFFICIENT_BUFFER;
    }
};
}   // namespace

template <>
Modules& SystemPort<Modules>()
{
    static Win32Modules modules;
    return modules;
}

template <>
Environment& SystemPort<Environment>()
{
    static Win32Environment environment;
    return environment;
}

}   // namespace Ports
