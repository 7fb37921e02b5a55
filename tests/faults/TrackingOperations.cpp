// Trackers, records of file formats, and the files of events. No caller fails for the sake of what is told of it.
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "TrackFileFormatUse.h"
#include "TrackingSystem.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlConfig/ProductAnalytics.h"

#include <gtest/gtest.h>

namespace {
using namespace Framework::Tracking;
using Use = TrackFileFormatUse;
constexpr const wchar_t* kPath = L"/documents/a drawing with a name of some length.tvr";

struct Tracker : ITracker {
    explicit Tracker(int number) : id(number) { }
    TrackerId GetId() const override { return TrackerId(id); }
    void Send(const Activity& activity) override { sent += activity.properties.size(); }

    int id;
    std::size_t sent = 0;
};

struct Trackers {
    Trackers() { Release(); }
    ~Trackers() { Release(); }
    static void Release() { TvlUtils::Singleton<TrackingSystem, 0>::ReleaseInstance(false); }
    static TrackingSystem& System() { return TvlUtils::Singleton<TrackingSystem, 0>::GetInstance(); }

    std::shared_ptr<Tracker> tracker = std::make_shared<Tracker>(1);
    const Activity activity{L"a feature with a long name", {{L"setType", L"bool"}, {L"setValue", L"the value of it"}}};
};

struct Records : ITovelCmn_App {
    Records() { TvlComponent::SetAppInterface(this); }
    ~Records() override { TvlComponent::SetAppInterface(nullptr); }
    void ShowMessage(const wchar_t*) override { }
    int TrackFeature(const wchar_t*) override { return ++labels; }

    FaultWorld world;
    int labels = 0;
};

struct Events {
    Events() { EXPECT_TRUE(log.Append(event)); }

    /// The event that was told first is there, and of another all or nothing.
    void Check(const HeapRun& outcome)
    {
        const auto events = ProductAnalytics::EventReader(folder).ReadNew();
        ASSERT_GE(events.size(), outcome.hasFailed ? 1u : 2u);
        for (const auto& found : events)
            EXPECT_EQ(found, event);
    }

    FaultWorld world;
    const TvlString folder = FaultWorld::Path("user/Analytics");
    const ProductAnalytics::EventLog log{folder};
    const ProductAnalytics::StoredEvent event{
        L"2024-05-31T08:15:30.250Z", L"document.opened", {{L"document.type", L"a value of some length"}}, L"detail"};
};
}   // namespace

HeapOperations TrackingOperations()
{
    return {
        Row<Trackers>(
            "TrackingSystem", [](Trackers&) { Trackers::System(); },
            [](Trackers&, const HeapRun&) { Trackers::Release(); }),
        Row<Trackers>(
            "AddTracker", [](Trackers& trackers) { Trackers::System().AddTracker(trackers.tracker); },
            [](Trackers& trackers, const HeapRun& outcome) {
                const std::vector<TrackerId> ids = {TrackerId(1)};
                Trackers::System().Send(ids, trackers.activity);
                EXPECT_TRUE(trackers.tracker->sent == 2 || outcome.hasFailed);
                trackers.tracker->sent = 0;
                Trackers::Release();
            }),
        Row<Trackers>(
            "Send",
            [](Trackers& trackers) {
                const std::vector<TrackerId> ids = {TrackerId(1), TrackerId(7), TrackerId(1)};
                Trackers::System().Send(ids, trackers.activity);
            },
            [](Trackers&, const HeapRun&) { EXPECT_NO_THROW(Trackers::System()); }),
        Row<Records>(
            "TrackFileFormatUse",
            [](Records&) {
                Use use = Use::StartGlobal(kPath, L"Open");
                use.Lock()->SetVersion(L"2700").SetFilter(L"a filter with a name of some length");
                use.Accept();
                use.Commit();
            },
            [](Records& records, const HeapRun& outcome) {
                EXPECT_TRUE(records.labels == 1 || outcome.hasFailed) << records.labels;
                records.labels = 0;
                EXPECT_FALSE(Use::Find(kPath)) << "nobody holds it any more";
            }),
        Row<Records>(
            "TrackFileFormatUse_Find",
            [](Records& records) {
                const Use kept = Use::StartGlobal(kPath, L"AutoSave-Completed");
                const Use found = Use::Find(kPath);
                found.Lock()->SetLayout(L"the layout's name, which is long");
                records.labels = found ? 1 : 0;
                Use(found).Discard();
            },
            [](Records& records, const HeapRun& outcome) {
                EXPECT_TRUE(records.labels > 0 || outcome.hasFailed);
                records.labels = 0;
                EXPECT_FALSE(Use::Find(kPath));
            }),
        Row<Records>(
            "SendEvent",
            [](Records&) {
                const TvlString value = L"a value of some length";
                ProductAnalytics::GetInstance().SendEvent(L"document.opened", {{L"document.type", value}}, L"detail");
            },
            [](Records& records, const HeapRun&) {
                // What can't be stored is dropped; what is stored is whole.
                const auto file = ProductAnalytics::GetInstance().GetEventFile();
                const auto bytes = records.world.files.Get(file.Std());
                EXPECT_TRUE(!bytes || bytes->empty() || bytes->back() == '\n');
            }),
        Row<Events>(
            "EventLog_Append", [](Events& events) { static_cast<void>(events.log.Append(events.event)); },
            [](Events& events, const HeapRun& outcome) { events.Check(outcome); }),
        Row<Events>(
            "EventReader_ReadNew",
            [](Events& events) {
                ProductAnalytics::EventReader reader(events.folder);
                if (reader.ReadNew().size() == 1)
                    static_cast<void>(events.log.Append(events.event));
            },
            [](Events& events, const HeapRun& outcome) { events.Check(outcome); }),
    };
}
