// Records of the formats that files go through: which labels and events they send.
#include "TrackFileFormatUse.h"

#include "FakeClock.h"
#include "RecordingApplication.h"
#include "UserWorld.h"
#include "siblings/TvlConfig/DocumentFolders.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlPref/PrefManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <typeinfo>

namespace {
using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;
using Marker = TrackFileFormatUseDurationMarker;
using Use = TrackFileFormatUse;

constexpr GUID kLayoutKey = {0x39ce58e9, 0x11dd, 0x1843, {0xa8, 0x57, 0xec, 0xb9, 0x62, 0xd9, 0x36, 0xdf}};

class FileFormatUse : public testing::Test {
protected:
    UserWorld world;
    RecordingApplication application;
};

/// Lets a record of a context go that `fill` has filled in.
template <class Fill>
void Send(const wchar_t* path, const wchar_t* context, Fill fill, bool accept = true)
{
    Use use = Use::StartLocal(path, context);
    fill(*use.Lock().operator->());
    if (accept)
        use.Accept();
}
constexpr auto kAsItIs = [](TrackFileFormatUseData&) {};

FakeDocument Document()
{
    using enum DocumentStatistic;
    FakeDocument document;
    document.statistics = {{ObjectCount, 1}, {GroupCount, 2}, {ConnectorCount, 3}, {BitmapCount, 4},
        {BitmapColorModels, std::vector<TvlString>{L"RGB", L"CMYK"}}, {BitmapEffectCount, 5}, {ArtisticTextCount, 6},
        {ParagraphTextCount, 7}, {CharacterCount, 8}, {Fonts, std::vector<TvlString>{L"Serif"}},
        {VariableOutlineCount, 9}, {VariableOutlineNodeCount, 10}, {PainterlyBrushStrokeCount, 11},
        {PainterlyBrushes, std::vector<TvlString>{}}, {PageCount, 12}, {LayerCount, 13},
        {ColorMode, TvlString(L"CMYK")}, {GeneratedImageCount, 14},
        {GenerationFeatures, std::vector<TvlString>{L"Remix"}}, {FilePath, TvlString(L"CLOUD:/a/Doc.TVR")},
        {FileSize, 2048.5}};
    return document;
}

TEST_F(FileFormatUse, LabelsTellWhatIsKnown)
{
    struct Row {
        const wchar_t* path;
        const wchar_t* context;
        const wchar_t* filter;
        const wchar_t* version;
        bool accept;
        const wchar_t* label;
    };
    constexpr Row kRows[] = {
        {L"a.tvr", L"Open", L"", L"", false, L"Open_tvr"},
        {L"a.tvr", L"Open", L"TVR", L"2700", true, L"Open_tvr[FLT TVR][VER 2700][ACCEPTED]"},
        {L"a.Template", L"Odd one", L"", L"7", true, L"Odd one_Template[VER 7][ACCEPTED]"},
        {L"b.c.svg", L"Import", L"100%s", L"", false, L"Import_svg[FLT 100%s]"},
    };
    for (const auto& [path, context, filter, version, accept, label] : kRows) {
        Send(
            path, context, [&, f = filter, v = version](auto& data) { data.SetFilter(f).SetVersion(v); }, accept);
        EXPECT_THAT(std::exchange(application.labels, {}), ElementsAre(label));
    }
    Send(L"no extension", L"Open", kAsItIs, false);
    EXPECT_THAT(application.labels, IsEmpty());
}

TEST_F(FileFormatUse, EventsNeedAcceptanceAndAKnownContext)
{
    Send(L"a.tvr", L"Open", kAsItIs, false);
    Send(L"a.tvr", L"Elsewhere", kAsItIs);
    EXPECT_THAT(application.events, IsEmpty());
    EXPECT_EQ(application.labels.size(), 2u);
    // Without a type there is no label, but an event all the same.
    Send(L"no extension", L"Open", kAsItIs);
    EXPECT_EQ(application.labels.size(), 2u);
    EXPECT_THAT(application.TakeEvent().properties, Contains(Pair(L"document.file-type", L"")));
}

TEST_F(FileFormatUse, EveryContextFillsItsProperties)
{
    using Data = TrackFileFormatUseData;
    struct Row {
        const wchar_t* context;
        std::wstring path;
        void (*fill)(Data&);
        const wchar_t* event;
        RecordingApplication::Properties has;
        std::vector<std::wstring> lacks;
    };
    const std::wstring suite = GetUserDocumentsTovelSuiteDir().Std();
    const Row rows[] = {
        {L"Open", L"a.TVR", [](Data& data) { data.SetVersion(L"2700"); }, L"document.opened",
            {{L"document.file-type", L"tvr"}, {L"document.version", L"27.0"}, {L"document.download-duration", L"0"},
                {L"objects.count", L"0"}},
            {L"document.pages", L"gen-ai.images"}},
        {L"Open", L"a.tvr", [](Data& data) { data.SetVersion(L"7"); }, L"document.opened",
            {{L"document.version", L"7"}}, {}},
        {L"Open", L"a.Document", [](Data& data) { data.SetVersion(L"2700"); }, L"document.opened",
            {{L"document.file-type", L"docum"}, {L"document.version", L"N/A"}}, {}},
        {L"Import", L"a.svg", [](Data&) {}, L"document.imported",
            {{L"document.file-type", L"svg"}, {L"content.imported-location", L"default"},
                {L"document.content-provider", L"user-content"}},
            {L"objects.count"}},
        {L"ImportAssetList", suite + L"Clips/Tree.svg", [](Data&) {}, L"document.imported",
            {{L"content.category", L"tovel"}, {L"content.file-name", L"Tree.svg"}, {L"content.folder", L"Clips"},
                {L"content.imported-location", L"assets docker"}},
            {L"document.content-provider"}},
        {L"ImportAssetList", L"elsewhere/Tree.svg", [](Data&) {}, L"document.imported",
            {{L"content.category", L"custom"}, {L"content.imported-location", L"assets docker"}},
            {L"content.file-name", L"content.folder"}},
        {L"ImportAssetPhotoPanel", L"a.jpg", [](Data&) {}, L"document.imported",
            {{L"content.imported-location", L"assets panel"}, {L"document.content-provider", L"unsplash"}}, {}},
        {L"ImportAssetVectorPanel", L"a.svg", [](Data&) {}, L"document.imported",
            {{L"content.imported-location", L"assets panel"}, {L"document.content-provider", L"vector"}}, {}},
        {L"Export", L"a.PNG",
            [](Data& data) {
                data.SetLayout(L"Booklet")
                    .SetExportedLocation(L"disk")
                    .SetExportedRange(L"Group")
                    .SetExportedRange(L"Object")
                    .SetExportFileResolution(300);
            },
            L"document.exported",
            {{L"document.page-layout", L"Booklet"}, {L"document.exported-location", L"disk"},
                {L"exported.export-range", L"Group"}, {L"document.file-measure", L"300"},
                {L"document.file-extension", L"png"}, {L"document.pages", L"0"}, {L"gen-ai.images", L"0"}},
            {L"document.version"}},
        {L"ExportForOffice", L"a.wmf", [](Data&) {}, L"document.exported", {{L"document.file-measure", L"0"}},
            {L"document.page-layout", L"document.exported-location", L"exported.export-range"}},
        {L"SaveAs", L"a.tvrt", [](Data& data) { data.SetSaveAs(L"true"); }, L"document.saved",
            {{L"document.save-type", L"template"}, {L"document.version", L"N/A"}, {L"document.save-as", L"true"},
                {L"document.file-place", L"none"}, {L"gen-ai.features", L""}},
            {L"document.page-layout"}},
        {L"SaveAs", L"a.TVRT", [](Data&) {}, L"document.saved",
            {{L"document.save-type", L"local"}, {L"document.save-as", L"false"}}, {}},
        {L"SaveAs", L"a.tvt", [](Data& data) { data.SetCloud(true).SetType(L"TVR").SetVersion(L"27"); },
            L"document.saved", {{L"document.save-type", L"cloud"}, {L"document.version", L"27"}}, {}},
        {L"AutoSave-Initiated", L"a.tvr", [](Data&) {}, L"document.autosave-initiated",
            {{L"document.page-layout", L""}, {L"document.save-as", L"false"}, {L"bitmaps.count", L"0"}},
            {L"variable-outline.count", L"event.duration", L"document.version"}},
        {L"AutoSave-Completed", L"a.tvr", [](Data& data) { data.SetAutoSaveFilePath(L"CLOUD:/b.bak"); },
            L"document.autosave-completed",
            {{L"event.duration", L"0"}, {L"document.file-extension", L"bak"}, {L"document.file-place", L"cloud"},
                {L"document.page-layout", L""}},
            {L"warning.string"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.context << " " << row.path);
        Send(row.path.c_str(), row.context, row.fill);
        const auto event = application.TakeEvent();
        EXPECT_EQ(event.name, row.event);
        EXPECT_EQ(event.detail, L"");
        for (const auto& property : row.has)
            EXPECT_THAT(event.properties, Contains(property));
        for (const auto& name : row.lacks)
            EXPECT_THAT(event.properties, Not(Contains(Key(name))));
    }
}

TEST_F(FileFormatUse, AFailedBackupSendsItsMessageAlone)
{
    Send(L"a.tvr", L"AutoSave-Completed", [](auto& data) { data.SetErrorMessage(L"disk full"); });
    const auto event = application.TakeEvent();
    EXPECT_EQ(event.name, L"error.message");
    EXPECT_THAT(event.properties,
        UnorderedElementsAre(Pair(L"feature.trigger", L"AutoSave"), Pair(L"warning.string", L"disk full")));
    Send(L"a.tvr", L"AutoSave-Completed",
        [](auto& data) { data.SetErrorMessage(L"disk full").SetErrorMessage(std::nullopt); });
    EXPECT_EQ(application.TakeEvent().name, L"document.autosave-completed");
    Send(L"a.tvr", L"Export", [](auto& data) { data.SetErrorMessage(L"disk full"); });
    EXPECT_EQ(application.TakeEvent().name, L"document.exported");
}

TEST_F(FileFormatUse, ARangeOnceToldToBeAGroupIsNotNarrowed)
{
    struct Row {
        const wchar_t* before;
        const wchar_t* set;
        const wchar_t* after;
    };
    constexpr Row kRows[] = {{L"Group", L"Object", L"Group"}, {L"Group", L"Page", L"Page"},
        {L"Page", L"Object", L"Object"}, {L"", L"Object", L"Object"}, {L"group", L"Object", L"Object"}};
    for (const auto& [before, set, after] : kRows) {
        Use use = Use::StartLocal(L"a.png", L"Export");
        use.SetExportedRange(before);
        use.SetExportedRange(set);
        EXPECT_TRUE(use.Lock()->GetExportedRange() == after) << before << " " << set;
    }
}

TEST_F(FileFormatUse, TheFirstStartOfAPathWins)
{
    Use first = Use::StartGlobal(L"a.tvr", L"Open");
    Use second = Use::StartGlobal(L"a.tvr", L"Export");
    EXPECT_TRUE(second.Lock()->GetContext() == L"Open" && second.Lock()->IsGlobal());
    second.Accept();
    EXPECT_TRUE(first.IsAccepted());
    first = Use::NoTrack();
    EXPECT_THAT(application.labels, IsEmpty());
    EXPECT_TRUE(Use::Find(L"a.tvr"));
    second = Use::NoTrack();
    EXPECT_THAT(application.labels, ElementsAre(L"Open_tvr[ACCEPTED]"));
    EXPECT_FALSE(Use::Find(L"a.tvr"));
    EXPECT_TRUE(Use::StartGlobal(L"a.tvr", L"Export").Lock()->GetContext() == L"Export");
}

TEST_F(FileFormatUse, ADisabledPathIsSilent)
{
    {
        const Use silence = Use::Disable(L"a.tvr");
        Use use = Use::StartGlobal(L"a.tvr", L"Open");
        EXPECT_TRUE(use.Lock()->GetContext() == L"__DISABLED");
        use.Accept();
        use.Commit();
        EXPECT_FALSE(use);
    }
    EXPECT_THAT(application.labels, IsEmpty());
    EXPECT_THAT(application.events, IsEmpty());
    // A record that lives already speaks on.
    Use use = Use::StartGlobal(L"a.tvr", L"Open");
    Use::Disable(L"a.tvr");
    use.Commit();
    EXPECT_EQ(application.labels.size(), 1u);
}

TEST_F(FileFormatUse, ARecordIsSentOnceAtMost)
{
    Use use = Use::StartGlobal(L"a.tvr", L"Open");
    Use same = use;
    use.Commit();
    EXPECT_FALSE(use);
    EXPECT_TRUE(Use::Find(L"a.tvr")) << "a finished record is found as long as it lives";
    same.Commit();
    EXPECT_EQ(application.labels.size(), 1u);

    use = Use::StartGlobal(L"b.tvr", L"Open");
    same = use;
    use.Discard();
    EXPECT_FALSE(use);
    same.Accept();
    same.Commit();
    EXPECT_EQ(application.labels.size(), 1u);
}

TEST_F(FileFormatUse, EmptyHandlesDoNothing)
{
    Use uses[] = {Use(), Use::NoTrack(), Use::Find(L""), Use::Find(L"unknown"), Use::StartGlobal(L"", L"Open"),
        Use::StartGlobal(L"a.tvr", L""), Use::StartLocal(L"", L"Open"), Use::StartLocal(L"a.tvr", L""),
        Use::Disable(L"")};
    for (Use& use : uses) {
        EXPECT_FALSE(use);
        use.Accept();
        EXPECT_FALSE(use.IsAccepted() || use.Lock());
        use.SetExportedRange(L"Group");
        use.FillExportEvent(L"PNG", nullptr, true, L"disk", 300);
        use.StartDurationTracker();
        use.SuspendDurationTracker();
        use.ResumeDurationTracker();
        use.StopDurationTracker();
        use.MarkDuration(Marker::Download);
        EXPECT_EQ(use.GetMarkedDuration(Marker::Download), TvlUtils::TimeDelta());
        use.Commit();
        use.Discard();
    }
    EXPECT_THAT(application.labels, IsEmpty());
}

TEST_F(FileFormatUse, WeakHandlesKeepNothingAlive)
{
    TrackFileFormatUseWeak weak;
    EXPECT_FALSE(weak || weak.Lock());
    Use use = Use::StartGlobal(L"a.tvr", L"Open");
    weak = use;
    ASSERT_TRUE(weak && weak.Lock());
    weak.Lock()->SetVersion(L"2700");
    use = Use();
    EXPECT_FALSE(weak || weak.Lock());
    EXPECT_THAT(application.labels, ElementsAre(L"Open_tvr[VER 2700]"));
    // A lock keeps it alive, and lets go of the record's lock before the record.
    use = Use::StartGlobal(L"b.tvr", L"Open");
    weak = use;
    {
        const auto lock = weak.Lock();
        use = Use();
        EXPECT_TRUE(weak);
        EXPECT_EQ(application.labels.size(), 1u);
    }
    EXPECT_EQ(application.labels.size(), 2u);
}

/// Ticks of so many seconds.
constexpr TvlUtils::TimeDelta Seconds(int seconds)
{
    return TvlUtils::TimeDelta(seconds * TvlUtils::TimeDelta::kTicksPerSecond);
}

TEST_F(FileFormatUse, TheStopwatchFollowsItsOperations)
{
    FakeClock clock;
    const auto read = [](Use& use) {
        use.MarkDuration(Marker(5));
        return use.GetMarkedDuration(Marker(5));
    };
    Use use = Use::StartLocal(L"a.tvr", L"Import");
    EXPECT_EQ(read(use), Seconds(0)) << "stands at first";
    use.StopDurationTracker();
    use.StartDurationTracker();
    clock.Pass(20s);
    EXPECT_EQ(read(use), Seconds(20));
    use.SuspendDurationTracker();
    clock.Pass(30s);
    EXPECT_EQ(read(use), Seconds(20)) << "shows the same while it stands";
    use.ResumeDurationTracker();
    clock.Pass(1s);
    EXPECT_EQ(read(use), Seconds(1)) << "what came before the last resume does not count";
    use.StartDurationTracker();   // runs already
    clock.Pass(4s);
    use.StopDurationTracker();
    EXPECT_EQ(read(use), Seconds(25)) << "the total goes on";
    use.StopDurationTracker();
    EXPECT_EQ(read(use), Seconds(25));
    use.StartDurationTracker();
    clock.Pass(2s);
    use.StopDurationTracker();
    EXPECT_EQ(read(use), Seconds(2)) << "a new start begins at 0";
    EXPECT_EQ(use.GetMarkedDuration(Marker(6)), Seconds(0));
}

TEST_F(FileFormatUse, AnOpeningReportsItsTimes)
{
    FakeClock clock;
    Use use = Use::StartLocal(L"a.tvr", L"Open");
    clock.Pass(1234ms);
    use.Accept();
    use.Commit();
    auto properties = application.TakeEvent().properties;
    EXPECT_EQ(properties[L"document.download-duration"], L"0");
    EXPECT_EQ(properties[L"document.open-duration"], properties[L"event.duration"]);
    EXPECT_EQ(properties[L"event.duration"], L"1.23") << "two decimals";

    use = Use::StartLocal(L"a.tvr", L"Open");
    clock.Pass(3s);
    use.MarkDuration(Marker::Download);
    clock.Pass(1s);
    use.Accept();
    use.Commit();
    properties = application.TakeEvent().properties;
    EXPECT_EQ(properties[L"document.download-duration"], L"3");
    EXPECT_EQ(properties[L"document.open-duration"], L"1");
    EXPECT_EQ(properties[L"event.duration"], L"4");
}

TEST_F(FileFormatUse, ExportsAreFilledFromTheDocument)
{
    FakeDocument document = Document();
    document.layoutKey = kLayoutKey;
    document.layout = TvlString(L"Booklet");
    Use use = Use::StartGlobal(L"a.png", L"Export");
    use.Lock()->SetFilter(L"kept").SetExportedLocation(L"kept").SetExportFileResolution(72);
    use.FillExportEvent(L"", &document, false, L"", 0);
    EXPECT_FALSE(use.IsAccepted());
    EXPECT_TRUE(use.Lock()->GetFilter() == L"kept" && use.Lock()->GetLayout() == L"Booklet");
    use.FillExportEvent(L"PNG", &document, true, L"disk", 300);
    use.Commit();
    EXPECT_THAT(application.TakeEvent().properties,
        AllOf(Contains(Pair(L"document.page-layout", L"Booklet")),
            Contains(Pair(L"document.exported-location", L"disk")), Contains(Pair(L"document.file-measure", L"300")),
            Contains(Pair(L"objects.count", L"1")), Contains(Pair(L"objects.connectors", L"3")),
            Contains(Pair(L"bitmaps.color-models", L"RGB,CMYK")), Contains(Pair(L"text.fonts", L"Serif")),
            Contains(Pair(L"variable-outline.nodes", L"10")), Contains(Pair(L"painterly-brush.brushes", L"")),
            Contains(Pair(L"document.layers", L"13")), Contains(Pair(L"document.color-mode", L"CMYK")),
            Contains(Pair(L"gen-ai.features", L"Remix"))));
    EXPECT_THAT(application.labels, ElementsAre(L"Export_png[FLT PNG][ACCEPTED]"));
}

TEST_F(FileFormatUse, ExportsTakeTheActiveDocumentWhereNoneIsGiven)
{
    FakeDocument document = Document();
    Use use = Use::StartLocal(L"a.png", L"SaveAs");
    use.FillExportEvent(L"", nullptr, false, L"", 0);
    EXPECT_EQ(use.Lock()->GetStatistics().objects, 0);
    application.active = &document;
    use.FillExportEvent(L"", nullptr, true, L"", 0);
    use.Commit();
    EXPECT_THAT(application.TakeEvent().properties,
        AllOf(Contains(Pair(L"objects.count", L"1")), Contains(Pair(L"document.file-measure", L"2048.5")),
            Contains(Pair(L"document.file-extension", L"tvr")), Contains(Pair(L"document.file-place", L"cloud"))));
}

TEST_F(FileFormatUse, OddMetadataIsTakenOrRefused)
{
    FakeDocument document;
    document.layoutKey = kLayoutKey;
    Use use = Use::StartGlobal(L"a.png", L"Export");
    use.Lock()->SetLayout(L"old");
    for (const TvlUtils::Any& nothing : {TvlUtils::Any(), TvlUtils::Any(TvlString())}) {
        document.layout = nothing;
        use.FillExportEvent(L"", &document, false, L"", 0);
        EXPECT_TRUE(use.Lock()->GetLayout() == L"old");
    }
    document.layout = 7;
    EXPECT_THROW(use.FillExportEvent(L"", &document, true, L"", 300), std::bad_cast);
    EXPECT_FALSE(use.IsAccepted());
    std::thread([&] { use.Lock()->SetLayout(L"the lock is free"); }).join();
    document.statistics[DocumentStatistic::ObjectCount] = TvlString(L"many");
    use.Lock()->SetDocInfo(document);
    EXPECT_EQ(use.Lock()->GetStatistics().objects, 0);
    use.Discard();
}

TEST_F(FileFormatUse, LabelsAreLoggedForDevelopers)
{
    const TvlString file = world.Path("labels.txt");
    IPrefStore& store = *CAppPrefManager::GetInstance().GetStore();
    store.Write(L"FileFormatTracking/DebugTrackingLogFile", file);
    Send(L"a.tvr", L"Open", kAsItIs, false);
    Send(L"b.größe", L"Import", kAsItIs);
    EXPECT_EQ(world.Bytes("labels.txt"),
        "Open_tvr\nImport_gr\xC3\xB6\xC3\x9F"
        "e[ACCEPTED]\n");
    store.Write(L"FileFormatTracking/DebugTrackingLogFile", world.Path("none/labels.txt"));
    Send(L"a.tvr", L"Open", kAsItIs, false);
    EXPECT_EQ(application.labels.size(), 3u) << "a log that can't be written hinders nothing";
}

TEST_F(FileFormatUse, WhoIsToldMayCallBack)
{
    const auto callBack = [] {
        if (Use use = Use::Find(L"a.tvr")) {
            use.Lock()->SetVersion(L"2800");
            use.Accept();
            use.Commit();
        }
        Use::StartGlobal(L"b.tvr", L"Import").Discard();
        std::thread([] { Use::StartGlobal(L"a.tvr", L"Open").Discard(); }).join();
    };
    application.onLabel = application.onEvent = callBack;
    {
        Use use = Use::StartGlobal(L"a.tvr", L"Open");
        const Use same = use;
        use.Accept();
        use.Commit();
    }
    {
        Use use = Use::StartGlobal(L"a.tvr", L"Open");
        use.Accept();   // and is dropped
    }
    EXPECT_THAT(application.labels, ElementsAre(L"Open_tvr[ACCEPTED]", L"Open_tvr[ACCEPTED]"));
    EXPECT_EQ(application.events.size(), 2u);
}

TEST_F(FileFormatUse, ADroppedHandleLetsNoExceptionOut)
{
    application.onLabel = [] { throw std::runtime_error("no network"); };
    EXPECT_NO_THROW(Use::StartGlobal(L"a.tvr", L"Open"));
    Use use = Use::StartGlobal(L"a.tvr", L"Open");
    EXPECT_THROW(use.Commit(), std::runtime_error);
    EXPECT_NO_THROW(use.Commit());
    EXPECT_EQ(application.labels.size(), 2u);
}

TEST_F(FileFormatUse, EverythingThatIsSentIsDescribed)
{
    std::map<std::wstring, std::set<std::wstring>> described;
    for (const auto& event : ProductAnalytics::DescribeEvents())
        for (const auto& property : event.properties) {
            EXPECT_NE(std::wstring(property.meaning), L"");
            described[event.event].insert(property.name);
        }
    FakeDocument document = Document();
    for (const wchar_t* const context :
        {L"Open", L"Import", L"ImportAssetList", L"ImportAssetPhotoPanel", L"ImportAssetVectorPanel", L"Export",
            L"ExportForOffice", L"SaveAs", L"AutoSave-Initiated", L"AutoSave-Completed"}) {
        Send((GetUserDocumentsTovelSuiteDir() + L"a/b.tvr").c_str(), context, [&](auto& data) {
            data.SetDocInfo(document).SetLayout(L"x").SetExportedLocation(L"x").SetExportedRange(L"x");
        });
        const auto event = application.TakeEvent();
        ASSERT_TRUE(described.contains(event.name)) << event.name;
        for (const auto& [name, value] : event.properties)
            EXPECT_TRUE(described[event.name].contains(name)) << event.name << " " << name;
    }
}

TEST_F(FileFormatUse, EightThreadsCommitEachRecordOnce)
{
    constexpr int kThreads = 8;
    constexpr int kPaths = 100;
    constexpr int kRounds = 40;
    std::atomic<int> started = 0;
    const auto work = [&](int number) {
        for (int i = 0; i < kRounds * kPaths; ++i) {
            const TvlString path = std::to_wstring((i * (number + 1)) % kPaths) + L".tvr";
            Use use = Use::Find(path);
            if (!use)
                use = Use::StartGlobal(path, L"Import");
            // The first one to come tells the record by a version of its own.
            if (const auto lock = use.Lock(); lock->GetVersion().IsEmpty())
                lock->SetVersion(std::to_wstring(++started));
            use.MarkDuration(Marker::Download);
            if (i % 3 == 0)
                use.Accept();
            if (i % 5 == 0)
                use.Commit();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back(work, i);
    for (auto& thread : threads)
        thread.join();
    std::set<std::wstring> versions;
    for (const std::wstring& label : application.labels) {
        const std::size_t from = label.find(L"[VER ");
        ASSERT_NE(from, std::wstring::npos) << label;
        EXPECT_TRUE(versions.insert(label.substr(from, label.find(L']', from) - from)).second) << label;
    }
    EXPECT_EQ(versions.size(), static_cast<std::size_t>(started));
    EXPECT_LE(application.events.size(), versions.size());
}

}   // namespace
