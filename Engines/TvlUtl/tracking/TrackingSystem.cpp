#include "TrackingSystem.h"

#include "siblings/TvlComponent/Application.h"

#include <algorithm>
#include <new>
#include <vector>

template class TvlUtils::Singleton<Framework::Tracking::TrackingSystem, 0>;

namespace Framework::Tracking {

ITracker::~ITracker() = default;

/// The list of trackers, and the tracker that stands in for a missing one.
class TrackingSystem::Trackers final : public NullTracker {
public:
    ITracker& Find(TrackerId id)
    {
        const auto found =
            std::find_if(list.begin(), list.end(), [id](const auto& tracker) { return tracker->GetId() == id; });
        if (found == list.end())
            return *this;
        return **found;
    }

    std::vector<std::shared_ptr<ITracker>> list;
};

TrackingSystem::TrackingSystem() : m_trackers(new (std::nothrow) Trackers) { }
TrackingSystem::~TrackingSystem() = default;

void TrackingSystem::AddTracker(std::shared_ptr<ITracker> tracker)
{
    if (tracker && m_trackers)
        m_trackers->list.push_back(std::move(tracker));
}

void TrackingSystem::RemoveTracker(std::shared_ptr<ITracker> tracker)
{
    if (!tracker || !m_trackers)
        return;
    std::erase_if(
        m_trackers->list, [id = tracker->GetId()](const auto& registered) { return registered->GetId() == id; });
}

void TrackingSystem::Send(TvlUtils::array_view<const TrackerId> ids, const Activity& activity)
{
    if (!m_trackers)
        return;
    const auto type = activity.properties.find(L"setType");
    Activity sent = activity;
    if (type != activity.properties.end() && type->second.Compare(L"bool") == 0)
        sent.name += L"::" + sent.properties[L"setValue"];
    for (const TrackerId id : ids)
        m_trackers->Find(id).Send(sent);
}

}   // namespace Framework::Tracking

extern "C" int TrackFeature(const wchar_t* label) noexcept
try {
    ITovelCmn_App* const application = TvlComponent::GetAppInterface();
    return application ? application->TrackFeature(label ? label : L"") : 0;
} catch (...) {
    return 0;
}
