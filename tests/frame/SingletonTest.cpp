// One object of a type in the process, whichever module asks.
#include "SharedCounter.h"

#include "siblings/TvlUtils/Singleton.h"

#include <atomic>
#include <cstddef>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

std::atomic<int> made = 0;

class Slow : public TvlUtils::Singleton<Slow, 1> {
public:
    Slow()
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ++made;
    }
};

class Unused : public TvlUtils::Singleton<Unused, 0> { };

class Failing : public TvlUtils::Singleton<Failing, 0> {
public:
    Failing()
    {
        if (fails)
            throw 7;
    }
    static inline bool fails = true;
};

TEST(Singleton, SixteenThreadsMakeOneObject)
{
    std::vector<std::thread> threads;
    std::vector<Slow*> seen(16);
    for (auto& place : seen)
        threads.emplace_back([&place] { place = &Slow::GetInstance(); });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(made, 1);
    for (const Slow* const object : seen)
        EXPECT_EQ(object, seen[0]);
}

TEST(Singleton, AsksWithoutMaking)
{
    EXPECT_FALSE(Unused::HasInstance());
    Unused::ReleaseInstance(true);
    EXPECT_FALSE(Unused::HasInstance());
    Unused::GetInstance();
    EXPECT_TRUE(Unused::HasInstance());
    Unused::ReleaseInstance(true);
    EXPECT_FALSE(Unused::HasInstance());
    Unused::GetInstance();   // a permanent release does not keep it away
    EXPECT_TRUE(Unused::HasInstance());
}

TEST(Singleton, ComesBackAfterAConstructorThatThrew)
{
    EXPECT_THROW(Failing::GetInstance(), int);
    EXPECT_FALSE(Failing::HasInstance());
    Failing::fails = false;
    Failing::GetInstance();
    EXPECT_TRUE(Failing::HasInstance());
}

TEST(Singleton, IsOneAcrossModules)
{
    SharedCounter& here = SharedCounter::GetInstance();
    here.count = 41;
    EXPECT_EQ(CounterOfTheOtherModule(), &here);
    EXPECT_EQ(++CounterOfTheOtherModule()->count, 42);
    EXPECT_EQ(here.count, 42);
}

TEST(Singleton, EntryHasItsFixedLayout)
{
    using Entry = TvlUtils::SingletonLibrary;
    EXPECT_EQ(offsetof(Entry, deleter), 0u);
    EXPECT_EQ(offsetof(Entry, data), 8u);
    EXPECT_EQ(offsetof(Entry, finalizerKey), 16u);
    EXPECT_EQ(offsetof(Entry, lock), 24u);
    EXPECT_EQ(offsetof(Entry, flag), 32u);
}

}   // namespace
