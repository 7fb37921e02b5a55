// A user of a test's own: folders, registry and environment that end with the object.
#pragma once

#include "ChildProcess.h"
#include "MemoryRegistry.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"

#include <fstream>
#include <map>

/// Variables that a test sets, over those of the process.
class FakeEnvironment : public Ports::Environment {
public:
    FakeEnvironment() : m_system(Ports::Environment::Get()) { SetForTests(this); }
    FakeEnvironment(const FakeEnvironment&) = delete;
    FakeEnvironment& operator=(const FakeEnvironment&) = delete;
    ~FakeEnvironment() override { SetForTests(nullptr); }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? m_system.Variable(name) : std::optional(found->second);
    }
    bool IsSandboxed() const override { return false; }

    std::map<std::wstring, std::wstring> variables;

private:
    const Ports::Environment& m_system;
};

class UserWorld {
public:
    UserWorld() { environment.variables[L"TVL_USER_DIR"] = Path("user").Std(); }

    /// A path in the world's folder. Slashes become the system's separators.
    TvlString Path(const std::string& name) const
    {
        const std::filesystem::path path = m_folder.Path() / std::filesystem::path(name).make_preferred();
        return TvlUtils::SystemIO::FromFilePath(path);
    }
    /// The same with a separator at its end.
    TvlString Folder(const std::string& name) const { return TvlUtils::SystemIO::Path::AddBackslash(Path(name)); }
    TvlString MakeFolder(const std::string& name) const
    {
        std::filesystem::create_directories(m_folder.Path() / name);
        return Folder(name);
    }
    TvlString MakeFile(const std::string& name, const std::string& bytes = "content") const
    {
        const std::filesystem::path path = m_folder.Path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Bytes(const std::string& name) const { return FileBytes(m_folder.Path() / name); }
    bool Has(const std::string& name) const { return std::filesystem::exists(m_folder.Path() / name); }
    void Remove(const std::string& name) const { std::filesystem::remove_all(m_folder.Path() / name); }

private:
    ScratchFolder m_folder;

public:
    FakeEnvironment environment;
    MemoryRegistry registry;
};
