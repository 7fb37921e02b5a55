// Workspace files: metadata with their repair, content, creation.
#include "WorkspaceWorld.h"
#include "siblings/TvlResources/Resources.h"

#include <thread>

using TvlUtils::Guid;
namespace Properties = ZipContainerSchema::Metadata;

namespace {

const TvlString kIdentity = L"44e925cc-890c-49b2-8ffb-5407cd23fd88";

/// The stated order of the members, by another class of the same.
struct Members {
    TvlString filename, name;
    bool isLoaded;
    MultiLanguageString title, category, description;
    LONG order;
    Guid instance, document;
    std::vector<Guid> ancestors;
    bool hasPreview;
    std::recursive_mutex lock;
};
static_assert(sizeof(Members) == sizeof(WorkspaceFile));

template <class T>
T& MemberAt(WorkspaceFile& file, std::size_t offset)
{
    return *reinterpret_cast<T*>(reinterpret_cast<char*>(&file) + offset);
}

class WorkspaceFiles : public WorkspaceWorld { };

TEST_F(WorkspaceFiles, KeepTheirMembersInOrder)
{
    const TvlString path = Make("a.tvws",
        {{kConfiguration,
            "<u><applicationInfo workspaceID='" + std::string("44e925cc-890c-49b2-8ffb-5407cd23fd88") + "'/></u>"}});
    WorkspaceFile file(path);
    EXPECT_EQ(MemberAt<TvlString>(file, offsetof(Members, filename)), path);
    EXPECT_EQ(MemberAt<TvlString>(file, offsetof(Members, name)), TvlString(L"a"));
    EXPECT_FALSE(MemberAt<bool>(file, offsetof(Members, isLoaded)));
    EXPECT_EQ(MemberAt<LONG>(file, offsetof(Members, order)), 0);
    file.InitializeMetadata();
    EXPECT_TRUE(MemberAt<bool>(file, offsetof(Members, isLoaded)));
    EXPECT_EQ(MemberAt<LONG>(file, offsetof(Members, order)), 200);
    EXPECT_EQ(MemberAt<Guid>(file, offsetof(Members, document)), Guid(kIdentity));
    EXPECT_EQ(MemberAt<Guid>(file, offsetof(Members, instance)), file.GetInstanceID());
    EXPECT_EQ(MemberAt<std::vector<Guid>>(file, offsetof(Members, ancestors)).size(), 1u);

    struct Settings {
        TvlString name, framework, version;
        std::vector<WorkspaceFileExportSettings::Item> toolbars, menus, touchbars, statusbars;
    };
    WorkspaceFileExportSettings settings;
    settings.Touchbars.resize(3);
    settings.Statusbars.resize(4);
    const auto* const bytes = reinterpret_cast<const char*>(&settings);
    using Items = std::vector<WorkspaceFileExportSettings::Item>;
    EXPECT_EQ(reinterpret_cast<const Items*>(bytes + offsetof(Settings, touchbars))->size(), 3u);
    EXPECT_EQ(reinterpret_cast<const Items*>(bytes + offsetof(Settings, statusbars))->size(), 4u);
}

TEST_F(WorkspaceFiles, TakeTheIdentityOfAnOldConfiguration)
{
    const TvlString path = Make("old.tvws",
        {{kConfiguration, "<ui><x><applicationInfo workspaceID='{44E925CC-890C-49B2-8FFB-5407CD23FD88}'/></x></ui>"}});
    const WorkspaceFile first(path);
    EXPECT_TRUE(first.InitializeMetadata());
    const WorkspaceFile again(path);
    for (const WorkspaceFile* const file : {&first, &again}) {
        EXPECT_EQ(file->GetDocumentID(), Guid(kIdentity));
        EXPECT_EQ(file->GetDerivedFrom(), std::vector<Guid>{Guid(kIdentity)});
        EXPECT_FALSE(file->GetInstanceID().IsNil());
        EXPECT_EQ(file->GetUIOrder(), 200);
        EXPECT_FALSE(file->IsPreviewAvailable());
    }
    EXPECT_EQ(first.GetInstanceID(), again.GetInstanceID());
}

TEST_F(WorkspaceFiles, KeepNewIdentifiersWithoutAnOldOne)
{
    for (const std::string configuration :
        {"<u><applicationInfo workspaceID='nonsense'/></u>", "<u><applicationInfo/></u>", "<u", ""}) {
        const TvlString path = Make("new.tvws", {{kConfiguration, configuration}});
        const WorkspaceFile file(path);
        EXPECT_FALSE(file.GetDocumentID().IsNil()) << configuration;
        EXPECT_FALSE(file.GetInstanceID().IsNil());
        EXPECT_TRUE(file.GetDerivedFrom().empty());
        EXPECT_EQ(WorkspaceFile(path).GetDocumentID(), file.GetDocumentID());
    }
}

TEST_F(WorkspaceFiles, DoNotTryAFailedReadAgain)
{
    const TvlString path = world.Path("late.tvws");
    const WorkspaceFile file(path);
    EXPECT_FALSE(file.InitializeMetadata());
    Make("late.tvws", {{kSettings, "x"}});
    EXPECT_TRUE(file.InitializeMetadata());
    EXPECT_EQ(file.GetUIOrder(), 0);
    EXPECT_EQ(WorkspaceFile(path).GetUIOrder(), 200);
    EXPECT_FALSE(WorkspaceFile(L""));
    EXPECT_FALSE(WorkspaceFile());
    EXPECT_TRUE(WorkspaceFile(L"nowhere"));
}

TEST_F(WorkspaceFiles, TakeValuesOfAnotherTypeForNone)
{
    const TvlString path = Make("types.tvws", {});
    auto container = WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
    container.SetMetadata(Properties::Title, TvlString(L"text"));
    container.SetMetadata(WorkspaceContainerSchema::Metadata::UIOrder, TvlString(L"7"));
    container.SetMetadata(Properties::DocumentID, 5);
    EXPECT_FALSE(container.SetMetadata(Properties::InstanceID, 1.5)) << "a type that can't be stored";
    EXPECT_TRUE(container.Close());
    const WorkspaceFile file(path);
    EXPECT_TRUE(file.GetTitle().IsEmpty());
    EXPECT_EQ(file.GetUIOrder(), 200);
    EXPECT_FALSE(file.GetDocumentID().IsNil()) << "repaired";
}

TEST_F(WorkspaceFiles, StoreAndExtractEntries)
{
    const TvlString path = Make("a.tvws", {{kSettings, "old"}, {L"content/icons/a.ico", "A"}});
    WorkspaceFile file(path);
    ASSERT_TRUE(TvlUtils::SystemIO::File::MakeReadonly(path));
    EXPECT_TRUE(file.AddFile(world.MakeFile("new", "new"), kSettings)) << "the mark goes";
    EXPECT_FALSE(file.AddFile(world.Path("missing"), kSettings));
    EXPECT_EQ(Entry(path, kSettings), "new") << "what could not be replaced stays";
    EXPECT_FALSE(file.AddFile(world.Path("new"), L"../out"));
    EXPECT_TRUE(file.AddFile(world.MakeFile("empty", ""), L"content/icons/empty.ico"));
    EXPECT_EQ(file.GetFilesInDirectory(L"content/icons/.*"),
        (std::vector<TvlString>{L"content/icons/a.ico", L"content/icons/empty.ico"}));

    EXPECT_TRUE(file.GetFile(kSettings, world.MakeFile("target", "before")));
    EXPECT_EQ(world.Bytes("target"), "new");
    EXPECT_FALSE(file.GetFile(L"content/none", world.Path("target")));
    EXPECT_EQ(world.Bytes("target"), "new");
    EXPECT_TRUE(file.DeleteFile(kSettings));
    EXPECT_FALSE(file.DeleteFile(kSettings));
    EXPECT_FALSE(file.GetFile(kSettings, world.Path("target")));

    EXPECT_FALSE(file.IsTouchWorkspace());
    EXPECT_TRUE(file.AddFile(world.Path("empty"), ZipContainerSchema::touchInfoFile));
    EXPECT_TRUE(file.IsTouchWorkspace()) << "whatever it holds";
}

TEST_F(WorkspaceFiles, StoreAndLoadSettings)
{
    const TvlString path = Make("a.tvws", {{L"content/extra", "kept"}});
    WorkspaceFile file(path);
    using Pairs = std::vector<WorkspaceFile::FilePair>;
    const TvlString settings = world.MakeFile("settings.ini", "[a]");
    EXPECT_TRUE(file.SaveSettings(
        settings, Pairs{{L"content/one", world.MakeFile("one", "1")}, {L"content/extra", world.Path("missing")}}));
    EXPECT_EQ(Entry(path, L"content/one"), "1");
    EXPECT_EQ(Entry(path, L"content/extra"), "kept");
    EXPECT_FALSE(file.SaveSettings(world.Path("missing"), Pairs{{L"content/two", settings}}));
    EXPECT_EQ(Entry(path, kSettings), "[a]");
    EXPECT_EQ(Entry(path, L"content/two"), "[a]") << "the others are stored all the same";

    const Pairs targets{{L"content/none", world.MakeFile("gone", "x")}, {L"content/one", world.Path("loaded")}};
    EXPECT_TRUE(file.LoadSettings(world.Path("out.ini"), targets));
    EXPECT_EQ(world.Bytes("out.ini"), "[a]");
    EXPECT_EQ(world.Bytes("loaded"), "1");
    EXPECT_FALSE(world.Has("gone")) << "deleted before the entry is looked for";
    EXPECT_TRUE(file.DeleteFile(kSettings));
    EXPECT_FALSE(file.LoadSettings(world.Path("out.ini"), {}));
}

TEST_F(WorkspaceFiles, SaveTheConfiguration)
{
    const TvlString path = Make("a.tvws", {{kConfiguration, "<old/>"}});
    const WorkspaceFile file(path);
    WXmlDoc document(false);
    EXPECT_FALSE(file.SaveUIConfigFromXML(document)) << "without a tree";
    EXPECT_TRUE(file.LoadUIConfigIntoXML(document));
    document.GetRootNode().Attribute(L"name").SetString(L"\u00e9\u4e2d");
    EXPECT_TRUE(file.SaveUIConfigFromXML(document));
    WXmlDoc again(false);
    EXPECT_TRUE(file.LoadUIConfigIntoXML(again));
    EXPECT_EQ(again.GetRootNode().Attribute(L"name").GetString(L""), TvlString(L"\u00e9\u4e2d"));
    EXPECT_FALSE(WorkspaceFile(world.Path("none.tvws")).SaveUIConfigFromXML(document));
    EXPECT_FALSE(WorkspaceFile(world.Path("none.tvws")).LoadUIConfigIntoXML(again));
}

TEST_F(WorkspaceFiles, AreEqualByNameAndTexts)
{
    const TvlString path = Make("a.tvws", {{kSettings, "1"}});
    world.MakeFolder("other");
    EXPECT_TRUE(WorkspaceFile(path) == WorkspaceFile(Make("other/A.tvws", {{kSettings, "2"}})));
    EXPECT_FALSE(WorkspaceFile(path) == WorkspaceFile(Make("b.tvws", {{kSettings, "1"}})));
    const auto describe = [&](const TvlString& file, const wchar_t* text) {
        auto container = WorkspaceContainer::Open(file, ZipFile::OpenMode::ReadWrite);
        container.SetStringMetadata(Properties::Description, L"en", text);
        EXPECT_TRUE(container.Close());
    };
    describe(path, L"other");
    EXPECT_FALSE(WorkspaceFile(path) == WorkspaceFile(world.Path("other/A.tvws")));
    describe(world.Path("other/A.tvws"), L"OTHER");
    EXPECT_TRUE(WorkspaceFile(path) == WorkspaceFile(world.Path("other/A.tvws")));
}

TEST_F(WorkspaceFiles, HaveALockOfTheirOwnInEveryCopy)
{
    WorkspaceFile file(Make("a.tvws", {{kSettings, "1"}}));
    file.InitializeMetadata();
    const std::lock_guard held(MemberAt<std::recursive_mutex>(file, offsetof(Members, lock)));
    EXPECT_FALSE(file.IsTouchWorkspace()) << "it may be taken again";
    std::thread([&] {
        WorkspaceFile copy(file);
        EXPECT_FALSE(copy.IsTouchWorkspace());
        WorkspaceFile assigned;
        assigned = copy;
        EXPECT_FALSE(assigned.IsTouchWorkspace());
        EXPECT_EQ(assigned.GetInstanceID(), copy.GetInstanceID());
        const WorkspaceFile moved(std::move(assigned));
        EXPECT_EQ(moved.GetFilename(), copy.GetFilename());
    }).join();
}

TEST_F(WorkspaceFiles, AreCreatedFromOthers)
{
    const TvlString source = Make("source.tvws", {{kSettings, "1"}});
    const MultiLanguageString title(L":[Mine];de:[Meins];");
    const WorkspaceFile made = WorkspaceFile::CreateFrom(world.Path("made.tvws"), source, title, L"about");
    ASSERT_TRUE(made);
    EXPECT_EQ(made.GetTitle(), title);
    EXPECT_EQ(made.GetTitleInUILang(), TvlString(L"Mine"));
    EXPECT_EQ(made.GetCategory().GetLangString(L"cs"), TvlString(L"\u5176\u5b83"));
    EXPECT_EQ(made.GetCategory().GetDefaultLangString(), TvlString(L"Other"));
    EXPECT_EQ(made.GetDescriptionInUILang(), TvlString(L"about"));
    EXPECT_EQ(made.GetUIOrder(), 200);
    EXPECT_TRUE(made.GetDerivedFrom().empty()) << "the source has no identity";
    EXPECT_EQ(Entry(made.GetFilename(), kSettings), "1");

    const WorkspaceFile next = WorkspaceFile::CreateFrom(world.Path("next.tvws"), made);
    EXPECT_EQ(next.GetTitle(), title);
    EXPECT_EQ(next.GetDerivedFrom(), std::vector<Guid>{made.GetInstanceID()});
    EXPECT_FALSE(next.GetInstanceID() == made.GetInstanceID());
    EXPECT_EQ(next.GetDocumentID(), made.GetDocumentID());

    const std::string before = world.Bytes("next.tvws");
    EXPECT_FALSE(WorkspaceFile::CreateFrom(world.Path("next.tvws"), source, L"t", L"d"));
    EXPECT_EQ(world.Bytes("next.tvws"), before);
    EXPECT_FALSE(WorkspaceFile::CreateFrom(world.Path("x.tvws"), world.Path("none.tvws"), L"t", L"d"));
    EXPECT_FALSE(WorkspaceFile::CreateFrom(world.Path("y.tvws"), world.MakeFile("no.tvws", "no"), L"t", L"d"));
    EXPECT_TRUE(world.Has("y.tvws")) << "a copy that was made stays";
}

TEST_F(WorkspaceFiles, HaveTheThumbnailsOfTheSuite)
{
    world.environment.variables[L"TVL_SUITE_DIR"] = world.MakeFolder("suite").Std();
    world.MakeFile("suite/Workspaces/user_workspace.jpg", "picture");
    world.MakeFile("suite/Workspaces/_default.jpg", "picture of the default");
    const WorkspaceFile made = WorkspaceFile::CreateDefault(world.Path("_default.tvws"));
    EXPECT_TRUE(made.IsPreviewAvailable());
    EXPECT_EQ(Entry(made.GetFilename(), L"metadata/thumbnails/thumbnail.jpg"), "picture of the default");
    const WorkspaceFile copy = WorkspaceFile::CreateFrom(world.Path("copy.tvws"), made);
    EXPECT_EQ(Entry(copy.GetFilename(), L"metadata/thumbnails/thumbnail.jpg"), "picture");
}

TEST_F(WorkspaceFiles, DescribeTheDefaultByApplication)
{
    struct Row {
        const wchar_t* key;
        const wchar_t* description;
    };
    Framework::Resources::SetLanguageFolder(L"EN");   // another test's suite has no texts
    const TvlString before = ApplicationInfo::Settings().GetRegistryName();
    for (const auto& [key, description] :
        {Row{L"Tovel LAYOUTER 1", L"Default workspace for page layout and illustration."},
            Row{L"PIXEL-BENCH LAYOUTER", L"Default workspace for page layout and illustration."},
            Row{L"PIXEL-BENCH", L"Default workspace for image editing."}, Row{L"layouter", L"Default workspace."}}) {
        ApplicationInfo::Settings().SetRegistryName(key);
        const WorkspaceFile made = WorkspaceFile::CreateDefault(world.Path("_default.tvws"));
        EXPECT_EQ(made.GetDescription().GetLangString(L"en"), TvlString(description)) << key;
        EXPECT_EQ(made.GetTitleInUILang(), TvlString(L"Default"));
        EXPECT_TRUE(made.GetCategory().HasLanguage(L"en"));
        EXPECT_EQ(made.GetUIOrder(), 400);
        EXPECT_FALSE(made.GetDocumentID().IsNil());
        EXPECT_TRUE(made.IsPreviewAvailable()) << "the suite has a picture of it";
    }
    ApplicationInfo::Settings().SetRegistryName(before);
    EXPECT_FALSE(WorkspaceFile::CreateDefault(world.Path("no folder/_default.tvws")));
}

struct LanguageText {
    const wchar_t* text;
    const wchar_t* german;
    const wchar_t* byDefault;
};
constexpr LanguageText kLanguageTexts[] = {
    {L":[Other];de:[Andere];", L"Andere", L"Other"},
    {L"de:[a]b];en:[E]", L"a]b", L"E"},
    {L"fr:[F];it:[I];", L"F", L"F"},
    {L"plain", L"plain", L"plain"},
    {L"de:[open", L"de:[open", L"de:[open"},
    {L"de:[1];de:[2];", L"2", L"2"},
    {L"de:[];:[d];", L"", L"d"},
    {L"", L"", L""},
};

TEST(MultiLanguageStrings, FallBackToTheDefault)
{
    for (const auto& [text, german, byDefault] : kLanguageTexts) {
        const MultiLanguageString texts(text);
        EXPECT_EQ(texts.GetLangString(L"de"), TvlString(german)) << text;
        EXPECT_EQ(texts.GetDefaultLangString(), TvlString(byDefault)) << text;
        EXPECT_EQ(MultiLanguageString(texts.ToString()), texts) << text;
    }
}

TEST(MultiLanguageStrings, KnowWindowsLanguages)
{
    const std::pair<LANGID, const wchar_t*> rows[] = {{0x0409, L"en"}, {0x0407, L"de"}, {0x0c07, L"de"},
        {0x0416, L"br"}, {0x0816, L"br"}, {0x0404, L"ct"}, {0x0c04, L"ct"}, {0x0804, L"cs"}, {0x0405, L"cz"},
        {0x040a, L"es"}, {0x040c, L"fr"}, {0x0410, L"it"}, {0x0411, L"jp"}, {0x0413, L"nl"}, {0x0415, L"pl"},
        {0x0419, L"ru"}, {0x041d, L"sv"}, {0x041f, L"tr"}, {0x0412, L"en"}, {0, L"en"}};
    for (const auto& [id, name] : rows)
        EXPECT_EQ(MultiLanguageString::GetLanguageFromLANGID(id), TvlString(name)) << id;
}

}   // namespace
