// The program's commands of this subsystem: what they print, and how they refuse.
#include "ChildProcess.h"
#include "UserWorld.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using testing::AllOf;
using testing::HasSubstr;
using TvlPlatform::ToUtf8;

class Commands : public testing::Test {
protected:
    ChildResult Run(std::vector<std::string> arguments) const
    {
        return RunProgram({"tvl", std::move(arguments), {},
            {{"TVL_USER_DIR", ToUtf8(world.Path("user"))}, {"TVL_REGISTRY", ToUtf8(world.Path("registry.db"))}}});
    }

    UserWorld world;
};

TEST_F(Commands, MoveALocation)
{
    // The user's own registry on windows: the location is given back in the end.
    world.MakeFile("one/a.fill");
    world.MakeFile("one/sub/b.fill");
    EXPECT_EQ(Run({"locations", "set", "fills", ToUtf8(world.Path("one"))}).exitCode, 0);
    const ChildResult moved = Run({"locations", "migrate", "Fills", ToUtf8(world.Path("two")), "--create", "--json"});
    EXPECT_EQ(moved.exitCode, 0);
    EXPECT_THAT(moved.output, HasSubstr("\"copied\":2,\"failed\":[]"));
    EXPECT_TRUE(world.Has("two/sub/b.fill"));
    EXPECT_THAT(Run({"locations", "--why"}).output, HasSubstr(ToUtf8(world.Folder("two")) + "  (chosen by the user)"));
    world.Remove("two");
    EXPECT_THAT(Run({"locations", "--why"}).output, HasSubstr("the default, as the chosen folder is missing"));
    EXPECT_EQ(Run({"locations", "set", "fills", ToUtf8(world.Path("user/Documents/Tovel/Suite/Fills"))}).exitCode, 0);
}

TEST_F(Commands, ShowTheCloudsForms)
{
    EXPECT_THAT(Run({"cloud", "escape", "a:b", "100%"}).output, AllOf(HasSubstr("a%2Ab"), HasSubstr("100%25")));
    EXPECT_THAT(Run({"cloud", "unescape", "a%2Ab"}).output, HasSubstr("a:b"));
    EXPECT_THAT(Run({"plugins", "--json"}).output, HasSubstr("Plugins"));
}

struct BadInput {
    std::vector<std::string> arguments;
    const char* message;
};

const BadInput kBadInputs[] = {
    {{"locations", "set", "nowhere", "."}, "\"nowhere\" is no location"},
    {{"locations", "migrate", "Fills", "no/such/folder"}, "there is no folder \"no/such/folder\""},
    {{"cloud", "path", "..", "a"}, "name no cloud file"},
    {{"cloud", "local", "a/b", "c"}, "\"a/b\" is no asset path"},
};

TEST_F(Commands, RefuseBadInputWithAMessage)
{
    for (const auto& [arguments, message] : kBadInputs) {
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << message;
        EXPECT_THAT(result.errors, HasSubstr(message));
        EXPECT_EQ(result.output, "");
    }
}

}   // namespace
