// The analytics service's files: what is written, what is kept back, and what a crash leaves.
#include "siblings/TvlConfig/EventLog.h"

#include "ChildProcess.h"
#include "FaultWalk.h"
#include "MemoryFiles.h"
#include "PassingFiles.h"
#include "Privacy.h"
#include "UserWorld.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "windows/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace {
using namespace ProductAnalytics;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

StoredEvent Event(const wchar_t* name) { return {L"2024-05-31T08:15:30.250Z", name, {{L"key", L"value"}}, L""}; }

std::vector<std::wstring> Names(const std::vector<StoredEvent>& events)
{
    std::vector<std::wstring> names;
    for (const StoredEvent& event : events)
        names.push_back(event.name.Std());
    return names;
}

TEST(EventText, IsOneLineThatReadsBack)
{
    StoredEvent event = Event(L"document.opened");
    EXPECT_EQ(FormatEvent(event),
        "{\"v\":1,\"time\":\"2024-05-31T08:15:30.250Z\",\"event\":\"document.opened\","
        "\"properties\":{\"key\":\"value\"}}\n");
    event.detail = L"more";
    event.properties = {{L"a\nb", L"\"\\\r\n\t\x1"}, {L"größe", L"€"}, {L"", std::wstring(L"nul\0l", 5)}};
    const std::string line = FormatEvent(event);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(ParseEvent(line), event);
}

TEST(EventText, RefusesWhatIsNoEvent)
{
    const std::string whole = FormatEvent(Event(L"name"));
    for (std::size_t length = 0; length + 1 < whole.size(); ++length)
        EXPECT_FALSE(ParseEvent(whole.substr(0, length))) << length;
    for (const char* const line :
        {"null", "[]", "7", "{\"v\":1}", "{\"v\":2,\"time\":\"\",\"event\":\"\",\"properties\":{}}",
            "{\"v\":1,\"time\":7,\"event\":\"\",\"properties\":{}}",
            "{\"v\":1,\"time\":\"\",\"event\":\"\",\"properties\":[]}",
            "{\"v\":1,\"time\":\"\",\"event\":\"\",\"properties\":{\"a\":1}}",
            "{\"v\":1,\"time\":\"\",\"event\":\"\xff\",\"properties\":{}}"})
        EXPECT_FALSE(ParseEvent(line)) << line;
}

class EventLogTest : public testing::Test {
protected:
    UserWorld world;
    const TvlString folder = world.Path("user/Analytics");
};

TEST_F(EventLogTest, AReaderGetsEachEventOnce)
{
    EventReader reader(folder);
    EXPECT_THAT(reader.ReadNew(), IsEmpty());
    const EventLog log(folder);
    ASSERT_TRUE(log.Append(Event(L"a")));
    ASSERT_TRUE(log.Append(Event(L"b")));
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"a", L"b"));
    EXPECT_THAT(reader.ReadNew(), IsEmpty());
    ASSERT_TRUE(log.Append(Event(L"c")));
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"c"));
    EXPECT_THAT(Names(EventReader(folder).ReadNew()), ElementsAre(L"a", L"b", L"c"));
    world.MakeFile("user/Analytics/events.jsonl", "");
    ASSERT_TRUE(log.Append(Event(L"d")));
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"d")) << "somebody has emptied the file";
}

TEST_F(EventLogTest, ATornLineIsLeftOutAndEndedByTheNextWriter)
{
    const EventLog log(folder);
    ASSERT_TRUE(log.Append(Event(L"a")));
    const std::string whole = world.Bytes("user/Analytics/events.jsonl");
    for (std::size_t length = 1; length < whole.size(); ++length) {
        world.MakeFile("user/Analytics/events.jsonl", whole + whole.substr(0, length));
        EventReader reader(folder);
        EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"a"));
        ASSERT_TRUE(log.Append(Event(L"b")));
        const bool isWholeButItsEnd = length == whole.size() - 1;
        EXPECT_EQ(reader.ReadNew().size(), isWholeButItsEnd ? 2u : 1u);
        EXPECT_EQ(reader.CountSkipped(), isWholeButItsEnd ? 0 : 1);
    }
}

TEST_F(EventLogTest, FullFilesArePutByAndTheOldestGo)
{
    constexpr int kEvents = 60;
    constexpr struct {
        const char* clock;
        int from, step;   // milliseconds of the first event, and between two
    } kClocks[] = {{"goes", 100, 1}, {"goes back", 900, -1}, {"stands still", 500, 0}, {"goes to and fro", 10, 499}};
    for (const auto& [clock, from, step] : kClocks) {
        SCOPED_TRACE(clock);
        world.Remove("user/Analytics");
        const EventLog log(folder, 200);   // bytes: three events a file
        EventReader follower(folder);
        std::size_t followed = 0;
        for (int i = 0; i < kEvents; ++i) {
            StoredEvent event = Event(std::to_wstring(i).c_str());
            event.time = TvlString().Format(L"2024-05-31T08:15:30.%03dZ", (from + i * step) % 1000);
            ASSERT_TRUE(log.Append(event));
            if (i % 7 == 0)
                followed += follower.ReadNew().size();
        }
        EXPECT_EQ(log.OlderFiles().size(), kEventFilesKept);
        EXPECT_EQ(followed + follower.ReadNew().size(), static_cast<std::size_t>(kEvents));
        EXPECT_EQ(follower.CountSkipped(), 0);
        const std::vector<std::wstring> names = Names(EventReader(folder).ReadNew());
        ASSERT_GE(names.size(), kEventFilesKept * 3);
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_EQ(names[i], std::to_wstring(kEvents - names.size() + i)) << "in their order, without a gap";
    }
}

TEST_F(EventLogTest, ANewNameIsBehindAllThatAreThere)
{
    struct Row {
        const char* newest;
        const wchar_t* begin;   // of the new one
    };
    constexpr Row kRows[] = {{"events-20240531T081530250Z-00000000.jsonl", L"events-20240532-"},
        {"events-00000009-20991231T000000000Z-00000000.jsonl", L"events-00000010-"},
        {"events-99999999-0.jsonl", L"events-99999999-2024"}, {"events-999999999999-0.jsonl", L"events-99999999-2024"},
        {"events-.jsonl", L"events-00000001-"}};
    for (const Row& row : kRows) {
        world.Remove("user/Analytics");
        world.MakeFile(std::string("user/Analytics/") + row.newest, "");
        const EventLog log(folder, 1);
        ASSERT_TRUE(log.Append(Event(L"a")));
        ASSERT_TRUE(log.Append(Event(L"b")));
        const auto files = log.OlderFiles();
        EXPECT_TRUE(std::any_of(files.begin(), files.end(), [&row](const TvlString& file) {
            return TvlUtils::SystemIO::Path::GetFileName(file).Std().starts_with(row.begin);
        })) << row.begin;
    }
}

TEST_F(EventLogTest, LinesMayBeAsLongAsTheLongestEvent)
{
    const EventLog log(folder, 1LL << 30);
    StoredEvent event = Event(L"long");
    event.detail = L"x";
    event.detail = TvlString(L'x', static_cast<int>(kLongestEvent + 1 - FormatEvent(event).size()));
    world.MakeFile("user/Analytics/events.jsonl", std::string(9 << 20, 'x'));   // no event, and no line feed
    ASSERT_TRUE(log.Append(event));
    ASSERT_TRUE(log.Append(Event(L"short")));
    EXPECT_TRUE(ParseEvent(FormatEvent(event)) == event);
    event.detail += L'x';
    EXPECT_TRUE(log.Append(event).Is(std::errc::message_size)) << "no reader would take it";
    EXPECT_FALSE(ParseEvent(FormatEvent(event)));
    EventReader reader(folder);
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"long", L"short"));
    EXPECT_EQ(reader.CountSkipped(), 1);

    // One that is too long is waited for as any other, and then left out.
    std::string line = FormatEvent(event);
    line.pop_back();
    world.MakeFile("user/Analytics/events.jsonl", world.Bytes("user/Analytics/events.jsonl") + line);
    EXPECT_THAT(reader.ReadNew(), IsEmpty());
    EXPECT_EQ(reader.CountSkipped(), 1);
    ASSERT_TRUE(log.Append(Event(L"next")));
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"next"));
    EXPECT_EQ(reader.CountSkipped(), 2);
}

/// Lets another writer put the file by just before its size is asked for.
class PutByMeanwhile final : public PassingFiles {
public:
    explicit PutByMeanwhile(const TvlString& folder) : m_folder(TvlUtils::SystemIO::ToFilePath(folder)) { }

    FileResult Stat(const Path& path, FileStatus& status) override
    {
        if (path == m_folder / "events.jsonl" && !std::exchange(m_isDone, true)) {
            std::filesystem::rename(path, m_folder / "events-20240531T081530250Z-00000000.jsonl");
            std::ofstream(path, std::ios::binary) << FormatEvent(Event(L"b"));
        }
        return PassingFiles::Stat(path, status);
    }

private:
    const Path m_folder;
    bool m_isDone = false;
};

TEST_F(EventLogTest, AReaderGetsNothingTwiceOfAFileThatIsPutByMeanwhile)
{
    const EventLog log(folder);
    ASSERT_TRUE(log.Append(Event(L"a")));
    ASSERT_TRUE(log.Append(Event(L"a")));
    EventReader reader(folder);
    EXPECT_EQ(reader.ReadNew().size(), 2u);
    const PutByMeanwhile other(folder);
    EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"b"));
    EXPECT_THAT(reader.ReadNew(), IsEmpty());
}

TEST_F(EventLogTest, FaultsLeaveWholeLines)
{
    const std::filesystem::path path = TvlUtils::SystemIO::ToFilePath(EventLog(folder).File());
    const std::string before = FormatEvent(Event(L"before"));
    for (const long long limit : {1LL << 20, 10LL})   // the file is written on, or put by first
        WalkFileFaults(
            limit > 10 ? 6 : 8, [&](MemoryFiles& files) { files.Put(path, before); },
            [&] { static_cast<void>(EventLog(folder, limit).Append(Event(L"new"))); },
            [&](MemoryFiles&) {
                EventReader reader(folder);
                auto names = Names(reader.ReadNew());
                ASSERT_FALSE(names.empty());
                EXPECT_EQ(names.front(), L"before");
                EXPECT_LE(names.size(), 2u);
                ASSERT_TRUE(EventLog(folder).Append(Event(L"next")));
                names = Names(reader.ReadNew());
                ASSERT_FALSE(names.empty());
                EXPECT_EQ(names.back(), L"next");
            });
}

TEST_F(EventLogTest, WhatIsAcknowledgedIsThereBehindATornLine)
{
    const std::filesystem::path path = TvlUtils::SystemIO::ToFilePath(EventLog(folder).File());
    const std::string before = FormatEvent(Event(L"before"));
    for (const auto fault : {MemoryFiles::Fault::Fail, MemoryFiles::Fault::FailOnward, MemoryFiles::Fault::ShortWrite})
        WalkFaultPoints(6, [&](std::size_t point) {
            bool isAcknowledged = false;
            return RunOnFaultyFiles([&](MemoryFiles& files) { files.Put(path, before + before.substr(0, 20)); },
                [&](MemoryFiles& files) { files.Inject(point, fault); },
                [&] { isAcknowledged = static_cast<bool>(EventLog(folder).Append(Event(L"new"))); },
                [&](MemoryFiles&) {
                    EventReader reader(folder);
                    const auto names = Names(reader.ReadNew());
                    ASSERT_FALSE(names.empty());
                    EXPECT_EQ(names.front(), L"before");
                    EXPECT_TRUE(names.back() == L"new" || !isAcknowledged);
                    EXPECT_LE(reader.CountSkipped(), 1) << "an empty line is none";
                });
        });
}

TEST_F(EventLogTest, AReaderGetsEachEventOnceOfAFolderThatCantBeReadForAWhile)
{
    const std::filesystem::path place = TvlUtils::SystemIO::ToFilePath(folder);
    const std::string before = FormatEvent(Event(L"before"));
    WalkFaultPoints(5, [&](std::size_t point) {
        MemoryFiles files;
        files.Put(place / "events-00000001.jsonl", before);
        files.Put(place / "events.jsonl", before);
        EventReader reader(folder);
        EXPECT_EQ(reader.ReadNew().size(), 2u);
        files.Inject(point, MemoryFiles::Fault::FailOnward);
        EXPECT_THAT(reader.ReadNew(), IsEmpty());
        const bool isReached = files.FaultReached();
        files.Restart();
        EXPECT_THAT(reader.ReadNew(), IsEmpty());
        EXPECT_TRUE(EventLog(folder).Append(Event(L"new")));
        EXPECT_THAT(Names(reader.ReadNew()), ElementsAre(L"new"));
        return isReached;
    });
}

/// Events of the writers, which number them.
std::vector<int> Numbers(const std::vector<StoredEvent>& events, const wchar_t* name)
{
    std::vector<int> numbers;
    for (const StoredEvent& event : events)
        if (event.name == name)
            numbers.push_back(std::stoi(event.properties.at(L"number").Std()));
    return numbers;
}

ChildProcess Writer(const UserWorld& world, const char* name, std::size_t count)
{
    return {"event_writer", {name, std::to_string(count)}, "",
        {{"TVL_USER_DIR", TvlPlatform::ToUtf8(world.Path("user").Std())}, {"DO_NOT_TRACK", "0"},
            {"TVL_REGISTRY", TvlPlatform::ToUtf8(world.Path("registry.db").Std())}}};
}

TEST_F(EventLogTest, AKilledWriterLeavesWholeLines)
{
    constexpr std::size_t kEvents = 2;
    WalkFaultPoints(8, [&](std::size_t point) {
        world.Remove("user");
        ChildProcess writer = Writer(world, "first", kEvents);
        writer.environment["TVL_FILE_STOP_AT"] = std::to_string(point);
        const int exitCode = RunProgram(writer).exitCode;
        EventReader reader(folder);
        const auto left = Numbers(reader.ReadNew(), L"first");
        for (std::size_t i = 0; i < left.size(); ++i)
            EXPECT_EQ(left[i], static_cast<int>(i));
        EXPECT_TRUE(EventLog(folder).Append(Event(L"next")));
        const auto more = Names(reader.ReadNew());
        EXPECT_TRUE(!more.empty() && more.back() == L"next");
        EXPECT_EQ(left.size(), exitCode == 0 ? kEvents : left.size());
        return exitCode == TvlUtils::SystemIO::kFileStopExitCode;
    });
}

TEST_F(EventLogTest, ProcessesAndThreadsShareAFile)
{
    constexpr std::size_t kEvents = 200;
    constexpr const char* kNames[] = {"a", "b", "c"};
    std::vector<std::thread> threads;
    for (const char* const name : kNames)
        threads.emplace_back([&, name] { EXPECT_EQ(RunProgram(Writer(world, name, kEvents)).exitCode, 0); });
    for (auto& thread : threads)
        thread.join();
    EventReader reader(folder);
    const auto events = reader.ReadNew();
    EXPECT_EQ(reader.CountSkipped(), 0);
    for (const wchar_t* const name : {L"a", L"b", L"c"}) {
        const auto numbers = Numbers(events, name);
        EXPECT_EQ(numbers.size(), kEvents);
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    }
}

class Service : public EventLogTest {
protected:
    Service() { world.environment.variables[L"DO_NOT_TRACK"] = L""; }
    std::vector<StoredEvent> Stored() const { return EventReader(folder).ReadNew(); }
};

TEST_F(Service, KeepsEventsWithCommonProperties)
{
    IProductAnalyticsCore& core = GetInstance();
    EXPECT_TRUE(core.GetEventFile() == world.Path("user/Analytics/events.jsonl"));
    core.SetCommonProperty(L"app", L"Tovel");
    core.SetCommonProperty(L"own", L"common");
    core.SendEvent(L"name", {{L"own", L"value"}}, L"detail");
    core.SetCommonProperty(L"app", L"");
    core.SetCommonProperty(L"own", L"");
    core.SendEvent(L"plain", {}, L"");
    const auto events = Stored();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_THAT(events[0].properties,
        ElementsAre(Pair(TvlString(L"app"), TvlString(L"Tovel")), Pair(TvlString(L"own"), TvlString(L"value"))));
    EXPECT_TRUE(events[0].detail == L"detail" && events[0].time.GetLength() == 24);
    EXPECT_THAT(events[1].properties, IsEmpty());
}

TEST_F(Service, HonoursConsents)
{
    using namespace TvlUtl::Privacy;
    const PropertyMap properties{{L"search.term", L"secret"}, {L"searched", L"true"}};
    SetShareFeatureUsage(0);
    EXPECT_FALSE(GetInstance().IsSharing());
    GetInstance().SendEvent(L"refused", properties, L"");
    EXPECT_FALSE(world.Has("user/Analytics"));
    SetShareFeatureUsage(1);
    SetShareSearchTerms(0);
    GetInstance().SendEvent(L"without terms", properties, L"");
    SetShareSearchTerms(1);
    GetInstance().SendEvent(L"with terms", properties, L"");
    const auto events = Stored();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].properties.size(), 1u);
    EXPECT_EQ(events[1].properties.size(), 2u);
}

TEST_F(Service, HonoursDoNotTrack)
{
    struct Row {
        const wchar_t* value;
        bool isSharing;
    };
    constexpr Row kRows[] = {{L"1", false}, {L"true", false}, {L"00", false}, {L"0", true}, {L"", true}};
    for (const auto& [value, isSharing] : kRows) {
        world.environment.variables[L"DO_NOT_TRACK"] = value;
        EXPECT_EQ(GetInstance().IsSharing(), isSharing) << value;
        GetInstance().SendEvent(value, {}, L"");
    }
    EXPECT_THAT(Names(Stored()), ElementsAre(L"0", L""));
}

TEST_F(Service, DropsEventsOfAUserWithoutAPlaceForFiles)
{
    struct NoFolders final : Ports::UserFolders {
        NoFolders() { SetForTests(this); }
        ~NoFolders() override { SetForTests(nullptr); }
        std::wstring ApplicationData() const override { return {}; }
        std::wstring Documents() const override { return {}; }
    } folders;
    world.environment.variables[L"TVL_USER_DIR"] = L"";
    GetInstance().SendEvent(L"lost", {}, L"");
    EXPECT_TRUE(GetInstance().GetEventFile().IsEmpty()) << "none of the folder that the program happens to stand in";
}

TEST_F(Service, LosesEventsInSilenceThatCantBeStored)
{
    world.MakeFile("user/Analytics", "a file in the folder's place");
    EXPECT_NO_THROW(GetInstance().SendEvent(L"lost", {}, L""));
    world.Remove("user/Analytics");
    GetInstance().SendEvent(L"kept", {}, L"");
    EXPECT_THAT(Names(Stored()), ElementsAre(L"kept"));
}

}   // namespace
