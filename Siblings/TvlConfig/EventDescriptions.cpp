#include "siblings/TvlConfig/EventDescriptions.h"

#include <algorithm>
#include <mutex>
#include <string_view>

namespace ProductAnalytics {

namespace {
struct Describers {
    std::mutex lock;
    std::vector<EventDescriber::Describe> list;
};

// Never destroyed: describers leave while modules go away.
Describers& All()
{
    static Describers& all = *new Describers;
    return all;
}
}   // namespace

EventDescriber::EventDescriber(Describe describe) : m_describe(describe)
{
    const std::scoped_lock hold(All().lock);
    All().list.push_back(describe);
}

EventDescriber::~EventDescriber()
{
    const std::scoped_lock hold(All().lock);
    auto& list = All().list;
    if (const auto found = std::find(list.begin(), list.end(), m_describe); found != list.end())
        list.erase(found);
}

std::vector<EventDescription> DescribeEvents()
{
    std::vector<EventDescription> events;
    {
        const std::scoped_lock hold(All().lock);
        for (const auto describe : All().list)
            for (EventDescription& event : describe())
                events.push_back(std::move(event));
    }
    std::stable_sort(events.begin(), events.end(),
        [](const auto& a, const auto& b) { return std::wstring_view(a.event) < std::wstring_view(b.event); });
    return events;
}

}   // namespace ProductAnalytics
