// A folder of the user's files for one test.
#pragma once

#include "windows/Environment.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

/// Stands for TVL_USER_DIR as long as it lives, and goes with all that is in it.
class TemporaryUserFolder : public Ports::Environment {
public:
    TemporaryUserFolder()
        : m_system(Ports::Environment::Get()),
          m_path(std::filesystem::temp_directory_path() / ("tvl-user-" + std::to_string(std::random_device()())))
    {
        std::filesystem::create_directories(m_path);
        SetForTests(this);
    }
    ~TemporaryUserFolder() override
    {
        SetForTests(nullptr);
        std::error_code failed;
        std::filesystem::remove_all(m_path, failed);
    }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        return name == L"TVL_USER_DIR" ? m_path.wstring() : m_system.Variable(name);
    }
    bool IsSandboxed() const override { return m_system.IsSandboxed(); }

    const std::filesystem::path& Path() const { return m_path; }
    void Write(const char* name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }
    std::string Read(const char* name) const
    {
        std::ifstream file(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    Ports::Environment& m_system;
    std::filesystem::path m_path;
};
