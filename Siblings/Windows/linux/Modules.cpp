// Modules and environment by the dynamic loader and the C library.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <link.h>
#include <string_view>
#include <unistd.h>

namespace Ports {

namespace {
/// A search for a loaded module by the name of its file.
struct Search {
    std::string name;
    const char* path = nullptr;   // where it lies, when it was found
};

int LookAt(dl_phdr_info* module, std::size_t, void* data)
{
    auto& search = *static_cast<Search*>(data);
    const std::string_view path = module->dlpi_name;
    if (path.substr(path.rfind('/') + 1) != search.name)
        return 0;
    search.path = module->dlpi_name;
    return 1;
}

// Where distributions keep shared libraries. The loader's own search would follow LD_LIBRARY_PATH.
constexpr const wchar_t* kSystemFolders[] = {
    L"/usr/lib/x86_64-linux-gnu/", L"/lib/x86_64-linux-gnu/", L"/usr/lib64/", L"/lib64/", L"/usr/lib/", L"/lib/"};

class LinuxModules final : public Modules {
public:
    HMODULE Loaded(const std::wstring& name) const override
    {
        Search search{TvlPlatform::ToUtf8(name)};
        if (!dl_iterate_phdr(LookAt, &search))
            return nullptr;
        // The reference that a successful look-up adds is given back: the caller owns nothing.
        void* const module = dlopen(search.path, RTLD_NOLOAD | RTLD_LAZY);
        if (module)
            dlclose(module);
        return static_cast<HMODULE>(module);
    }

    HMODULE Load(const std::wstring& path) override
    {
        return static_cast<HMODULE>(dlopen(TvlPlatform::ToUtf8(path).c_str(), RTLD_NOW | RTLD_LOCAL));
    }

    HMODULE LoadFromSystem(const std::wstring& name) override
    {
        for (const wchar_t* const folder : kSystemFolders)
            if (const HMODULE module = LoadFrom(folder, name))
                return module;
        return nullptr;
    }

    HMODULE LoadFromProgramFolder(const std::wstring& name) override
    {
        const std::wstring program = ProgramPath();
        return LoadFrom(program.substr(0, program.rfind(L'/') + 1), name);
    }

    void Unload(HMODULE module) override { dlclose(module); }

    void* Address(HMODULE module, const std::string& name) const override { return dlsym(module, name.c_str()); }

    std::wstring ProgramPath() const override
    {
        std::error_code failed;
        const auto path = std::filesystem::read_symlink("/proc/self/exe", failed);
        return failed ? std::wstring() : TvlPlatform::FromUtf8(path.string());
    }

    DWORD ProcessId() const override { return static_cast<DWORD>(getpid()); }

    std::vector<std::wstring> Arguments() const override
    {
        std::ifstream file("/proc/self/cmdline", std::ios::binary);
        std::vector<std::wstring> arguments;
        std::string argument;
        std::getline(file, argument, '\0');
        while (std::getline(file, argument, '\0'))
            arguments.push_back(TvlPlatform::FromUtf8(argument));
        return arguments;
    }

    std::wstring PathOf(const void* address) const override
    {
        Dl_info module{};
        std::error_code failed;
        if (!dladdr(address, &module) || !module.dli_fname)
            return {};
        // Systems load libraries through links to folders, such as /lib, where a step up leads elsewhere.
        const auto path = std::filesystem::canonical(module.dli_fname, failed);
        return failed ? std::wstring() : TvlPlatform::FromUtf8(path.string());
    }

private:
    HMODULE LoadFrom(const std::wstring& folder, const std::wstring& name)
    {
        if (folder.empty() || name.empty() || name.find(L'/') != std::wstring::npos)
            return nullptr;
        return Load(folder + name);
    }
};

class LinuxEnvironment final : public Environment {
public:
    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        const char* const value = std::getenv(TvlPlatform::ToUtf8(name).c_str());
        if (!value)
            return std::nullopt;
        return TvlPlatform::FromUtf8(value);
    }

    bool IsSandboxed() const override { return std::getenv("FLATPAK_ID") || std::getenv("SNAP"); }
};
}   // namespace

template <>
Modules& SystemPort<Modules>()
{
    static LinuxModules modules;
    return modules;
}

template <>
Environment& SystemPort<Environment>()
{
    static LinuxEnvironment environment;
    return environment;
}

}   // namespace Ports
