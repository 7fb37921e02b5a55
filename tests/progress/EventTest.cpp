// Events and subscriptions.
#include "siblings/TvlUtils/EventBase.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {
using TvlUtils::EventBase;
using TvlUtils::Subscription;

/// An event whose handlers write down their names.
struct Recorded {
    EventBase::Handler Named(char name)
    {
        return [this, name](void*) { calls += name; };
    }
    std::string Raise()
    {
        calls.clear();
        event.Raise(this);
        return calls;
    }

    EventBase event;
    std::string calls;
};

TEST(Event, CallsHandlersInTheOrderOfSubscription)
{
    Recorded recorded;
    EXPECT_EQ(recorded.Raise(), "");
    const Subscription a = recorded.event.Subscribe(recorded.Named('a'));
    std::optional<Subscription> b = recorded.event.Subscribe(recorded.Named('b'));
    const Subscription c = recorded.event.Subscribe(recorded.Named('c'));
    EXPECT_EQ(recorded.Raise(), "abc");
    b.reset();
    EXPECT_EQ(recorded.Raise(), "ac");
    const Subscription d = recorded.event.Subscribe(recorded.Named('d'));
    EXPECT_EQ(recorded.Raise(), "acd");
}

TEST(Event, PassesItsSender)
{
    Recorded recorded;
    void* seen = nullptr;
    const Subscription kept = recorded.event.Subscribe([&](void* sender) { seen = sender; });
    recorded.event.Raise(&recorded);
    EXPECT_EQ(seen, &recorded);
}

TEST(Event, SubscriptionsMoveEndAndStay)
{
    Recorded recorded;
    {
        Subscription a = recorded.event.Subscribe(recorded.Named('a'));
        Subscription moved = std::move(a);
        EXPECT_TRUE(moved.IsActive());
        EXPECT_EQ(recorded.Raise(), "a");
        moved = recorded.event.Subscribe(recorded.Named('b'));
        EXPECT_EQ(recorded.Raise(), "b");
        recorded.event.Subscribe(recorded.Named('p')).MakePermanent();
        EXPECT_EQ(recorded.Raise(), "bp");
        moved.Unsubscribe();
        moved.Unsubscribe();
        EXPECT_FALSE(moved.IsActive());
    }
    EXPECT_EQ(recorded.Raise(), "p");
}

TEST(Event, SubscriptionsMayOutliveIt)
{
    auto event = std::make_unique<EventBase>();
    const auto captured = std::make_shared<int>(1);
    Subscription kept = event->Subscribe([captured](void*) {});
    event->Subscribe([captured](void*) {}).MakePermanent();
    EXPECT_EQ(captured.use_count(), 3);
    event.reset();
    EXPECT_EQ(captured.use_count(), 1) << "handlers go with the event";
    EXPECT_FALSE(kept.IsActive());
    kept.Unsubscribe();
}

TEST(Event, HandlersSubscribeAndUnsubscribeWhileItIsRaised)
{
    Recorded recorded;
    Subscription late;
    Subscription third;
    Subscription own = recorded.event.Subscribe([&](void*) {
        recorded.calls += 'a';
        third.Unsubscribe();
        late = recorded.event.Subscribe(recorded.Named('n'));
        own.Unsubscribe();
    });
    const Subscription second = recorded.event.Subscribe(recorded.Named('b'));
    third = recorded.event.Subscribe(recorded.Named('c'));
    EXPECT_EQ(recorded.Raise(), "ab") << "what is new waits for the next time, what is gone is passed over";
    EXPECT_EQ(recorded.Raise(), "bn");
}

TEST(Event, LetsAHandlersExceptionOutAndGoesOnTheNextTime)
{
    Recorded recorded;
    bool throws = true;
    const Subscription a = recorded.event.Subscribe(recorded.Named('a'));
    const Subscription b = recorded.event.Subscribe([&](void*) {
        if (throws)
            throw std::runtime_error("refused");
    });
    const Subscription c = recorded.event.Subscribe(recorded.Named('c'));
    EXPECT_THROW(recorded.Raise(), std::runtime_error);
    EXPECT_EQ(recorded.calls, "a");
    throws = false;
    std::thread([&] { recorded.Raise(); }).join();   // no lock is left behind
    EXPECT_EQ(recorded.calls, "ac");
}

TEST(Event, MayEndWhileItIsRaised)
{
    auto recorded = std::make_unique<Recorded>();
    std::string calls;
    std::vector<Subscription> kept;
    kept.push_back(recorded->event.Subscribe([&](void*) {
        calls += 'a';
        recorded.reset();
    }));
    kept.push_back(recorded->event.Subscribe([&](void*) { calls += 'b'; }));
    recorded->event.Raise(nullptr);
    EXPECT_EQ(calls, "a");
    EXPECT_FALSE(kept[0].IsActive());
}

TEST(Event, RaisedFromItsOwnHandler)
{
    Recorded recorded;
    int depth = 0;
    const Subscription a = recorded.event.Subscribe([&](void* sender) {
        recorded.calls += static_cast<char>('0' + depth);
        if (++depth < 3)
            recorded.event.Raise(sender);
    });
    const Subscription b = recorded.event.Subscribe(recorded.Named('b'));
    EXPECT_EQ(recorded.Raise(), "012bbb");
}

// What a handler has captured may unsubscribe when it goes.
TEST(Event, HandlersOwnSubscriptionsOfTheSameEvent)
{
    Recorded recorded;
    auto owned = std::make_shared<Subscription>(recorded.event.Subscribe(recorded.Named('o')));
    Subscription owner = recorded.event.Subscribe([owned](void*) {});
    owned.reset();
    EXPECT_EQ(recorded.Raise(), "o");
    owner.Unsubscribe();
    EXPECT_EQ(recorded.Raise(), "");
}

TEST(Event, ThreadsRaiseSubscribeAndUnsubscribeAtOnce)
{
    constexpr int kThreads = 8;
    constexpr int kRounds = 2000;
    EventBase event;
    std::atomic<int> permanent = 0;
    std::atomic<int> passing = 0;
    event.Subscribe([&](void*) { ++permanent; }).MakePermanent();
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const auto state = std::make_shared<int>(round);
                const Subscription own = event.Subscribe([&passing, state](void*) { passing += *state >= 0; });
                event.Raise(nullptr);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(permanent, kThreads * kRounds);
    EXPECT_GE(passing, kThreads * kRounds);
    const int before = passing;
    event.Raise(nullptr);
    EXPECT_EQ(passing, before);
}

}   // namespace
