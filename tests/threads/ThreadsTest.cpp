// Each promise of docs/threads-and-locks.md, asked by several threads at once. The thread sanitizer finds what goes unseen
// here: ./dev test thread.
#include "AddOns.h"
#include "CExif.h"
#include "CFileLocations.h"
#include "CloudHelpers.h"
#include "CpuID.h"
#include "DotNet.h"
#include "ExifBlock.h"
#include "HandleMemory.h"
#include "ListMan.h"
#include "TrackingSystem.h"
#include "UserWorld.h"
#include "WGList.h"
#include "WSManagerMutex.h"
#include "WUTLRegistry.h"
#include "siblings/DataBinding/IDataSourceRegistrar.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlFeatureManagement/Features.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <thread>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr int kThreads = 6;
constexpr int kRounds = 40;

/// Runs `work(thread, round)` on several threads, which begin each round together.
void Together(const std::function<void(int thread, int round)>& work)
{
    // The C++ library's barrier loses wakes on windows now and then.
    std::atomic<int> arrived = 0;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([&, thread] {
            for (int round = 0; round < kRounds; ++round) {
                ++arrived;
                while (arrived < kThreads * (round + 1))
                    std::this_thread::yield();
                work(thread, round);
            }
        });
}

std::wstring Numbered(const wchar_t* text, int number) { return text + std::to_wstring(number); }

class Threads : public testing::Test {
protected:
    UserWorld world;
};

CAppPrefObject<TvlString> shared(L"Threads/Shared", L"default");

// What threads share.

void ExpectThatRegistryIsShared()
{
    constexpr const wchar_t* kBase = L"HKEY_CURRENT_USER\\Threads";
    Together([&](int thread, int round) {
        const std::wstring own = std::wstring(kBase) + Numbered(L"\\", thread);
        WUTLRegistry key(own.c_str(), WUTLRegistry::kReadWriteAccess, 1);
        EXPECT_EQ(key.SetValue(L"round", static_cast<ULONG>(round)), 0);
        ULONG value = 0;
        EXPECT_EQ(key.GetValue(L"round", value), 0);
        EXPECT_EQ(value, static_cast<ULONG>(round));
        WUTLRegistry common(kBase, WUTLRegistry::kReadWriteAccess, 1);
        EXPECT_EQ(common.SetValue(L"last", static_cast<ULONG>(thread)), 0);
        EXPECT_EQ(common.GetValue(L"last", value), 0);
        EXPECT_LT(value, static_cast<ULONG>(kThreads));
    });
    EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(kBase), 0);
}

TEST_F(Threads, ShareTheRegistry)
{
    ExpectThatRegistryIsShared();
    EXPECT_EQ(world.registry.OpenKeys(), 0u);
    PREFUTILS::IRegistry::SetForTests(nullptr);   // the system's; the world's is forgotten with it
    ExpectThatRegistryIsShared();
}

TEST_F(Threads, ShareABatchOfTheRegistryInTurns)
{
    PREFUTILS::IRegistry& registry = PREFUTILS::IRegistry::GetInstance();
    constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\Batches";
    ASSERT_EQ(WUTLRegistry::CreateKey(kKey, WUTLRegistry::kReadWriteAccess, 0), 0);
    Together([&](int thread, int) {
        PREFUTILS::RegistryBatch batch(registry);
        WUTLRegistry key(kKey, WUTLRegistry::kReadWriteAccess, 1);
        ULONG first = 0, second = 0;
        for (const wchar_t* const name : {L"first", L"second"})
            EXPECT_EQ(key.SetValue(name, static_cast<ULONG>(thread)), 0);
        EXPECT_EQ(key.GetValue(L"first", first), 0);
        EXPECT_EQ(key.GetValue(L"second", second), 0);
        EXPECT_EQ(first, second) << "another thread came between";
        EXPECT_EQ(batch.Commit(), 0);
    });
}

TEST_F(Threads, SharePreferences)
{
    std::atomic<int> told = 0;
    CAppPrefManager& manager = CAppPrefManager::GetInstance();
    Together([&](int thread, int round) {
        const int listener = manager.AddListener([&](const CPrefObjectBase&) { ++told; });
        const std::wstring name = Numbered(L"Threads/", thread);
        CAppPrefObject<TvlString> own(name.c_str());
        EXPECT_TRUE(own.Change(Numbered(L"round ", round)));
        EXPECT_EQ(own.GetValue(), Numbered(L"round ", round));
        EXPECT_EQ(manager.Find(name), &own);
        EXPECT_TRUE(shared.Change(Numbered(L"value ", round)));
        EXPECT_NE(shared.GetValue(), L"default");
        manager.RemoveListener(listener);
    });
    EXPECT_GE(told, kThreads * kRounds);
    EXPECT_FALSE(manager.Find(L"Threads/0"));
}

TEST_F(Threads, ShareFoldersAndTexts)
{
    const TvlString fills = CFileLocations::GetFileLocationsFillsDir();
    const TvlString text = Framework::Resources::GetString(L"04812848-9ad4-4192-a086-66215d2feba2");
    const TvlString addOn = world.MakeFolder("add-on");
    const TvlString cloud = TvlUtl::CloudHelpers::GetCloudFilePath(L"id", L"name.tvr");
    Together([&](int thread, int) {
        EXPECT_EQ(CFileLocations::GetFileLocationsFillsDir(), fills);
        EXPECT_EQ(TvlUtl::CloudHelpers::GetCloudFilePath(L"id", L"name.tvr"), cloud);
        EXPECT_EQ(TvlUtl::CloudHelpers::GetCloudFileIdByPath(cloud), L"id");
        if (thread == 0)
            Framework::Resources::SetLanguageFolder(L"EN");   // all texts are read anew
        if (thread == 1)
            INIClearLangRelProgDirCache();
        EXPECT_EQ(Framework::Resources::GetString(L"04812848-9ad4-4192-a086-66215d2feba2"), text);
        EXPECT_EQ(INIGetLangRelProgDir(), INIGetLangRelProgDir());
        EXPECT_FALSE(AddOns::ShouldLoadAddOn(addOn, nullptr));
        EXPECT_EQ(TvlUtl::IsDotNetInstalled(), TvlUtl::IsNewDotNetInstalled());
    });
}

TEST_F(Threads, ShareWhatTheProcessorHas)
{
    CAppPrefObject<bool> hidden(L"SimulateHardware/HasAVX2", true);
    Together([&](int thread, int round) {
        if (thread == 0)
            hidden.SetValue(round % 2 == 0);
        const CpuID& processor = CpuID::GetInstance();
        EXPECT_TRUE(processor.CheckAVX2Support() || !processor.HasAVX2());
        EXPECT_TRUE(!processor.HasSufficientHardwareSupport() || processor.CheckAVXSupport());
        CpuID::GetMissingInstructionsStr();
    });
}

/// Counts what it is sent.
struct CountingTracker : Framework::Tracking::ITracker {
    Framework::Tracking::TrackerId GetId() const override { return Framework::Tracking::TrackerId(7); }
    void Send(const Framework::Tracking::Activity&) override { ++count; }
    std::atomic<int> count = 0;
};

TEST_F(Threads, SendToTrackers)
{
    using namespace Framework::Tracking;
    const auto tracker = std::make_shared<CountingTracker>();
    TrackingSystem::GetInstance().AddTracker(tracker);
    const TrackerId ids[] = {TrackerId(7), TrackerId(8)};
    Together([&](int, int) {
        TrackingSystem::GetInstance().Send(ids, {L"drawn", {{L"setType", L"bool"}, {L"setValue", L"true"}}});
        TrackFeature(L"drawn");
        ProductAnalytics::DescribeEvents();
    });
    TrackingSystem::GetInstance().RemoveTracker(tracker);
    EXPECT_EQ(tracker->count, kThreads * kRounds);
}

TEST_F(Threads, ShareSwitchesAndRegisters)
{
    const FeatureManagement::Feature& feature = FeatureManagement::Features::OptionsTabletMode_func();
    Together([&](int thread, int round) {
        if (thread == 0)
            FeatureManagement::FeatureSet().Switch(feature, round % 2 == 0);
        FeatureManagement::FeatureSet().IsEnabled(feature);
        EXPECT_FALSE(IDataSourceRegistrar::GetInstance().FindFactory(Numbered(L"none", round)));
    });
    FeatureManagement::FeatureSet().Reset(feature);
}

TEST_F(Threads, ShareTheLog)
{
    std::set<std::wstring> lines;   // the receiver is called under a lock
    TvlUtils::SetLogReceiver([&](TvlUtils::LogLevel, const TvlString& line) { lines.insert(line.Std()); });
    Together([&](int thread, int round) {
        TvlUtils::SetVlogLevel(thread);
        TvlUtils::LogMessage(TvlUtils::LogLevel::Info, Numbered(L"thread ", thread) + Numbered(L", round ", round));
        EXPECT_TRUE(TvlUtils::GetVlogLevel() < kThreads && TvlUtils::ShouldCreateLogMessage(TvlUtils::LogLevel::Info));
    });
    TvlUtils::SetLogReceiver({});
    TvlUtils::SetVlogLevel(0);
    EXPECT_EQ(lines.size(), std::size_t{kThreads * kRounds});
}

TEST_F(Threads, GetNamesAndIdentifiersThatNobodyElseHas)
{
    std::mutex lock;
    std::set<std::wstring> names;
    Together([&](int, int) {
        const std::wstring own[] = {
            TvlUtils::Guid::Generate().ToString().Std(), SystemIO::Path::GetTempFileNameW(L"", L"tvl", L"").Std()};
        const std::lock_guard hold(lock);
        names.insert(std::begin(own), std::end(own));
    });
    EXPECT_EQ(names.size(), std::size_t{2 * kThreads * kRounds});
}

TEST_F(Threads, ShareFiles)
{
    const TvlString folder = world.Folder("shared/deep");
    Together([&](int thread, int round) {
        const TvlString own = folder + Numbered(L"", round) + L"/";
        EXPECT_TRUE(SystemIO::Folder::EnsureExists(own)) << "whoever makes it first";
        EXPECT_TRUE(SystemIO::File::WriteAside(own + Numbered(L"", thread), "content"));
        EXPECT_TRUE(SystemIO::File::EnsureExists(own + L"one"));
        EXPECT_GE(SystemIO::File::Find(own, L"*", true, true).size(), 1u);
        EXPECT_TRUE(SystemIO::File::WriteAside(folder + L"all", Numbered(L"", thread) == L"0" ? "zero" : "other"));
        std::string bytes;
        EXPECT_TRUE(SystemIO::File::ReadAll(folder + L"all", bytes));
        EXPECT_TRUE(bytes == "zero" || bytes == "other") << bytes;
    });
    EXPECT_EQ(SystemIO::File::Find(folder, L"*", true, false).size(), std::size_t{kRounds * (kThreads + 1) + 1});
}

TEST_F(Threads, TakeTheWorkspacesLockInTurns)
{
    int inside = 0;
    Together([&](int, int) {
        WSManagerMutex mutex;
        ASSERT_TRUE(mutex.HasMutex());
        WSManagerMutex again;
        EXPECT_TRUE(again.HasMutex()) << "the thread that holds it may take it again";
        EXPECT_EQ(++inside, 1);
        --inside;
    });
}

// Objects of their own: nothing behind them is shared without a lock.

void UseHandlesAndLists(int thread, int round)
{
    HMEM__* const list = LIST_Ctor();
    for (LONG i = 0; i < round; ++i)
        EXPECT_EQ(LIST_Push(list, &i, sizeof i), i + 1);
    EXPECT_EQ(LIST_Size(list), round);
    LIST_Dtor(list);
    WGList elements;
    for (int i = 0; i <= round; ++i)
        elements.InsertEnd(&thread, sizeof thread);
    EXPECT_EQ(elements.ListSize(), round + 1);
}

void ReadExif(int, int)
{
    const auto block = CameraBlock(true);
    CExif exif;
    EXPECT_EQ(exif.ParseData(TvlUtils::Stream::OverMemory(block.data(), block.size())), 1);
    for (int i = 0; CExifTag* const tag = exif.GetAt(i); ++i) {
        TvlString text;
        tag->GetDisplayLabel(text);
        tag->GetDisplayValue(text);
    }
}

void ReadXml(int thread, int)
{
    WXmlDoc document(false);
    EXPECT_TRUE(document.LoadBytes("<a><b c='" + std::to_string(thread) + "'/></a>"));
}

using Work = void (*)(int thread, int round);

TEST_F(Threads, WorkOnObjectsOfTheirOwn)
{
    for (const Work work : {UseHandlesAndLists, ReadExif, ReadXml})
        Together(work);
    Together([&](int thread, int round) {
        const std::string name = std::to_string(thread) + ".ini";
        if (round == 0)
            world.MakeFile(name, "[a]\nb=0\n");
        TvlUtils::IniParser file(world.Path(name));
        EXPECT_TRUE(file.SetString(L"a", L"b", Numbered(L"", round)));
        EXPECT_EQ(TvlUtils::IniParser(world.Path(name)).GetString(L"a", L"b", L""), Numbered(L"", round));
    });
}

}   // namespace
