// Start-up and shutdown hooks.
#include "DelayInit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Registrar = DelayInitRegistrar;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> calls;

bool Note(void* name)
{
    calls.push_back(static_cast<const char*>(name));
    return false;   // stops nothing
}

Registrar::Delegate Named(const char* name) { return {const_cast<char*>(name), Note}; }
constexpr Registrar::EPriority At(int priority) { return static_cast<Registrar::EPriority>(priority); }

std::vector<std::string> Walk(bool shutdown, bool early)
{
    calls.clear();
    if (shutdown)
        Registrar::GetInst().RunShutdownHooks(early);
    else
        Registrar::GetInst().RunStartupHooks(early);
    return calls;
}

TEST(DelayInit, RunsGroupsByPriorityForwardAndBackward)
{
    const InitHook c(Named("c"), Named("c"), At(3));
    const InitHook a1(Named("a1"), Named("a1"), At(1));
    const InitHook a2(Named("a2"), Named("a2"), At(1));
    const InitHook negative(Named("n"), Named("n"), At(-7));
    const InitHook early(Named("e"), Named("e"), Registrar::eEarly);
    EXPECT_THAT(Walk(false, false), ElementsAre("n", "a1", "a2", "c"));
    EXPECT_THAT(Walk(true, false), ElementsAre("c", "a2", "a1", "n"));
    EXPECT_THAT(Walk(false, true), ElementsAre("e"));
    EXPECT_THAT(Walk(false, true), ElementsAre("e"));   // nothing is marked as run
    EXPECT_TRUE(Registrar::GetInst().RunHooks(eHookStageStartup, false, true));
}

TEST(DelayInit, RemovesOneEntryOfEachPriority)
{
    Registrar& registrar = Registrar::GetInst();
    registrar.AddHook(eHookStageStartup, Named("x"), At(1));
    registrar.AddHook(eHookStageStartup, Named("x"), At(1));
    registrar.AddHook(eHookStageStartup, Named("x"), At(2));
    EXPECT_TRUE(registrar.RemoveHook(eHookStageStartup, Named("x")));
    EXPECT_THAT(Walk(false, false), ElementsAre("x"));
    EXPECT_TRUE(registrar.RemoveHook(eHookStageStartup, Named("x")));
    EXPECT_FALSE(registrar.RemoveHook(eHookStageStartup, Named("x")));
    EXPECT_FALSE(registrar.RemoveHook(eHookStageShutdown, Named("x")));
}

TEST(DelayInit, ACopysEndTakesTheSourcesRegistrationAway)
{
    const StartupHook hook(Named("s"), Registrar::eDefault);
    {
        const StartupHook copy = hook;
        EXPECT_THAT(Walk(false, false), ElementsAre("s"));
    }
    EXPECT_THAT(Walk(false, false), IsEmpty());

    ShutdownHook first(Named("1"), Registrar::eDefault);
    const ShutdownHook second(Named("2"), Registrar::eDefault);
    first = second;   // does not touch the registrar
    EXPECT_THAT(Walk(true, false), ElementsAre("2", "1"));
    Registrar::GetInst().RemoveHook(eHookStageShutdown, Named("1"));

    InitHook both(Named("u"), Named("d"), Registrar::eDefault);
    {
        const InitHook moved = std::move(both);   // a copy too
        EXPECT_THAT(Walk(false, false), ElementsAre("u"));
    }
    EXPECT_THAT(Walk(false, false), IsEmpty());
    EXPECT_THAT(Walk(true, false), ElementsAre("2"));
}

// What a hook takes away at its end is the delegate that it has then: assigned ones leave the earlier one behind.
TEST(DelayInit, AssignedHooksTakeAwayWhatTheyWereGiven)
{
    {
        StartupHook first(Named("1"), Registrar::eDefault);
        const StartupHook second(Named("2"), Registrar::eDefault);
        first = second;
        EXPECT_THAT(Walk(false, false), ElementsAre("1", "2"));
        const ShutdownHook shutdown(Named("3"), Registrar::eDefault);
        {
            const ShutdownHook copy = shutdown;
            EXPECT_THAT(Walk(true, false), ElementsAre("3"));
        }
        EXPECT_THAT(Walk(true, false), IsEmpty());
    }
    EXPECT_THAT(Walk(false, false), ElementsAre("1"));
    Registrar::GetInst().RemoveHook(eHookStageStartup, Named("1"));

    InitHook both(Named("u"), Named("d"), Registrar::eDefault);
    {
        InitHook other(Named("v"), Named("e"), Registrar::eDefault);
        const InitHook copy = both;
        other = copy;
        EXPECT_THAT(Walk(false, false), ElementsAre("u", "v"));
        other = InitHook(other);   // the temporary's end takes "u" away
        EXPECT_THAT(Walk(false, false), ElementsAre("v"));
    }
    EXPECT_THAT(Walk(false, false), ElementsAre("v"));
    EXPECT_THAT(Walk(true, false), ElementsAre("e"));
    Registrar::GetInst().RemoveHook(eHookStageStartup, Named("v"));
    Registrar::GetInst().RemoveHook(eHookStageShutdown, Named("e"));
}

class Service final : public DelayInitBase {
public:
    bool DelayedStartup() override
    {
        calls.push_back("up");
        return true;
    }
    bool DelayedShutdown() override
    {
        calls.push_back("down");
        return true;
    }
};

TEST(DelayInit, ObjectsRegisterThemselvesAndTheirCopiesDoNot)
{
    std::optional<Service> service;
    service.emplace();
    {
        Service copy = *service;
        EXPECT_EQ(&(copy = *service), &copy);
        EXPECT_THAT(Walk(false, false), ElementsAre("up"));
    }
    EXPECT_THAT(Walk(true, false), ElementsAre("down"));
    service.reset();
    EXPECT_THAT(Walk(false, false), IsEmpty());
    EXPECT_THAT(Walk(true, false), IsEmpty());
}

}   // namespace
