// Environment variables that a test chooses, before those of the process, as long as the object lives.
#pragma once

#include "windows/Environment.h"

#include <map>
#include <string>
#include <utility>

namespace TvlTestKit {

/// Objects may be nested: the inner one asks the outer one for what it does not hold itself, and gives its place back.
class FakeEnvironment : public Ports::Environment {
public:
    /// @param chosen variables by name; what is not among them is asked of the one before
    explicit FakeEnvironment(std::map<std::wstring, std::wstring> chosen = {})
        : variables(std::move(chosen)), m_before(Ports::Environment::Get())
    {
        SetForTests(this);
    }
    ~FakeEnvironment() override { SetForTests(&m_before); }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        const auto found = variables.find(name);
        return found == variables.end() ? m_before.Variable(name) : found->second;
    }
    bool IsSandboxed() const override { return isSandboxed; }

    std::map<std::wstring, std::wstring> variables;   ///< may be changed at any time
    bool isSandboxed = false;                         ///< what IsSandboxed answers

private:
    Ports::Environment& m_before;
};

}   // namespace TvlTestKit
