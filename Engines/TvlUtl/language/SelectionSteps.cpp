#include "SelectionSteps.h"

#include "UILanguage.h"

#include <mutex>

namespace SelectionSteps {

namespace {
std::mutex stepsLock;
// Never destroyed: a language may be chosen while modules go away.
std::vector<TvlUtl::UILanguageStep>& Steps()
{
    static auto& steps = *new std::vector<TvlUtl::UILanguageStep>;
    return steps;
}
}   // namespace

void Begin()
{
    const std::lock_guard hold(stepsLock);
    Steps().clear();
}

void Note(const wchar_t* step, const TvlString& finding)
{
    const std::lock_guard hold(stepsLock);
    Steps().push_back({step, finding});
}

}   // namespace SelectionSteps

std::vector<TvlUtl::UILanguageStep> TvlUtl::GetUILanguageSteps()
{
    const std::lock_guard hold(SelectionSteps::stepsLock);
    return SelectionSteps::Steps();
}
