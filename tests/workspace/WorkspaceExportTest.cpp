// Workspaces for other users, and the description of what they contain.
#include "WorkspaceWorld.h"

namespace {

constexpr const wchar_t* kDescription = L"content/exportsettings.xml";

WorkspaceFileExportSettings Everything()
{
    WorkspaceFileExportSettings settings;
    settings.Name = L"Name";
    settings.Framework = L"Frame";
    settings.Version = L"19";
    settings.Toolbars = {{true, L"g1", L"Tools & <more>"}, {false, L"", L"\u4e2d"}};
    settings.Menus = {{true, L"g2", L"Menu"}};
    settings.Statusbars = {{false, L"g3", L"Status"}};
    settings.Touchbars = {{true, L"g4", L"Touch"}};
    settings.ExportDockers = true;
    return settings;
}

class WorkspaceExport : public WorkspaceWorld {
protected:
    WorkspaceFile Export(const WorkspaceFileExportSettings& settings)
    {
        const TvlString source =
            Make("source.tvws", {{kSettings, "s"}, {L"content/extra", "e"}, {kDescription, "<old/>"}});
        return WorkspaceFile::Export(
            world.Path("For you.tvws"), source, kSettings, {{L"content/extra", L"unused"}}, settings);
    }
};

TEST_F(WorkspaceExport, ReadsBackWhatItDescribes)
{
    const WorkspaceFile made = Export(Everything());
    ASSERT_TRUE(made);
    EXPECT_EQ(made.GetTitle().GetLangString(L"en"), TvlString(L"For you"));
    EXPECT_EQ(made.GetUIOrder(), 200);

    WorkspaceFileExportSettings read;
    ASSERT_TRUE(WorkspaceFile::ReadExportSettings(made.GetFilename(), read));
    EXPECT_EQ(read.ReadState, 2);
    EXPECT_EQ(read.Name, TvlString(L"Name"));
    EXPECT_EQ(read.Framework, TvlString(L"Frame"));
    EXPECT_EQ(read.Version, TvlString(L"19"));
    ASSERT_EQ(read.Toolbars.size(), 2u);
    EXPECT_TRUE(read.Toolbars[0].Selected);
    EXPECT_EQ(read.Toolbars[0].Name, TvlString(L"Tools & <more>"));
    EXPECT_EQ(read.Toolbars[1].Name, TvlString(L"\u4e2d"));
    EXPECT_EQ(read.Menus.at(0).Guid, TvlString(L"g2"));
    EXPECT_EQ(read.Statusbars.at(0).Guid, TvlString(L"g3"));
    EXPECT_EQ(read.Touchbars.at(0).Guid, TvlString(L"g4"));
    EXPECT_FALSE(read.ExportShortcutKeys);
    EXPECT_TRUE(read.ExportDockers);
    EXPECT_FALSE(read.ExportApplicationData);

    const std::string text = Entry(made.GetFilename(), kDescription);
    std::size_t at = 0;
    for (const char* const part :
        {"<toolbars>", "<toolbar selected=\"true\" guid=\"g1\" name=", "<menus>", "<statusbars>", "<touchbars>",
            "<options exportShortcutKeys=\"false\" exportDockers=\"true\" exportApplicationData=\"false\""})
        EXPECT_NE(at = text.find(part, at), text.npos) << part;
}

TEST_F(WorkspaceExport, LeavesApplicationDataOutUnlessAsked)
{
    auto settings = Everything();
    const TvlString path = Export(settings).GetFilename();
    EXPECT_EQ(Entry(path, kSettings), "none");
    EXPECT_EQ(Entry(path, L"content/extra"), "none");
    settings.ExportApplicationData = true;
    EXPECT_TRUE(Export(settings));
    EXPECT_EQ(Entry(path, kSettings), "s");
    EXPECT_EQ(Entry(path, L"content/extra"), "e");
}

TEST_F(WorkspaceExport, HasNoDescriptionThatCantBeRead)
{
    auto settings = Everything();
    settings.Name = L"it's";
    const WorkspaceFile made = Export(settings);
    EXPECT_TRUE(made);
    WorkspaceFileExportSettings read;
    read.ReadState = 2;
    EXPECT_FALSE(WorkspaceFile::ReadExportSettings(made.GetFilename(), read));
    EXPECT_EQ(read.ReadState, 0);
    settings.Name = L"x' name2='y";
    EXPECT_TRUE(WorkspaceFile::ReadExportSettings(Export(settings).GetFilename(), read)) << "it goes in as it is";
    EXPECT_EQ(read.Name, TvlString(L"x"));
}

TEST_F(WorkspaceExport, FailsWithoutASource)
{
    EXPECT_FALSE(WorkspaceFile::Export(world.Path("t.tvws"), world.Path("none.tvws"), kSettings, {}, {}));
    EXPECT_FALSE(WorkspaceFile::Export(world.Path("t.tvws"), world.MakeFile("no.tvws", "no"), kSettings, {}, {}));
    EXPECT_TRUE(world.Has("t.tvws")) << "the copy stays";
    WorkspaceFileExportSettings read;
    EXPECT_FALSE(WorkspaceFile::ReadExportSettings(world.Path("t.tvws"), read));
    EXPECT_FALSE(WorkspaceFile::ReadExportSettings(Make("a.tvws", {{kDescription, "<a><b></a>"}}), read));
    EXPECT_TRUE(WorkspaceFile::ReadExportSettings(Make("b.tvws", {{kDescription, "<other/>"}}), read));
    EXPECT_TRUE(read.Toolbars.empty());
}

}   // namespace
