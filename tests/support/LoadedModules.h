// Modules that lie beside the test program.
#pragma once

#include "windows/Modules.h"

#include <string>

/// A file beside the program.
inline std::wstring BesideTheProgram(const std::string& file)
{
    const std::wstring program = Ports::Modules::Get().ProgramPath();
    return program.substr(0, program.find_last_of(L"/\\") + 1) + std::wstring(file.begin(), file.end());
}

/// An exported name of a module that is loaded; null when there is none.
inline void* ExportOf(const std::string& file, const std::string& name)
{
    const Ports::Modules& modules = Ports::Modules::Get();
    HMODULE const module = modules.Loaded(std::wstring(file.begin(), file.end()));
    return module ? modules.Address(module, name) : nullptr;
}
