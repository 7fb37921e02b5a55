// Plug-in folders and add-on markers.
#include "AddOns.h"
#include "CPluginStates.h"
#include "UserWorld.h"
#include "windows/Modules.h"

#include <gtest/gtest.h>

namespace {
namespace Path = TvlUtils::SystemIO::Path;

using Folders = std::vector<std::pair<TvlString, bool>>;

class PlugIns : public testing::Test {
protected:
    PlugIns()
    {
        world.environment.variables[L"TVL_SUITE_DIR"] = world.Path("suite").Std();
        world.environment.variables[L"ProgramFiles"] = world.Path("programs").Std();
    }

    UserWorld world;
};

TEST_F(PlugIns, LieInTheSuiteAndForAllUsersUntilTheUserChooses)
{
    EXPECT_EQ(CPluginStates::GetPluginSearchPathAndState(),
        (Folders{{world.Path("suite/Plugins"), true}, {world.Path("programs/Tovel/Plugins"), true}}));
    EXPECT_EQ(CPluginStates::PluginFileExtensions.GetValue(), L"*.dll;*.8b?;*.eff;*.lnk");
    EXPECT_EQ(CPluginStates::PluginDirs.GetValue(),
        (std::vector<TvlString>{CPluginStates::defaultDirs, CPluginStates::defaultProgramFilesDir}));
}

struct Entry {
    const wchar_t* text;
    const wchar_t* folder;   // null when the entry is left out
    bool enabled;
};

constexpr Entry kEntries[] = {
    {L"D:/filters,1", L"D:/filters", true},
    {L"D:/filters,0", L"D:/filters", false},
    {L"D:/filters", L"D:/filters", true},
    {L"D:/filters,", L"D:/filters", true},
    {L"  D:/my filters\t,  0 \t", L"D:/my filters", false},
    {L"D:/filters,00", L"D:/filters", true},
    {L"D:/filters,off", L"D:/filters", true},
    {L"D:/filters,0,1", L"D:/filters", true},
    {L", 1", nullptr, false},
    {L"", nullptr, false},
    {L" ,0", L"", false},
    {L"<elsewhere>,1", L"<elsewhere>", true},
};

TEST_F(PlugIns, AreReadFromTheListInItsOrder)
{
    std::vector<TvlString> list;
    Folders expected;
    for (const auto& [text, folder, enabled] : kEntries) {
        list.emplace_back(text);
        if (folder)
            expected.emplace_back(folder, enabled);
    }
    ASSERT_TRUE(CPluginStates::PluginDirs.SetValue(list));
    EXPECT_EQ(CPluginStates::GetPluginSearchPathAndState(), expected);
    EXPECT_EQ(CPluginStates::PluginDirs.GetValue(), list);
}

TEST_F(PlugIns, KnowTheirTokensInAnyCase)
{
    ASSERT_TRUE(CPluginStates::PluginDirs.SetValue({L"<PLUGINS>, 0", L" <Plugins_ProgramFiles> "}));
    EXPECT_EQ(CPluginStates::GetPluginSearchPathAndState(),
        (Folders{{world.Path("suite/Plugins"), false}, {world.Path("programs/Tovel/Plugins"), true}}));
}

TEST_F(PlugIns, AreStoredUnderTheNamesThatAllVersionsKnow)
{
    EXPECT_EQ(CPluginStates::PluginDirs.GetName(), L"PlugInFilters64/Dirs");
    EXPECT_EQ(CPluginStates::PluginFileExtensions.GetName(), L"PlugInFilters64/FileExtensons");
}

TEST_F(PlugIns, ApplyAsAddOnsByTheirMarker)
{
    const TvlString program = Path::GetFileNameWithoutExtension(Ports::Modules::Get().ProgramPath());
    const std::string folder = "add-on";
    const std::string every = folder + "/" + "test_environment.addon";
    const std::string here = folder + "/" + "test_environment.x64.addon";
    ASSERT_EQ(program, L"test_environment");
    const TvlString place = world.MakeFolder(folder);
    TvlString found = L"unchanged";
    EXPECT_FALSE(AddOns::ShouldLoadAddOn(place, &found));
    world.MakeFile(folder + "/test_environment.x32.addon");
    world.MakeFolder(every);   // a folder of that name is no marker
    EXPECT_FALSE(AddOns::ShouldLoadAddOn(place, &found));
    EXPECT_EQ(found, L"unchanged");
    world.MakeFile(here);
    EXPECT_TRUE(AddOns::ShouldLoadAddOn(place, &found));
    EXPECT_EQ(found, world.Path(here));
    world.Remove(every);
    world.MakeFile(every, "");
    EXPECT_TRUE(AddOns::ShouldLoadAddOn(place, &found));
    EXPECT_EQ(found, world.Path(every));
    EXPECT_TRUE(AddOns::ShouldLoadAddOn(world.Path(folder), nullptr));
}

TEST(EnvironmentTexts, HaveTheirVariablesReplaced)
{
    FakeEnvironment environment;
    environment.variables = {{L"A", L"one"}, {L"EMPTY", L""}};
    struct Case {
        const wchar_t* text;
        const wchar_t* expanded;
    };
    constexpr Case kCases[] = {{L"", L""}, {L"%A%", L"one"}, {L"x%A%%A%y", L"xoneoney"}, {L"%EMPTY%z", L"z"},
        {L"%NOT_SET_ANYWHERE%A%", L"%NOT_SET_ANYWHEREone"}, {L"100%", L"100%"}, {L"%%A%%", L"%one%"}};
    for (const auto& [text, expanded] : kCases)
        EXPECT_EQ(Path::ExpandWindowsEnvStrings(text), expanded) << text;
}

}   // namespace
