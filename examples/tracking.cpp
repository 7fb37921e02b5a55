// Tells a tracker of the application what the user does, and the service which file format was opened.
#include "Privacy.h"
#include "TrackFileFormatUse.h"
#include "TrackingSystem.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <fstream>
#include <iostream>

using namespace Framework::Tracking;

namespace {

constexpr TrackerId kUsage = TrackerId(1);

class UsageTracker : public ITracker {
public:
    TrackerId GetId() const override { return kUsage; }
    void Send(const Activity& activity) override
    {
        if (TvlUtl::Privacy::GetShareFeatureUsage())   // the system itself does not ask
            std::cout << "used: " << TvlPlatform::ToUtf8(activity.name) << '\n';
    }
};

}   // namespace

int main()
{
    TrackingSystem& tracking = TrackingSystem::GetInstance();
    tracking.AddTracker(std::make_shared<UsageTracker>());
    const TrackerId ids[] = {kUsage};
    tracking.Send(ids, {L"Fill", {}});

    // The last handle that goes sends what is known, as an event if the operation was accepted.
    TrackFileFormatUse use = TrackFileFormatUse::StartGlobal(L"drawing.svg", L"Import");
    use.Lock()->SetVersion(L"11");
    TrackFileFormatUse::Find(L"drawing.svg").Accept();
    use.Commit();

    const TvlString user = TvlConfig::GetUserDir();
    std::ifstream events(TvlUtils::SystemIO::ToFilePath(user) / "Analytics" / "events.jsonl");
    std::string line;
    while (std::getline(events, line))
        std::cout << line.substr(line.find("\"event\"")) << '\n';
}
