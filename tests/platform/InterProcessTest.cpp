#include "siblings/TvlUtils/InterProcess.h"

#include "UserWorld.h"

#include <gtest/gtest.h>
#include <thread>

using TvlUtils::InterProcessEvent;
using TvlUtils::InterProcessLock;
using TvlUtils::InterProcessMutex;
using TvlUtils::MutexState;

namespace {
constexpr DWORD kLong = 60000;   // milliseconds that no wait of these tests reaches
constexpr DWORD kShort = 20;

/// Names of the test's own, also where they belong to the whole session.
class InterProcess : public testing::Test {
protected:
    TvlString Name(const wchar_t* name) const { return name + TvlUtils::SystemIO::Path::GetFileName(m_world.Path("")); }
    int RunHolder(const std::string& work, const TvlString& name) const
    {
        const std::string user = TvlPlatform::ToUtf8(m_world.Path("user").Std());
        return RunProgram({"object_holder", {work, TvlPlatform::ToUtf8(name.Std())}, "", {{"TVL_USER_DIR", user}}})
            .exitCode;
    }
    UserWorld m_world;
};

template <class Work>
auto InAnotherThread(Work work)
{
    decltype(work()) result{};
    std::thread([&] { result = work(); }).join();
    return result;
}
}   // namespace

TEST_F(InterProcess, MutexBelongsToItsThreadWhichMayTakeItAgain)
{
    InterProcessMutex mutex(Name(L"recursive"));
    InterProcessMutex second(Name(L"recursive"));
    const auto try_ = [&] { return second.lock(kShort); };
    EXPECT_EQ(mutex.lock(), MutexState::Taken);
    EXPECT_EQ(second.lock(), MutexState::Taken);
    EXPECT_EQ(InAnotherThread(try_), MutexState::TimedOut);
    EXPECT_FALSE(InAnotherThread([&] { return mutex.unlock(); }));
    EXPECT_TRUE(mutex.unlock());
    EXPECT_EQ(InAnotherThread(try_), MutexState::TimedOut) << "it was taken twice";
    EXPECT_TRUE(mutex.unlock());
    EXPECT_FALSE(mutex.unlock());
    // The thread takes it and ends: it is free, and whoever comes next hears of it once.
    EXPECT_EQ(InAnotherThread(try_), MutexState::Taken);
    EXPECT_EQ(mutex.lock(kLong), MutexState::TakenFromTheDead);
    EXPECT_TRUE(mutex.unlock());
    EXPECT_EQ(mutex.lock(), MutexState::Taken);
    EXPECT_TRUE(mutex.unlock());
}

TEST_F(InterProcess, MutexIsFreeWhenItsProcessEnds)
{
    const TvlString name = Name(L"ending");
    InterProcessMutex mutex(name);
    const auto held = InterProcessEvent::createEvent(name + L"-held", 0, 0);
    const auto go = InterProcessEvent::createEvent(name + L"-go", 0, 0);
    ASSERT_TRUE(held && go);
    std::thread child([&] { EXPECT_EQ(RunHolder("hold", name), 0); });
    EXPECT_TRUE(held->wait(kLong));
    EXPECT_EQ(mutex.lock(kShort), MutexState::TimedOut);
    go->set();
    EXPECT_EQ(mutex.lock(kLong), MutexState::TakenFromTheDead);
    EXPECT_TRUE(mutex.unlock());
    child.join();
    EXPECT_EQ(mutex.lock(), MutexState::Taken);
    EXPECT_TRUE(mutex.unlock());
}

TEST_F(InterProcess, MutexLetsOneProcessInAtATime)
{
    const TvlString file = m_world.MakeFile("number", "0");
    std::vector<std::thread> children;
    for (int i = 0; i < 4; ++i)
        children.emplace_back([&] { EXPECT_EQ(RunHolder("add", file), 0); });
    for (std::thread& child : children)
        child.join();
    EXPECT_EQ(m_world.Bytes("number"), "400");
}

TEST_F(InterProcess, EventIsSetForAllOrForOne)
{
    for (const int autoReset : {0, 1}) {
        const TvlString name = Name(autoReset ? L"one" : L"all");
        const auto event = InterProcessEvent::createEvent(name, autoReset, 1);
        const auto again = InterProcessEvent::createEvent(name, 1 - autoReset, 0);
        ASSERT_TRUE(event && again);
        EXPECT_TRUE(again->isSignalled()) << "an event that is there keeps its state";
        EXPECT_EQ(event->isSignalled(), autoReset == 0) << "and its kind";
        event->reset();
        EXPECT_FALSE(again->wait(kShort));
        EXPECT_EQ(RunHolder("set", name), 0);
        EXPECT_TRUE(again->wait(kLong));
    }
}

TEST_F(InterProcess, EventEndsWithItsLastHolder)
{
    const TvlString name = Name(L"ending");
    EXPECT_EQ(InterProcessEvent::openEvent(name), nullptr);
    auto first = InterProcessEvent::createEvent(name, 0, 1);
    auto second = InterProcessEvent::openEvent(name);
    ASSERT_TRUE(first && second);
    first.reset();
    EXPECT_TRUE(InterProcessEvent::openEvent(name)->isSignalled());
    second.reset();
    EXPECT_EQ(InterProcessEvent::openEvent(name), nullptr);
    EXPECT_EQ(RunHolder("set", name), 1);
    EXPECT_FALSE(InterProcessEvent::createEvent(name, 0, 0)->isSignalled()) << "a new one";
}

TEST_F(InterProcess, RefusesNamesThatLeadElsewhere)
{
    for (const wchar_t* const name : {L"", L"Global\\name", L"../name"}) {
        EXPECT_FALSE(InterProcessMutex(name)) << name;
        EXPECT_EQ(InterProcessMutex(name).lock(kShort), MutexState::Failed) << name;
        EXPECT_EQ(InterProcessEvent::createEvent(name, 0, 0), nullptr) << name;
    }
    EXPECT_TRUE(InterProcessMutex(Name(L"a name: 50% \x00E4")));
}
