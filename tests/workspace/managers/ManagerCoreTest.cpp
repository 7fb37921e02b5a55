// The list of workspaces, which one is current, and where that is kept.
#include "ManagerFixture.h"
#include "VirtualSlot.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using WorkspaceManagerTypes::Result;

class ManagerCore : public Managers {
protected:
    std::vector<std::string> Names(OpenManager& manager)
    {
        std::vector<std::string> names;
        for (const WorkspaceFile& file : manager.GetWorkspaces())
            names.push_back(TvlPlatform::ToUtf8(file.GetName()));
        return names;
    }
    static std::wstring Stored(const wchar_t* name) { return Value(kKey, name).value_or(L"none"); }
};

TEST_F(ManagerCore, KeepsTheOrderOfItsOperations)
{
    using Core = IWorkspaceManagerCore;
    const std::size_t slots[] = {
        Slot(static_cast<Result (Core::*)(WSM_INIT&)>(&Core::Initialize)),
        Slot(static_cast<Result (Core::*)(WSM_INIT&, const std::function<bool()>&)>(&Core::Initialize)),
        Slot(&Core::InitializeAfterAppCreation),
        Slot(&Core::GetProfileSettingsFile),
        Slot(static_cast<WorkspaceFile* (Core::*)()>(&Core::GetCurrentWorkspace)),
        Slot(static_cast<const WorkspaceFile* (Core::*)() const>(&Core::GetCurrentWorkspace)),
        Slot(&Core::GetNamedWorkspaces),
        Slot(&Core::GetCategoriedWorkspaces),
        Slot(static_cast<IWorkspaceFiles& (Core::*)()>(&Core::GetWorkspaces)),
        Slot(static_cast<const IWorkspaceFiles& (Core::*)() const>(&Core::GetWorkspaces)),
        Slot(&Core::GetCurrentWorkspaceName),
        Slot(&Core::GetWorkspaceByInstanceID),
        Slot(&Core::GetBootDefaultWorkspacePath),
        Slot(&Core::IsDefaultWorkspace),
        Slot(&Core::GetUserInteractionMode),
        Slot(&Core::ExtractIconResources),
        Slot(&Core::AppShuttingDown),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i + 2) << i;   // behind the destructor
    using Files = IWorkspaceFiles;
    EXPECT_EQ(Slot(static_cast<Files::Iterator (Files::*)()>(&Files::begin)), 0u);
    EXPECT_EQ(Slot(&Files::cbegin), 2u);
    EXPECT_EQ(Slot(static_cast<Files::Iterator (Files::*)()>(&Files::end)), 3u);
    EXPECT_EQ(Slot(&Files::cend), 5u);
}

TEST_F(ManagerCore, RefusesNamesThatDoNotServe)
{
    const std::pair<const wchar_t*, const wchar_t*> kNames[] = {{L"", L"a"}, {L"p", L""}, {L"p", L"x.y"}};
    for (const auto& [product, application] : kNames) {
        OpenManager manager;
        WSM_INIT init;
        init.Product = product;
        init.Application = application;
        EXPECT_EQ(manager.Initialize(init), Result::InitFailed);
        EXPECT_EQ(manager.GetWorkspaces().begin(), manager.GetWorkspaces().end());
        EXPECT_EQ(manager.GetCurrentWorkspace(), nullptr);
    }
    EXPECT_FALSE(world.Has("user/Workspaces/_default.tvws"));
}

TEST_F(ManagerCore, CopiesStockWorkspacesThatTheUserLacks)
{
    MakeStock("Light");
    MakeStock("Touch");
    Make("LIGHT");
    world.MakeFile("user/Workspaces/other.txt");
    const auto manager = Started();
    EXPECT_THAT(Names(*manager), ElementsAre("_default", "LIGHT", "Touch"));
    EXPECT_EQ(SettingsOf("LIGHT"), Settings("LIGHT"));
    EXPECT_EQ(SettingsOf("Touch"), Settings("stock Touch"));
    EXPECT_TRUE(TvlUtils::SystemIO::File::IsWritable(WorkspacePath("Touch")));
    TvlUtils::SystemIO::File::Delete(WorkspacePath("Touch"));
    EXPECT_THAT(Names(*Started()), ElementsAre("_default", "LIGHT", "Touch"));
}

TEST_F(ManagerCore, ListsAFileThatIsNoWorkspace)
{
    world.MakeFile("user/Workspaces/_default.tvws", "no archive");
    const auto manager = Started();
    EXPECT_THAT(Names(*manager), ElementsAre("_default"));
    EXPECT_EQ(world.Bytes("user/Workspaces/_default.tvws"), "no archive");
    EXPECT_EQ(manager->GetNamedWorkspaces().size(), 1u);
}

/// Which workspace is current after the start, and what the registry tells then.
struct Start {
    const char* what;
    UserInteractionMode_t mode;
    const char* last;   // names of workspaces; null for no value
    const char* desktop;
    const char* tablet;
    const wchar_t* toggling;
    const char* current;
    bool extracts;   // its settings
    const char* storedLast;
};

constexpr auto kDesktop = kDesktopInteraction;
constexpr auto kTablet = kTabletInteraction;
constexpr Start kStarts[] = {
    {"nothing stored", kDesktop, nullptr, nullptr, nullptr, nullptr, "_default", false, nullptr},
    {"nothing stored, tablet", kTablet, nullptr, nullptr, nullptr, nullptr, "Default(TM)", false, nullptr},
    {"desktop default", kDesktop, nullptr, "A", "B", L"1", "A", false, nullptr},
    {"tablet default", kTablet, nullptr, "A", "B", nullptr, "B", false, nullptr},
    {"default is gone", kDesktop, nullptr, "gone", nullptr, nullptr, "_default", false, nullptr},
    {"last is the default", kDesktop, "A", "A", nullptr, nullptr, "A", false, "A"},
    {"last is another", kDesktop, "B", "A", nullptr, nullptr, "A", true, "A"},
    {"last is gone", kDesktop, "gone", "A", nullptr, nullptr, "A", false, "gone"},
    {"no toggling", kDesktop, "B", "A", nullptr, L"0", "B", false, "B"},
    {"no toggling, tablet", kTablet, "B", "A", nullptr, L"0", "B", false, "B"},
    {"no toggling, nothing used", kDesktop, nullptr, "A", nullptr, L"0", "_default", false, nullptr},
    {"no toggling, last is gone", kDesktop, "gone", "A", nullptr, L"0", "_default", false, "gone"},
    {"toggling by another text", kDesktop, "B", "A", nullptr, L"true", "B", false, "B"},
};

TEST_F(ManagerCore, ComesUpWithTheWorkspaceThatTheRegistryAsksFor)
{
    for (const Start& start : kStarts) {
        SCOPED_TRACE(start.what);
        const MemoryRegistry registry;
        world.Remove("user");
        for (const char* const name : {"A", "B", "_default", "Default(TM)"})
            Make(name);
        const std::pair<const wchar_t*, const char*> kPaths[] = {{L"LastTovelWorkspaceUsed", start.last},
            {L"DesktopModeDefault", start.desktop}, {L"TabletModeDefault", start.tablet}};
        for (const auto& [value, name] : kPaths)
            if (name)
                Store(value, WorkspacePath(name));
        if (start.toggling)
            Store(L"TabletModeToggling", start.toggling);
        const auto manager = Started(start.mode);
        EXPECT_EQ(TvlPlatform::ToUtf8(manager->GetCurrentWorkspaceName()), start.current);
        EXPECT_EQ(SettingsOnDisk(), start.extracts ? Settings(start.current) : "");
        EXPECT_EQ(StoredName().has_value(), start.extracts);
        EXPECT_EQ(Stored(L"LastTovelWorkspaceUsed"),
            start.storedLast ? WorkspacePath(start.storedLast).Std() : std::wstring(L"none"));
    }
}

TEST_F(ManagerCore, FallsBackWithoutATabletWorkspace)
{
    Make("A");
    const auto manager = Started(kTabletInteraction);
    EXPECT_EQ(manager->GetCurrentWorkspaceIndex(), 0u);
    EXPECT_EQ(manager->GetDefaultTabletWorkspace(), WorkspacePath("Default(TM)"));
}

TEST_F(ManagerCore, FindsPathsInAnyCaseAndFallsBackToTheDefault)
{
    for (const char* const name : {"A", "B"})
        Make(name);
    const auto manager = Started();   // _default, A, B
    EXPECT_EQ(manager->GetWorkspaceIndex(WorkspacePath("b")), 2u);
    EXPECT_EQ(manager->GetWorkspaceIndex(L"elsewhere"), 0u);
    EXPECT_EQ(OpenManager().GetWorkspaceIndex(WorkspacePath("A")), 0u);
}

/// Values that are no texts of a manager.
struct Raw {
    PREFUTILS::RegistryType type;
    std::vector<BYTE> bytes;
};

TEST_F(ManagerCore, TakesOddValuesAsMissing)
{
    Make("A");
    const TvlString path = WorkspacePath("A");
    const auto* const bytes = reinterpret_cast<const BYTE*>(path.c_str());
    const auto size = static_cast<std::size_t>(path.GetLength()) * sizeof(wchar_t);
    const std::vector<BYTE> ended(bytes, bytes + size + sizeof(wchar_t));
    std::vector<BYTE> odd(ended.begin(), ended.end() - 1), longer = ended;
    longer.resize(261 * sizeof(wchar_t));
    const Raw kRefused[] = {{PREFUTILS::kRegistryText, odd}, {PREFUTILS::kRegistryBinary, ended},
        {PREFUTILS::kRegistryText, longer}, {PREFUTILS::kRegistryText, {}}};
    const auto start = [&](const Raw& raw) {
        HKEY key = nullptr;
        auto& registry = PREFUTILS::IRegistry::GetInstance();
        registry.RegCreateKeyExW(PREFUTILS::RegistryRoot(0x80000001), L"SOFTWARE\\Tovel\\Suite\\Tovel", 0, nullptr, 0,
            PREFUTILS::kRegistryReadWrite, nullptr, &key, nullptr);
        registry.RegSetValueExW(
            key, L"DesktopModeDefault", 0, raw.type, raw.bytes.data(), static_cast<DWORD>(raw.bytes.size()));
        registry.RegCloseKey(key);
        return TvlPlatform::ToUtf8(Started()->GetCurrentWorkspaceName());
    };
    for (const Raw& raw : kRefused)
        EXPECT_EQ(start(raw), "_default") << raw.type << ' ' << raw.bytes.size();
    EXPECT_EQ(start({PREFUTILS::kRegistryText, ended}), "A");
    EXPECT_EQ(start({PREFUTILS::kRegistryExpandableText, ended}), "A");
    EXPECT_EQ(world.registry.OpenKeys(), 0u);
}

TEST_F(ManagerCore, KeepsItsStateUnderTheKeyThatItIsGiven)
{
    struct Row {
        const wchar_t* root;
        const wchar_t* key;
        const wchar_t* expected;
    };
    constexpr Row kRows[] = {{L"", L"", L"SOFTWARE\\Tovel\\Suite\\Tovel"},
        {L"SOFTWARE\\X", L"", L"SOFTWARE\\X\\Suite\\Tovel"}, {L"SOFTWARE\\X", L"SOFTWARE\\Y", L"SOFTWARE\\Y"}};
    for (const auto& [root, key, expected] : kRows) {
        const MemoryRegistry registry;
        OpenManager manager;
        WSM_INIT init = Init();
        init.RegistryRoot = root;
        init.RegistryKey = key;
        EXPECT_EQ(manager.Initialize(init), Result::Ok);
        manager.AppShuttingDown();
        const TvlString full = TvlString(L"HKEY_CURRENT_USER\\") + expected;
        EXPECT_EQ(Value(full, L"LastTovelWorkspaceUsed"), WorkspacePath("_default").Std());
        EXPECT_EQ(Value(full, L"DesktopModeDefault"), WorkspacePath("_default").Std());
        EXPECT_EQ(Value(full, L"TabletModeDefault"), WorkspacePath("Default(TM)").Std());
        EXPECT_EQ(Value(full, L"TabletModeToggling"), L"1");
    }
}

TEST_F(ManagerCore, ResetsAfterAQuestionAlone)
{
    MakeStock("_default");
    Make("_default");
    world.MakeFile("user/WebBrowser/cookies");
    const auto reset = [&](const std::function<bool()>& confirm) {
        OpenManager manager;
        WSM_INIT init = Init();
        init.Reset = true;
        init.ResetRegistryKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Mine";
        init.AdditionalFiles = {{L"content/extra.bin", world.MakeFile("extra.bin")}};
        WUTLRegistry::CreateKey(init.ResetRegistryKey.c_str(), WUTLRegistry::kReadWriteAccess, 0);
        manager.Initialize(init, confirm);
        EXPECT_EQ(WUTLRegistry::IsValid(init.ResetRegistryKey.c_str()) == 0, !init.Reset);
        EXPECT_EQ(world.Has("extra.bin"), !init.Reset);
        EXPECT_EQ(world.Has("user/WebBrowser"), !init.Reset);
        return init.Reset;
    };
    EXPECT_FALSE(reset(nullptr));
    EXPECT_FALSE(reset([] { return false; }));
    EXPECT_EQ(SettingsOf("_default"), Settings("_default"));
    EXPECT_TRUE(reset([] { return true; }));
    EXPECT_EQ(SettingsOf("_default"), Settings("stock _default"));
    EXPECT_EQ(SettingsOnDisk(), Settings("stock _default"));
    EXPECT_EQ(StoredName(), L"stock _default");
}

TEST_F(ManagerCore, AsksForAResetInABox)
{
    for (const int answer : {6, 7}) {
        app.windowing.answer = answer;
        OpenManager manager;
        WSM_INIT init = Init();
        init.Reset = true;
        manager.Initialize(init);
        ASSERT_EQ(app.windowing.boxes.size(), 1u);
        EXPECT_EQ(app.windowing.boxes[0].style, 0x10024u);
        EXPECT_EQ(app.windowing.boxes[0].caption, L"Tovel");
        EXPECT_EQ(init.Reset, answer == 6);
        app.windowing.boxes.clear();
    }
}

TEST_F(ManagerCore, TakesTheIconLoaderAndCallsIt)
{
    int calls = 0;
    OpenManager manager;
    WSM_INIT init = Init();
    init.InitializeIcons = [&] { ++calls; };
    manager.Initialize(init);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(init.InitializeIcons);
}

TEST_F(ManagerCore, BringsOldColourSchemesToTodaysNumbers)
{
    struct Row {
        const wchar_t* version;
        const char* before;
        const char* after;
    };
    constexpr Row kRows[] = {{L"19", "3", "2"}, {L"19", "1", "0"}, {L"19", "0", "0"}, {L"19", "x", "x"},
        {L"20", "3", "3"}, {L"19", "4294967296", "2147483646"}};
    const auto manager = Started();
    for (const auto& [version, before, after] : kRows) {
        world.Remove("old.tvws");
        WorkspaceFile made = MakeAt(world.Path("made.tvws"), "x");
        made.SaveSettings(
            world.MakeFile("old.ini", std::string("[NodeEditTool]\r\nNodeColorScheme=") + before + "\r\n"), {});
        WorkspaceFileExportSettings exported;
        exported.Version = version;
        exported.ExportApplicationData = true;
        WorkspaceFile old = WorkspaceFile::Export(world.Path("old.tvws"), made.GetFilename(), L"", {}, exported);
        manager->ExtractSettingsFromWorkspace(old);
        EXPECT_EQ(SettingsOnDisk(), std::string("[NodeEditTool]\r\nNodeColorScheme=") + after + "\r\n");
    }
}

TEST_F(ManagerCore, SortsByCategoryOrderAndName)
{
    const auto manager = Started();
    const std::tuple<const char*, const wchar_t*, int> kFiles[] = {
        {"c", L"B", 1}, {"b", L"A", 5}, {"a", L"A", 5}, {"e", L"B", 5}, {"d", L"", 9}, {"f", L"", 2}};
    for (const auto& [name, category, order] : kFiles) {
        Make(name);
        WorkspaceContainer container = WorkspaceContainer::Open(WorkspacePath(name), ZipFile::OpenMode::ReadWrite);
        container.SetMetadata(WorkspaceContainerSchema::Metadata::Category, MultiLanguageString(category));
        container.SetMetadata(WorkspaceContainerSchema::Metadata::UIOrder, order);
        ASSERT_TRUE(container.Close());
    }
    TvlUtils::SystemIO::File::Delete(WorkspacePath("_default"));
    const auto other = Started();
    std::string names;
    for (const WorkspaceFile& file : other->GetNamedWorkspaces())
        names += TvlPlatform::ToUtf8(file.GetName()) + ' ';
    EXPECT_EQ(names, "f d _default c a b e ");
    std::string groups;
    for (const auto& [category, files] : other->GetCategoriedWorkspaces())
        groups += TvlPlatform::ToUtf8(category) + std::to_string(files.size()) + ' ';
    EXPECT_EQ(groups, "3 B2 A2 ");
    const WorkspaceFile file = other->GetNamedWorkspaces()[3];
    EXPECT_EQ(other->GetWorkspaceByInstanceID(file.GetInstanceID())->GetName(), L"c");
    EXPECT_EQ(other->GetWorkspaceByInstanceID(TvlUtils::Guid::Generate()), nullptr);
}

TEST_F(ManagerCore, ExtractsIconsAndCleansUpBehindThem)
{
    WorkspaceFile file = Make("_default");
    for (const char* const name : {"icons/a.ico", "icons/b.ICO", "icons/c.png"})
        file.AddFile(world.MakeFile("icon.bin", name), L"content/" + TvlString(TvlPlatform::FromUtf8(name)));
    const auto manager = Started();
    const auto icons = manager->ExtractIconResources();
    ASSERT_EQ(icons.size(), 2u);
    EXPECT_EQ(icons[0].Name, L"a");
    EXPECT_EQ(FileBytes(TvlUtils::SystemIO::ToFilePath(icons[1].Path)), "icons/b.ICO");
    manager->AppShuttingDown();
    EXPECT_FALSE(TvlUtils::SystemIO::Path::Exists(icons[0].Path));
    EXPECT_TRUE(OpenManager().ExtractIconResources().empty());
}

TEST_F(ManagerCore, ExtractsNoIconsWhereThereIsNoTemporaryFolder)
{
    Make("_default").AddFile(world.MakeFile("icon.bin"), L"content/icons/a.ico");
    world.MakeFile("user/Temp", "a file");
    world.MakeFile("here/file");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(TvlUtils::SystemIO::ToFilePath(world.Path("here")));
    EXPECT_TRUE(Started()->ExtractIconResources().empty());
    std::filesystem::current_path(before);
    EXPECT_EQ(TvlUtils::SystemIO::File::Find(world.Path("here"), L"*", true, true).size(), 1u);
}

TEST_F(ManagerCore, ExtractsNoMoreIconsThanTheUserAllows)
{
    WorkspaceFile file = Make("_default");
    for (const wchar_t* const name : {L"content/icons/a.ico", L"content/icons/b.ico", L"content/icons/c.ico"})
        file.AddFile(world.MakeFile("icon.bin"), name);
    CAppPrefObject<TvlString> most(L"Workspaces/MaxIcons", L"1000");
    most.SetValue(L"2");
    EXPECT_EQ(Started()->ExtractIconResources().size(), 2u);
}

TEST_F(ManagerCore, ExtractsNoMoreBytesOfIconsThanOneEntryMayHave)
{
    WorkspaceFile file = Make("_default");
    const TvlString large = world.MakeFile("icon.bin", std::string(700 << 10, '\0'));
    for (const wchar_t* const name : {L"content/icons/a.ico", L"content/icons/b.ico", L"content/icons/c.ico"})
        file.AddFile(large, name);
    CAppPrefObject<TvlString>(L"Workspaces/MaxEntryMegabytes", L"64").SetValue(L"1");
    EXPECT_EQ(Started()->ExtractIconResources().size(), 2u) << "the second one is more than is left";
}

// Any workspace may have set the limit, and with it every other one would be shut out.
TEST_F(ManagerCore, ReadsWorkspacesWhenTheLimitSaysNone)
{
    Make("_default").AddFile(world.MakeFile("icon.bin", std::string(700 << 10, '\0')), L"content/icons/a.ico");
    CAppPrefObject<TvlString>(L"Workspaces/MaxEntryMegabytes", L"64").SetValue(L"0");
    EXPECT_EQ(Started()->ExtractIconResources().size(), 1u);
}

TEST_F(ManagerCore, SharesOneHoldOfTheMutexInAProcess)
{
    OpenManager manager;
    auto outer = manager.AcquireWSMutex();
    EXPECT_TRUE(outer->HasMutex());
    EXPECT_FALSE(outer->WasAbandoned());
    EXPECT_EQ(manager.AcquireWSMutex(), outer);
    OpenManager other;
    EXPECT_NE(other.AcquireWSMutex(), outer);   // the same thread takes it again
    outer->Release();
    EXPECT_FALSE(outer->HasMutex());
    EXPECT_TRUE(outer->Acquire());
}

TEST(WSManagerMutexName, IsTheSameInAnyCase)
{
    // MD5 of "a" as a little-endian UTF-16 unit.
    EXPECT_EQ(WSManagerMutex::NameFor(L"A"), L"WSMANAGER_INTERPROCESS_4144e195f46de78a3623da7364d04f11");
    EXPECT_EQ(WSManagerMutex::NameFor(L"C:\\Users\\\xc4"), WSManagerMutex::NameFor(L"c:\\uSERS\\\xe4"));
    EXPECT_NE(WSManagerMutex::NameFor(L"a"), WSManagerMutex::NameFor(L"b"));
}

}   // namespace
