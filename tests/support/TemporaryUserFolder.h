// A folder of the user's files for one test.
#pragma once

#include "ChildProcess.h"
#include "windows/Environment.h"

#include <fstream>
#include <string>

/// Stands for TVL_USER_DIR as long as it lives, and goes with all that is in it.
class TemporaryUserFolder : public Ports::Environment {
public:
    TemporaryUserFolder() : m_system(Ports::Environment::Get()) { SetForTests(this); }
    ~TemporaryUserFolder() override { SetForTests(nullptr); }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        return name == L"TVL_USER_DIR" ? m_folder.Path().wstring() : m_system.Variable(name);
    }
    bool IsSandboxed() const override { return m_system.IsSandboxed(); }

    void Write(const char* name, const std::string& bytes) const
    {
        std::ofstream(m_folder.Path() / name, std::ios::binary) << bytes;
    }
    std::string Read(const char* name) const { return FileBytes(m_folder.Path() / name); }

private:
    Ports::Environment& m_system;
    ScratchFolder m_folder;
};
