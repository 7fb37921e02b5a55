// tvl workspace, as a user calls it.
#include "ManagerFixture.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gmock/gmock.h>

namespace {
using testing::HasSubstr;

constexpr int kBadInput = 2;

class WorkspaceCommands : public Managers {
protected:
    WorkspaceCommands()
    {
        for (const char* const name : {"_default", "A"})
            Make(name);
        world.MakeFolder("suite/Workspaces");
    }
    ~WorkspaceCommands() override { RunProgram({"tvl", {"registry", "delete", kTvlKey}, {}, m_environment, {}}); }

    ChildResult Run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"workspace", "--mode", "desktop"});
        ChildResult result = RunProgram({"tvl", arguments, {}, m_environment, {}});
        std::erase(result.output, '\r');   // before line ends on windows
        return result;
    }
    std::string Native(const std::string& name) const { return TvlPlatform::ToUtf8(world.Path(name)); }

    static constexpr const char* kTvlKey = "HKCU\\SOFTWARE\\Tovel\\Suite\\Tovel";
    std::map<std::string, std::string> m_environment = {
        {"TVL_USER_DIR", Native("user")}, {"TVL_SUITE_DIR", Native("suite")}, {"TVL_REGISTRY", Native("registry.db")}};
};

TEST_F(WorkspaceCommands, ShowFirstWhatAWorkspaceCouldDoHarmWith)
{
    WorkspaceFile file = Make("Strange");
    file.SaveSettings(world.MakeFile("s.ini",
                          "[Zoo]\r\nName=>0ff003d\r\n[PlugInFilters64]\r\nDirs=/tmp\r\n[Workspaces]\r\nMaxIcons=5\r\n"),
        {});
    const std::string lint = Run({"lint", "Strange"}).output;
    EXPECT_EQ(lint.find("where plug-ins are loaded from:\n  + \"PlugInFilters64/Dirs\": \"/tmp\"\n"), 0u) << lint;
    EXPECT_THAT(lint, HasSubstr("values that don't keep:\n  \"Zoo/Name\""));
    EXPECT_EQ(Run({"list"}).exitCode, 0);   // the first start takes the settings of "_default"
    const std::string changes = Run({"switch", "Strange", "--dry-run"}).output;
    EXPECT_EQ(changes.find("where plug-ins are loaded from:\n  + \"PlugInFilters64/Dirs\": \"/tmp\"\n"), 0u) << changes;
    EXPECT_THAT(changes, HasSubstr("  - \"Test/Name\": \"_default\"\n"));
    EXPECT_THAT(Run({"list"}).output, HasSubstr("* _default"));
}

TEST_F(WorkspaceCommands, MakeChangeAndDeleteWorkspaces)
{
    EXPECT_EQ(Run({"new", "B", "--from", "A", "--title", "Mine"}).exitCode, 0);
    EXPECT_EQ(Run({"switch", "B"}).output.substr(0, 16), "B, 1 preferences");
    EXPECT_EQ(Run({"export", Native("out.tvws"), "--application-data", "--version", "1"}).exitCode, 0);
    EXPECT_THAT(Run({"import-check", Native("out.tvws")}).output, HasSubstr("exported as \"B\""));
    EXPECT_EQ(Run({"delete", "B"}).exitCode, 0);
    EXPECT_THAT(Run({"list"}).output, HasSubstr("* _default"));
    EXPECT_EQ(SettingsOf("_default"), Settings("_default"));
}

TEST_F(WorkspaceCommands, KeepWhatAFileCanHardlyHold)
{
    WorkspaceFile file = Make("Odd");
    // Names that begin a section's line, an empty one, and a value whose usual form does not read back.
    const std::string settings = "[Odd]\r\n>=default\r\n>005b0041005d=bracket\r\nPlain=>000f0041\r\n";
    file.SaveSettings(world.MakeFile("s.ini", settings), {});
    for (const char* const name : {"Odd", "A"})
        EXPECT_EQ(Run({"switch", name}).exitCode, 0);
    EXPECT_EQ(SettingsOf("Odd"), settings);
}

TEST_F(WorkspaceCommands, ShowNothingThatATerminalWouldObey)
{
    const MultiLanguageString text(L"a\u009bb");
    WorkspaceContainer container = WorkspaceContainer::Open(WorkspacePath("A"), ZipFile::OpenMode::ReadWrite);
    container.SetMetadata(ZipContainerSchema::Metadata::Title, text);
    container.SetMetadata(WorkspaceContainerSchema::Metadata::Category, text);
    ASSERT_TRUE(container.Close());
    EXPECT_THAT(Run({"list"}).output, HasSubstr("a\\u009bb:\n  A  \"a\\u009bb\"\n"));
}

TEST_F(WorkspaceCommands, RefuseWhatCanNotBeDone)
{
    world.MakeFile("no.tvws", "no archive");
    MakeAt(world.Path("elsewhere.tvws"), "elsewhere");
    const std::vector<std::string> kRefused[] = {{"delete", "_default"}, {"delete", "none"}, {"switch", "none"},
        {"switch", Native("no.tvws")}, {"lint", Native("no.tvws")}, {"import-check", Native("no.tvws")},
        {"show", Native("no.tvws")}, {"new", "A"}, {"export", Native("no.tvws")}, {"reset"},
        {"icons", "remove", "none"}, {"new", ""}, {"new", "../A"}, {"new", "B", "--from", "../Workspaces/A"},
        {"delete", "../Workspaces/A"}, {"switch", Native("elsewhere.tvws")}};
    for (const std::vector<std::string>& arguments : kRefused) {
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, kBadInput) << arguments[0] << result.output << result.errors;
        EXPECT_THAT(result.errors, HasSubstr("tvl: ")) << arguments[0];
    }
}
}   // namespace
