// What linux alone has: categories of the environment's locale, and pipes where files are expected.
#include "ChildProcess.h"
#include "LanguageWorld.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using LanguageEnvironment = LanguageWorld;

TEST_F(LanguageEnvironment, WordsFollowTheirOwnCategory)
{
    struct Row {
        const char* all;
        const char* messages;
        const char* fallback;
        const char* found;
    };
    constexpr Row kRows[] = {
        {"", "fr_FR.UTF-8", "de_DE.UTF-8", "FRA: taken as FRA\n"},
        {"", "", "de_AT.UTF-8", "DEA: taken as DEU\n"},
        {"fr_FR.UTF-8", "de_DE.UTF-8", "", "FRA: taken as FRA\n"},
        {"", "C.UTF-8", "de_DE.UTF-8", "ENU: taken as ENU\n"},
    };
    Install("ENU DEU FRA");
    const auto path = [this](const char* name) { return TvlPlatform::ToUtf8(world.Path(name).Std()); };
    for (const auto& [all, messages, fallback, found] : kRows) {
        world.Remove("child.db");   // where the choice before is stored
        const ChildResult result = RunProgram({"tvl", {"language", "why"}, "",
            {{"TVL_SUITE_DIR", path("suite")}, {"TVL_USER_DIR", path("user")}, {"TVL_REGISTRY", path("child.db")},
                {"LC_ALL", all}, {"LC_NUMERIC", "ja_JP.UTF-8"}, {"LC_MESSAGES", messages}, {"LANG", fallback}}});
        EXPECT_THAT(result.output, testing::HasSubstr(std::string("language of the system  ") + found));
    }
}

TEST_F(LanguageEnvironment, APipeIsNotWaitedFor)
{
    Install("ENU");
    const TvlString folder = world.MakeFolder("suite/Languages/DEU/Data");
    ASSERT_EQ(mkfifo(TvlPlatform::ToUtf8((folder + L"/info.json").Std()).c_str(), 0600), 0);
    EXPECT_EQ(Chosen(), L"ENU");
}

}   // namespace
