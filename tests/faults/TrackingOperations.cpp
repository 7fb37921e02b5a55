// Trackers, records of file formats, and the files of events. No caller fails for the sake of what is told of it.
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "TrackFileFormatUse.h"
#include "TrackingSystem.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "windows/Clock.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

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
    Trackers()
    {
        Release();
        system = &System();
    }
    ~Trackers() { Release(); }
    static void Release() { TvlUtils::Singleton<TrackingSystem, 0>::ReleaseInstance(false); }
    static TrackingSystem& System() { return TvlUtils::Singleton<TrackingSystem, 0>::GetInstance(); }

    /// Whether the tracker is one of those that are told.
    void Check(const HeapRun& outcome)
    {
        const std::vector<TrackerId> ids = {TrackerId(1)};
        System().Send(ids, activity);
        const std::size_t sent = std::exchange(tracker->sent, 0);
        EXPECT_TRUE(sent == 2 || (sent == 0 && outcome.hasFailed)) << sent;
    }

    TrackingSystem* system = nullptr;
    std::shared_ptr<Tracker> tracker = std::make_shared<Tracker>(1);
    const Activity activity{L"a feature with a long name", {{L"setType", L"bool"}, {L"setValue", L"the value of it"}}};
};

/// Trackers that are told of an activity.
struct Listening : Trackers {
    Listening() { System().AddTracker(tracker); }
};

struct Records : ITovelCmn_App {
    Records() { TvlComponent::SetAppInterface(this); }
    ~Records() override { TvlComponent::SetAppInterface(nullptr); }
    void ShowMessage(const wchar_t*) override { }
    int TrackFeature(const wchar_t*) override { return ++labels; }

    FaultWorld world;
    int labels = 0;
    int events = 0;   // after the run before
};

struct Events {
    Events() { EXPECT_TRUE(log.Append(event)); }

    void Append()
    {
        isDone = false;
        isDone = static_cast<bool>(log.Append(event));
        told += isDone;
    }
    static bool HasFailed(Events& events) { return !events.isDone; }
    /// Each event that was told to be stored is there, and of another all or nothing.
    void Check(const HeapRun& outcome)
    {
        ProductAnalytics::EventReader reader(folder);
        const auto events = reader.ReadNew();
        EXPECT_TRUE(events.size() == told || (events.size() == told + 1 && outcome.hasFailed)) << events.size();
        for (const auto& found : events)
            EXPECT_EQ(found, event);
        EXPECT_EQ(reader.CountSkipped(), 0);
        told = events.size();
    }

    FaultWorld world;
    const TvlString folder = FaultWorld::Path("user/Analytics");
    const ProductAnalytics::EventLog log{folder};
    const ProductAnalytics::StoredEvent event{
        L"2024-05-31T08:15:30.250Z", L"document.opened", {{L"document.type", L"a value of some length"}}, L"detail"};
    bool isDone = false;
    std::size_t told = 1;
};

/// Events of the clock's time, in files of two or three, so that the oldest go.
struct FullEvents {
    void Append()
    {
        isDone = true;
        for (int i = 0; i < kEvents; ++i) {
            const auto time = Ports::Clock::Get().Now().time_since_epoch().count();
            const ProductAnalytics::StoredEvent event{
                TvlString(std::to_wstring(time)), TvlString(std::to_wstring(next)), {}, L""};
            const bool isStored = static_cast<bool>(log.Append(event));
            last = isStored ? next : last;
            isDone = isDone && isStored;
            ++next;
        }
    }
    /// The latest events are there, in their order, and none is missing between those that were stored.
    void Check(const HeapRun& outcome)
    {
        const auto events = ProductAnalytics::EventReader(folder).ReadNew();
        ASSERT_FALSE(events.empty() && last >= 0);
        int before = -1;
        for (const auto& event : events) {
            const int number = std::stoi(event.name.Std());
            EXPECT_TRUE(before < 0 || number == before + 1 || (number > before && hadFault)) << number;
            before = number;
        }
        EXPECT_TRUE(before == last || (before > last && outcome.hasFailed)) << before << " and not " << last;
        EXPECT_TRUE(isDone || outcome.hasFailed);
        last = before;
    }

    static constexpr int kEvents = 20;
    FaultWorld world;
    const TvlString folder = FaultWorld::Path("user/Analytics");
    const ProductAnalytics::EventLog log{folder, 200};
    int next = 0;
    int last = -1;   // of the events that were stored
    bool isDone = false;
    bool hadFault = false;
};
}   // namespace

HeapOperations TrackingOperations()
{
    return {
        // A system that was made without memory delivers nothing.
        SilentRow<Trackers>(
            "TrackingSystem",
            [](Trackers&) {
                Trackers::Release();
                Trackers::System();
            },
            [](Trackers& trackers, const HeapRun& outcome) {
                Trackers::System().AddTracker(trackers.tracker);
                trackers.Check(outcome);
                Trackers::Release();
            }),
        Row<Trackers>(
            "AddTracker", [](Trackers& trackers) { trackers.system->AddTracker(trackers.tracker); },
            [](Trackers& trackers, const HeapRun& outcome) {
                trackers.Check(outcome);
                Trackers::Release();
                trackers.system = &Trackers::System();
            }),
        Row<Listening>(
            "Send",
            [](Listening& trackers) {
                const std::vector<TrackerId> ids = {TrackerId(1), TrackerId(7), TrackerId(1)};
                Trackers::System().Send(ids, trackers.activity);
            },
            [](Listening& trackers, const HeapRun& outcome) {
                const std::size_t sent = std::exchange(trackers.tracker->sent, 0);
                EXPECT_TRUE(sent == 4 || (sent < 4 && outcome.hasFailed)) << sent;
            }),
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
        // What can't be stored is dropped; what is stored is whole.
        SilentRow<Records>(
            "SendEvent",
            [](Records&) {
                const TvlString value = L"a value of some length";
                ProductAnalytics::GetInstance().SendEvent(L"document.opened", {{L"document.type", value}}, L"detail");
            },
            [](Records& records, const HeapRun& outcome) {
                ProductAnalytics::EventReader reader(FaultWorld::Path("user/Analytics"));
                const auto events = reader.ReadNew();
                EXPECT_TRUE(outcome.hasFailed || static_cast<int>(events.size()) > records.events);
                for (const auto& event : events)
                    EXPECT_TRUE(event.name == L"document.opened" && event.properties.size() == 1);
                EXPECT_EQ(reader.CountSkipped(), 0);
                records.events = static_cast<int>(events.size());
            }),
        Row<Events>(
            "EventLog_Append", [](Events& events) { events.Append(); },
            [](Events& events, const HeapRun& outcome) { events.Check(outcome); }, Events::HasFailed),
        Row<FullEvents>(
            "EventLog_of_files_that_are_put_by", [](FullEvents& events) { events.Append(); },
            [](FullEvents& events, const HeapRun& outcome) {
                events.hadFault = events.hadFault || outcome.hasFailed;
                events.Check(outcome);
            },
            [](FullEvents& events) { return !events.isDone; }),
        Row<Events>(
            "EventReader_ReadNew",
            [](Events& events) {
                ProductAnalytics::EventReader reader(events.folder);
                events.isDone = false;
                events.isDone = reader.ReadNew().size() == events.told && reader.CountSkipped() == 0;
            },
            [](Events& events, const HeapRun& outcome) {
                EXPECT_TRUE(events.isDone || outcome.hasFailed);
                events.isDone = false;
                events.Check(HeapRun());
            }),
    };
}
