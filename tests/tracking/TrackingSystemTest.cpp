// Delivery of activities to trackers, and consents.
#include "TrackingSystem.h"

#include "MemoryRegistry.h"
#include "Privacy.h"
#include "RecordingApplication.h"
#include "VirtualSlot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {
using namespace Framework::Tracking;
using testing::ElementsAre;
using testing::IsEmpty;

struct Tracker : ITracker {
    Tracker(int number, std::vector<std::wstring>& log) : id(number), sent(log) { }
    ~Tracker() override { sent.push_back(L"end of " + std::to_wstring(id)); }
    TrackerId GetId() const override { return TrackerId(id); }
    void Send(const Activity& activity) override
    {
        sent.push_back(std::to_wstring(id) + L" " + activity.name.Std());
        last = activity;
        if (fails)
            throw std::runtime_error("no connection");
    }

    int id;
    std::vector<std::wstring>& sent;
    Activity last;
    bool fails = false;
};

class TrackingSystemTest : public testing::Test {
protected:
    TrackingSystemTest() { TvlUtils::Singleton<TrackingSystem, 0>::ReleaseInstance(false); }
    ~TrackingSystemTest() override { TvlUtils::Singleton<TrackingSystem, 0>::ReleaseInstance(false); }

    static TrackingSystem& System() { return TvlUtils::Singleton<TrackingSystem, 0>::GetInstance(); }
    std::shared_ptr<Tracker> Add(int id)
    {
        auto tracker = std::make_shared<Tracker>(id, sent);
        System().AddTracker(tracker);
        return tracker;
    }
    /// Sends to the identifiers and returns what the trackers have got.
    std::vector<std::wstring> Send(const std::vector<int>& numbers, const Activity& what)
    {
        std::vector<TrackerId> ids;
        for (const int number : numbers)
            ids.push_back(TrackerId(number));
        sent.clear();
        System().Send(ids, what);
        return sent;
    }

    std::vector<std::wstring> sent;
    const Activity activity{L"Feature", {}};
};

TEST_F(TrackingSystemTest, DeliversInTheCallersOrderToTheFirstOfAnIdentifier)
{
    Add(1);
    Add(2);
    Add(1)->fails = true;
    System().AddTracker(nullptr);
    EXPECT_THAT(Send({2, 1, 2, 3, 0}, activity), ElementsAre(L"2 Feature", L"1 Feature", L"2 Feature"));
    EXPECT_THAT(Send({}, activity), IsEmpty());
}

TEST_F(TrackingSystemTest, RemovesByIdentifier)
{
    const auto kept = Add(2);
    Add(1);
    Add(1);
    sent.clear();
    System().RemoveTracker(nullptr);
    {
        const auto other = std::make_shared<Tracker>(1, sent);
        System().RemoveTracker(other);
        EXPECT_THAT(sent, ElementsAre(L"end of 1", L"end of 1"));
    }
    EXPECT_THAT(Send({1, 2}, activity), ElementsAre(L"2 Feature"));
}

TEST_F(TrackingSystemTest, JoinsABooleanToACopyOfTheName)
{
    struct Row {
        std::map<TvlString, TvlString> properties;
        const wchar_t* name;
        std::size_t properties_sent;
    };
    const Row rows[] = {
        {{{L"setType", L"bool"}, {L"setValue", L"true"}}, L"1 Feature::true", 2},
        {{{L"setType", L"bool"}}, L"1 Feature::", 2},
        {{{L"setType", L"Bool"}, {L"setValue", L"true"}}, L"1 Feature", 2},
        {{{L"setType", L"int"}, {L"setValue", L"7"}, {L"more", L"x"}}, L"1 Feature", 3},
        {{{L"setValue", L"true"}}, L"1 Feature", 1},
    };
    const auto tracker = Add(1);
    for (const auto& [properties, name, count] : rows) {
        const Activity caller{L"Feature", properties};
        EXPECT_THAT(Send({1}, caller), ElementsAre(name));
        EXPECT_EQ(tracker->last.properties.size(), count) << name;
        EXPECT_TRUE(caller.name == L"Feature" && caller.properties == properties);
    }
}

TEST_F(TrackingSystemTest, PassesExceptionsOn)
{
    Add(1)->fails = true;
    Add(2);
    EXPECT_THROW(Send({1, 2}, activity), std::runtime_error);
    EXPECT_THAT(sent, ElementsAre(L"1 Feature"));
}

TEST_F(TrackingSystemTest, ReleasesTrackersInOrder)
{
    for (const int id : {3, 1, 2})
        Add(id);
    TvlUtils::Singleton<TrackingSystem, 0>::ReleaseInstance(false);
    EXPECT_THAT(sent, ElementsAre(L"end of 3", L"end of 1", L"end of 2"));
    EXPECT_THAT(Send({1}, activity), IsEmpty());
}

TEST_F(TrackingSystemTest, TheNullTrackerHasTheIdentifierZero)
{
    NullTracker null;
    null.Send(activity);
    EXPECT_EQ(null.GetId(), TrackerId(0));
    Add(0);
    EXPECT_THAT(Send({0}, activity), ElementsAre(L"0 Feature"));
}

TEST(TrackingInterfaces, KeepTheirSlots)
{
    // A virtual destructor has two slots.
    EXPECT_EQ(Slot(&ITracker::GetId), 2u);
    EXPECT_EQ(Slot(&ITracker::Send), 3u);
    EXPECT_EQ(Slot(&IProductAnalyticsCore::SendEvent), 3u) << "the fourth one";
    EXPECT_EQ(sizeof(TrackingSystem), sizeof(void*));
}

TEST(TrackFeature, GivesTheApplicationsAnswer)
{
    EXPECT_EQ(TrackFeature(L"alone"), 0);
    RecordingApplication application;
    EXPECT_EQ(TrackFeature(L"first"), 1);
    EXPECT_EQ(TrackFeature(nullptr), 2);
    EXPECT_THAT(application.labels, ElementsAre(L"first", L""));
    application.onLabel = [] { throw std::runtime_error("no network"); };
    EXPECT_EQ(TrackFeature(L"third"), 0);
}

TEST(Privacy, ConsentsAreOnUntilTheyAreTurnedOff)
{
    using namespace TvlUtl::Privacy;
    struct Row {
        int (*get)();
        void (*set)(int);
    };
    constexpr Row kRows[] = {{GetShareFeatureUsage, SetShareFeatureUsage}, {GetShareSearchTerms, SetShareSearchTerms},
        {GetShowCrashDialogAgain, SetShowCrashDialogAgain}};
    MemoryRegistry registry;
    for (const auto& [get, set] : kRows) {
        EXPECT_EQ(get(), 1);
        set(0);
        EXPECT_EQ(get(), 0);
        set(-7);
        EXPECT_EQ(get(), 1);
        set(0);
    }
    EXPECT_EQ(GetShareFeatureUsage() + GetShareSearchTerms() + GetShowCrashDialogAgain(), 0);
}

}   // namespace
