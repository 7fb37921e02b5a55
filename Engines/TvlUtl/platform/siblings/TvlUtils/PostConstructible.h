// Work that waits until an object is fully built.
#pragma once

#include "siblings/TvlUtils/Delegate.h"

#include <utility>
#include <vector>

namespace TvlUtils {

/// Base of classes whose constructors put work off until the most derived class's constructor has returned, when virtual
/// operations reach their final overriders. Whoever builds such an object calls PostConstruct on it.
class PostConstructible {
public:
    /// Does what was put off, in order and once; what that puts off in turn, too. An exception leaves away the rest.
    void PostConstruct()
    {
        while (!m_work.empty())
            for (const auto& work : std::exchange(m_work, {}))
                work();
    }

protected:
    ~PostConstructible() = default;
    /// For constructors: puts off a call.
    void CallOnPostConstruct(Delegate<void()> work) { m_work.push_back(work); }

private:
    std::vector<Delegate<void()>> m_work;
};

}   // namespace TvlUtils
