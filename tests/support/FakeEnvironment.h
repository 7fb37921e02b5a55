// Environment variables that a test chooses, before the system's own, as long as the object lives.
#pragma once

#include "windows/Environment.h"

#include <map>
#include <string>

class FakeEnvironment : public Ports::Environment {
public:
    explicit FakeEnvironment(std::map<std::wstring, std::wstring> chosen)
        : variables(std::move(chosen)), m_system(Ports::Environment::Get())
    {
        SetForTests(this);
    }
    ~FakeEnvironment() override { SetForTests(nullptr); }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? m_system.Variable(name) : found->second;
    }
    bool IsSandboxed() const override { return isSandboxed; }

    std::map<std::wstring, std::wstring> variables;
    bool isSandboxed = false;

private:
    const Ports::Environment& m_system;
};
