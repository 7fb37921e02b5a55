// Loaded modules of the process.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>
#include <vector>

namespace Ports {

/// Finds, loads and unloads modules, and tells where the program lies.
class TVLSIBLINGS_API Modules {
public:
    /// The system's, or the one that stands in for it.
    static Modules& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Modules*);

    virtual ~Modules() = default;
    /// GetModuleHandle: the module of this file name when it is already loaded, else null. Never loads it.
    virtual HMODULE Loaded(const std::wstring& name) const = 0;
    /// LoadLibraryW: loads a module by its path, or by its name where the system looks; null when it can't be loaded.
    /// Each load wants an Unload.
    virtual HMODULE Load(const std::wstring& path) = 0;
    /// LoadLibraryExW from the system's folder and no other, for modules that belong to the system: a file of the same
    /// name elsewhere is never taken. A name that brings a folder along is refused.
    virtual HMODULE LoadFromSystem(const std::wstring& name) = 0;
    /// The same from the program's folder and no other, for modules that are installed with it.
    virtual HMODULE LoadFromProgramFolder(const std::wstring& name) = 0;
    /// LoadLibraryExW as a data file: a library that has resources alone, of which no code runs. On linux a library is
    /// loaded as any other. Null when it can't be loaded; each load wants an Unload.
    virtual HMODULE LoadAsData(const std::wstring& path) { return Load(path); }
    /// FreeLibrary: takes one load back. The module leaves the process with the last one.
    virtual void Unload(HMODULE module) = 0;
    /// GetProcAddress: the exported function or variable of this name, or null.
    virtual void* Address(HMODULE module, const std::string& name) const = 0;
    /// Full path of the running program's file; empty when the system does not tell.
    virtual std::wstring ProgramPath() const = 0;
    /// GetCurrentProcessId.
    virtual DWORD ProcessId() const { return 0; }
    /// The program's arguments, without its own name.
    virtual std::vector<std::wstring> Arguments() const = 0;
    /// Full path of the module that holds an address of its code or data; empty when none does.
    virtual std::wstring PathOf(const void* address) const = 0;
};

}   // namespace Ports
