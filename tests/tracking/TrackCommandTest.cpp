// tvl track as a process.
#include "ChildProcess.h"
#include "UserWorld.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using namespace ProductAnalytics;
using testing::HasSubstr;

class TrackCommand : public testing::Test {
protected:
    ChildResult Run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "track");
        ChildResult result =
            RunProgram({"tvl", arguments, "", {{"TVL_USER_DIR", TvlPlatform::ToUtf8(world.Path("user").Std())}}});
        std::erase(result.output, '\r');
        return result;
    }

    UserWorld world;
    const EventLog log{world.Path("user/Analytics")};
};

TEST_F(TrackCommand, ShowsAndFollowsWhatIsStored)
{
    EXPECT_EQ(Run({"show"}).output, "");
    const StoredEvent first{L"2024-05-31T08:15:30.250Z", L"document.opened",
        {{L"key",
            L"a\x1b[2J\n\x9b"
            L"b"}},
        L"detail"};
    const StoredEvent second{L"2024-05-31T08:15:31.000Z", L"document.saved", {}, L""};
    ASSERT_TRUE(log.Append(first) && log.Append(second));
    EXPECT_EQ(Run({"show"}).output,
        "2024-05-31T08:15:30.250Z document.opened\n    key: a?[2J??b\n    detail\n2024-05-31T08:15:31.000Z "
        "document.saved\n");
    EXPECT_EQ(Run({"show", "--json", "--last", "1"}).output, FormatEvent(second));
    EXPECT_EQ(Run({"show", "--json", "--event", "document.opened"}).output, FormatEvent(first));
    EXPECT_EQ(Run({"follow", "--all", "--json", "--count", "2"}).output, FormatEvent(first) + FormatEvent(second));
    std::string torn = world.Bytes("user/Analytics/events.jsonl") + "{\"v\":1\n";
    world.MakeFile("user/Analytics/events.jsonl", torn);
    EXPECT_THAT(Run({"show"}).errors, HasSubstr("1 line"));
}

TEST_F(TrackCommand, RefusesNumbersThatAreNone)
{
    ASSERT_TRUE(log.Append({L"2024-05-31T08:15:30.250Z", L"document.opened", {}, L""}));
    for (const char* const number : {"0", "-1", "x"}) {
        EXPECT_NE(Run({"show", "--last", number}).exitCode, 0) << number;
        EXPECT_NE(Run({"follow", "--all", "--count", number}).exitCode, 0) << number;
    }
}

TEST_F(TrackCommand, DescribesEverythingThatCanBeSent)
{
    const std::string output = Run({"describe"}).output;
    const std::string lines = Run({"describe", "--json"}).output;
    for (const EventDescription& event : DescribeEvents()) {
        EXPECT_THAT(lines, HasSubstr("\"event\":\"" + TvlPlatform::ToUtf8(event.event) + "\""));
        EXPECT_THAT(output, HasSubstr(TvlPlatform::ToUtf8(event.when)));
        for (const auto& property : event.properties)
            EXPECT_THAT(output, HasSubstr("    " + TvlPlatform::ToUtf8(property.name) + " "));
    }
    EXPECT_THAT(output, HasSubstr("document.opened: "));
}

}   // namespace
