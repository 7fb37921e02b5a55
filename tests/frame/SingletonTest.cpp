// One object of a type in the process, whichever module asks.
#include "Counters.h"
#include "LoadedModules.h"

#include <atomic>
#include <chrono>
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

// One object asks for another while it is made, and another thread asks after the first one meanwhile.
class Outer : public TvlUtils::Singleton<Outer, 0> {
public:
    Outer()
    {
        isBeingMade = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        Slow::GetInstance();
    }
    static inline std::atomic<bool> isBeingMade = false;
};

TEST(Singleton, ConstructorsMayAskForOthers)
{
    std::thread asking([] {
        while (!Outer::isBeingMade)
            std::this_thread::yield();
        Outer::HasInstance();
    });
    Outer::GetInstance();
    asking.join();
    EXPECT_TRUE(Outer::HasInstance());
}

TEST(Singleton, IsOneAcrossModules)
{
    PlainCounter& here = PlainCounter::GetInstance();
    here.count = 41;
    EXPECT_EQ(PlainCounterOfTheOtherModule(), &here);
    EXPECT_EQ(++PlainCounterOfTheOtherModule()->count, 42);
    EXPECT_EQ(here.count, 42);
}

TEST(Singleton, AnExportedOnesMembersAreThoseOfItsModule)
{
    const std::string scope = "_ZN8TvlUtils9SingletonI15ExportedCounterLi1EE";
    for (const char* member : {"11GetInstanceEv", "11HasInstanceEv", "15ReleaseInstanceEb", "14CreateInstanceEv",
             "14DeleteInstanceEPS1_", "19CreateSingletonDataERNS2_13SingletonDataE", "16GetSingletonDataEb",
             "17RegisterFinalizerEv", "15StaticFinalizerEv", "C2Ev"})
        EXPECT_NE(ExportOf(OTHER_FILE, scope + member), nullptr) << member;
    for (const char* variable : {"_ZZ", "_ZGVZ"}) {
        const std::string names = variable + scope.substr(2) + "16GetSingletonDataEbE10resetEntry";
        EXPECT_NE(ExportOf(OTHER_FILE, names), nullptr) << names;
    }
    EXPECT_NE(ExportOf(OTHER_FILE, "_ZZ" + scope.substr(2) + "16GetSingletonDataEbE8g_pEntry"), nullptr);

    EXPECT_EQ(ExportedCounterOfTheOtherModule(), &ExportedCounter::GetInstance());
    ExportedCounter::ReleaseInstance(false);
    EXPECT_FALSE(ExportedCounter::HasInstance());
}

TEST(Singleton, GoesAwayWithTheModuleThatMadeIt)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the sanitizer puts off what modules do at their end to the end of the process";
#endif
    Ports::Modules& modules = Ports::Modules::Get();
    const std::string file = PASSING_FILE;
    int ended = 0;
    for (int round = 1; round <= 2; ++round) {
        HMODULE const module = modules.Load(BesideTheProgram(file));
        ASSERT_NE(module, nullptr);
        const auto make = reinterpret_cast<PassingCounter* (*)()>(modules.Address(module, "MakePassingCounter"));
        ASSERT_NE(make, nullptr);
        PassingCounter* const counter = make();
        counter->ended = &ended;
        EXPECT_EQ(&PassingCounter::GetInstance(), counter);
        modules.Unload(module);
        EXPECT_EQ(modules.Loaded(std::wstring(file.begin(), file.end())), nullptr);
        EXPECT_EQ(ended, round);
        EXPECT_FALSE(PassingCounter::HasInstance());
    }
    // From here on this program's own.
    PassingCounter::GetInstance();
    EXPECT_TRUE(PassingCounter::HasInstance());
}

}   // namespace
