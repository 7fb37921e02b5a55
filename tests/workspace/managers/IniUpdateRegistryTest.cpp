// A settings file becomes the preferences in the registry.
#include "IniUpdateRegistry.h"
#include "ManagerFixture.h"
#include "MockRegistry.h"
#include "siblings/TvlUtils/LogMessage.h"

namespace {

class SettingsToRegistry : public Managers {
protected:
    void Apply(const std::string& ini) { IniUpdateRegistry(world.MakeFile("s.ini", ini).c_str()); }
    static std::optional<std::wstring> Preference(const wchar_t* key, const wchar_t* name)
    {
        return Value(TvlString(kPreferences) + L"\\" + key, name);
    }
    /// Bytes of a value; -1 when there is none.
    static long long Size(const wchar_t* key, const wchar_t* name)
    {
        auto& registry = PREFUTILS::IRegistry::GetInstance();
        HKEY opened = nullptr;
        const TvlString path = (TvlString(kPreferences) + L"\\" + key).Mid(18);
        registry.RegOpenKeyExW(PREFUTILS::RegistryRoot(0x80000001), path.c_str(), 0, PREFUTILS::kRegistryRead, &opened);
        DWORD size = 0, type = 0;
        const LONG status = registry.RegQueryValueExW(opened, name, nullptr, &type, nullptr, &size);
        registry.RegCloseKey(opened);
        return status == 0 && type == PREFUTILS::kRegistryText ? static_cast<long long>(size) : -1;
    }
};

struct Written {
    const char* ini;
    const wchar_t* key;
    const wchar_t* name;
    const wchar_t* value;
};

constexpr Written kWritten[] = {
    {"[a/b/c]\nn=1", L"a\\b\\c", L"n", L"1"},
    {"[s]\n>0041=2", L"s", L"A", L"2"},
    {"[s]\nn=>00410042", L"s", L"n", L"AB"},
    {"[s]\nn=>d83dde00", L"s", L"n", L"\U0001F600"},
    {"[s]\nn=", L"s", L"n", L""},
    {"[s]\nn=>", L"s", L"n", L""},
    {"[s]\nn=>004100000042", L"s", L"n", L"A"},
    {"[s]\nn=a>b", L"s", L"n", L"a>b"},
    {"[s]\n>=1", L"s", L"", L"1"},
};

TEST_F(SettingsToRegistry, WritesEachEntryAsAText)
{
    for (const auto& [ini, key, name, value] : kWritten) {
        Apply(ini);
        EXPECT_EQ(Preference(key, name), value) << ini;
    }
    EXPECT_EQ(world.registry.OpenKeys(), 0u);
}

TEST_F(SettingsToRegistry, PassesOverSectionsThatAreTooDeepForARegistry)
{
    const auto deep = [](int levels) {
        TvlString name = L"a";
        for (int i = 1; i < levels; ++i)
            name += L"\\a";
        return name;
    };
    const auto apply = [&](int levels) { Apply("[" + TvlPlatform::ToUtf8(deep(levels)) + "]\nn=1\n[s]\nn=2"); };
    constexpr int kMostLevels = 512 - 5;   // of the registry, without those above the preferences
    for (const int levels : {kMostLevels + 1, 1 << 19}) {
        apply(levels);
        EXPECT_EQ(Preference(L"s", L"n"), L"2");
        EXPECT_NE(WUTLRegistry::IsValid((TvlString(kPreferences) + L"\\a").c_str()), 0) << levels;
    }
    apply(kMostLevels);
    EXPECT_EQ(Preference(deep(kMostLevels).c_str(), L"n"), L"1");
    EXPECT_EQ(world.registry.OpenKeys(), 0u);
}

TEST_F(SettingsToRegistry, StoresTextsWithoutTheirEndMark)
{
    Apply("[s]\nn=\nm=abc");
    EXPECT_EQ(Size(L"s", L"n"), 0);
    EXPECT_EQ(Size(L"s", L"m"), static_cast<long long>(3 * sizeof(wchar_t)));
}

TEST_F(SettingsToRegistry, ReplacesTheWholeTree)
{
    Apply("[old]\nn=1\n[both]\nm=1\nn=1");
    for (int run = 0; run < 2; ++run) {
        Apply("[both]\nn=2");
        EXPECT_FALSE(Preference(L"old", L"n"));
        EXPECT_FALSE(Preference(L"both", L"m"));
        EXPECT_EQ(Preference(L"both", L"n"), L"2");
    }
    IniUpdateRegistry(world.Path("missing.ini").c_str());
    EXPECT_FALSE(Preference(L"both", L"n"));
    EXPECT_EQ(WUTLRegistry::IsValid(kPreferences), 0);
    IniUpdateRegistry(nullptr);
}

TEST_F(SettingsToRegistry, TellsWhatCanNotBeWrittenAndGoesOn)
{
    std::vector<std::wstring> log;
    TvlUtils::SetLogReceiver([&](TvlUtils::LogLevel level, const TvlString& text) {
        if (level == TvlUtils::LogLevel::Error)
            log.push_back(text.Std());
    });
    const std::string longName(300, 'k');
    Apply("[" + longName + "]\nn=1\n[s]\nn=1");
    TvlUtils::SetLogReceiver(nullptr);
    ASSERT_EQ(log.size(), 1u);
    const std::wstring key = std::wstring(kPreferences) + L"\\" + std::wstring(longName.begin(), longName.end());
    EXPECT_EQ(log[0], L"Failed to create registry key  '" + key + L"'");
    EXPECT_EQ(Preference(L"s", L"n"), L"1");
}

TEST_F(SettingsToRegistry, KeepsItsMarkWhenTheRegistryTakesTheTreeBack)
{
    for (const LONG status : {PREFUTILS::kRegistryOk, PREFUTILS::kRegistryDiskFull}) {
        testing::NiceMock<MockRegistry> registry;
        EXPECT_CALL(registry, BeginBatch());
        EXPECT_CALL(registry, EndBatch(true)).WillOnce(testing::Return(status));
        Apply("[s]\nn=1");
        EXPECT_EQ(world.Has("s.ini.applying"), status != PREFUTILS::kRegistryOk);
    }
}

TEST_F(SettingsToRegistry, KeepsItsMarkWhenTheFileCantBeRead)
{
    Apply("[s]\nn=1");
    world.MakeFolder("folder.ini");   // no file that anybody could read
    IniUpdateRegistry(world.Path("folder.ini").c_str());
    EXPECT_FALSE(Preference(L"s", L"n"));
    EXPECT_TRUE(world.Has("folder.ini.applying"));
    Apply(std::string(70000, '\n') + "[s]\nn=1");
    EXPECT_FALSE(Preference(L"s", L"n"));
    EXPECT_FALSE(world.Has("s.ini.applying")) << "a file with too many lines is refused the next time as well";
}

TEST_F(SettingsToRegistry, OpensEachKeyOnceBesidesTheQuestionWhetherItIsThere)
{
    testing::NiceMock<MockRegistry> registry;
    std::map<std::wstring, int> opened;
    ON_CALL(registry, RegOpenKeyExW).WillByDefault([&](HKEY, const wchar_t* path, DWORD, DWORD, HKEY*) {
        ++opened[path];
        return 0;
    });
    EXPECT_CALL(registry, RegSetValueExW).Times(4);
    Apply("[a]\nn=1\nm=2\no=3\n[b/c]\nn=1");
    const std::wstring target = std::wstring(kPreferences).substr(18);   // without the root
    EXPECT_EQ(opened[target + L"\\a"], 2);
    EXPECT_EQ(opened[target + L"\\b\\c"], 2);
}

TEST_F(SettingsToRegistry, NamesWhatItSetsInAVerboseLog)
{
    std::vector<std::wstring> log;
    TvlUtils::SetLogReceiver([&](TvlUtils::LogLevel, const TvlString& text) { log.push_back(text.Std()); });
    TvlUtils::SetVlogLevel(1);
    Apply("[PlugInFilters64]\nDirs=x");
    TvlUtils::SetVlogLevel(0);
    Apply("[s]\nn=1");
    TvlUtils::SetLogReceiver(nullptr);
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[0], L"Reading workspace settings file: " + world.Path("s.ini").Std());
    EXPECT_EQ(log[1], L"Setting 'Dirs' of '" + std::wstring(kPreferences) + L"\\PlugInFilters64'");
}

TEST_F(SettingsToRegistry, TakesAnyFile)
{
    for (const auto& seed : std::filesystem::directory_iterator(SETTINGS_SEEDS)) {
        Apply(FileBytes(seed.path()));
        EXPECT_EQ(WUTLRegistry::IsValid(kPreferences), 0) << seed.path();
    }
}
}   // namespace
