// Where the user's content lies, how it moves, and who may use it.
#include "CFileLocations.h"
#include "FakeBookmarks.h"
#include "FakeWindowing.h"
#include "MemoryFiles.h"
#include "UserWorld.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPref/CPrefObject.h"

#include <gtest/gtest.h>
#include <set>

namespace {
namespace File = TvlUtils::SystemIO::File;
namespace Path = TvlUtils::SystemIO::Path;

struct Getter {
    TvlString (*folder)();
    const wchar_t* preference;
    const char* defaultFolder;   // in the user's documents
};

constexpr Getter kGetters[] = {
    {CFileLocations::GetFileLocationsArtisticMediaDir, L"DefaultArtisticMediaPath", "Tovel/Tovel/Artistic Media/"},
    {CFileLocations::GetFileLocationsBitmapPresetsDir, L"DefaultBitmapPresetsPath", "Tovel/Suite/Bitmap Presets/"},
    {CFileLocations::GetFileLocationsColorPalettesDir, L"DefaultColorPalettesPath", "Tovel/Suite/Color Palettes/"},
    {CFileLocations::GetFileLocationsExportPresetsDir, L"DefaultExportPresetsPath", "Tovel/Suite/Export Presets/"},
    {CFileLocations::GetFileLocationsEffectPresetsDir, L"DefaultEffectPreset", "Tovel/Suite/Effect Presets/"},
    {CFileLocations::GetFileLocationsFillsDir, L"DefaultFillPath", "Tovel/Suite/Fills/"},
    {CFileLocations::GetFileLocationsFontsDir, L"DefaultFontPath", "Tovel/Suite/Fonts/"},
    {CFileLocations::GetFileLocationsImageListsDir, L"DefaultImageListPath", "Tovel/Suite/Image Lists/"},
    {CFileLocations::GetFileLocationsPhotoFramesDir, L"DefaultPhotoFramesPath", "Tovel/Suite/Photo Frames/"},
    {CFileLocations::GetFileLocationsSymbolsDir, L"DefaultSymbolsPath", "Tovel/Suite/Symbols/"},
    {CFileLocations::GetFileLocationsTemplatesDir, L"DefaultTemplatesPath", "Tovel/Suite/Templates/"},
    {CFileLocations::GetFileLocationsTraysDir, L"DefaultTraysPath", "Tovel/Suite/Trays/"},
    {CFileLocations::GetFileLocationsVectorRasterDir, L"DefaultVectorRasterPath", "Tovel/Suite/Vector Raster/"},
    {CFileLocations::GetFileLocationsFindAndReplacdDir, L"DefaultFindAndReplacePath", "Tovel/Suite/Find and Replace/"},
    {CFileLocations::GetFileLocationsWorkingDir, L"DefaultWorkingPath", ""},
    {CFileLocations::GetFileLocationsPrintStylesDir, L"DefaultPrintStylesPath", "Tovel/Suite/Print Styles/"},
    {CFileLocations::GetFileLocationsBlendDir, L"DefaultBlendPath", "Tovel/Suite/Presets/Blend/"},
    {CFileLocations::GetFileLocationsTovelCloudDir, L"DefaultCloudPath", "Tovel/Cloud/"},
    {CFileLocations::GetFileLocationsContourDir, L"DefaultContourPath", "Tovel/Suite/Presets/Contour/"},
    {CFileLocations::GetFileLocationsDistortionDir, L"DefaultDistortionPath", "Tovel/Suite/Presets/Distortion/"},
    {CFileLocations::GetFileLocationsShadowDir, L"DefaultShadowPath", "Tovel/Suite/Presets/Shadow/"},
    {CFileLocations::GetFileLocationsEnvelopeDir, L"DefaultEnvelopePath", "Tovel/Suite/Presets/Envelope/"},
    {CFileLocations::GetFileLocationsVectorExtrudeDir, L"DefaultVectorExtrudePath",
        "Tovel/Suite/Presets/Vector Extrude/"},
    {CFileLocations::GetFileLocationsWritingToolsDir, L"DefaultWritingToolsPath", "Tovel/Suite/Writing Tools/"},
    // These two stand on no settings page.
    {CFileLocations::GetFileLocationsInteractiveFramesDir, L"DefaultInteractiveFramesPath",
        "Tovel/Suite/Interactive Frames"},
    {CFileLocations::GetFileLocationsObjectsDir, L"DefaultObjectsPath", "Tovel/Suite/Objects"},
};
constexpr std::size_t kLocations = 24;

class FileLocations : public testing::Test {
protected:
    using Locations = std::vector<CFileLocations::Location>;

    static TvlString Stored(const wchar_t* preference)
    {
        const auto value = CAppPrefManager::GetInstance().GetStore()->Read(TvlString(L"File Locations/") + preference);
        return value ? std::get<TvlString>(*value) : TvlString();
    }
    static void Store(const wchar_t* preference, const TvlString& folder)
    {
        CAppPrefManager::GetInstance().GetStore()->Write(TvlString(L"File Locations/") + preference, folder);
    }
    TvlString Default(const Getter& getter) const
    {
        return world.Path(std::string("user/Documents/") + getter.defaultFolder);
    }
    /// The location that the preference belongs to.
    static const TvlString& DisplayName(const wchar_t* preference)
    {
        static const Locations names = [] {
            const UserWorld other;
            return CFileLocations::GetFileLocations();
        }();
        for (std::size_t row = 0; row < kLocations; ++row)
            if (kGetters[row].preference == TvlString(preference))
                return names[row].second;
        throw std::logic_error("no such location");
    }

    const TvlString fills = DisplayName(L"DefaultFillPath");
    UserWorld world;
};

TEST_F(FileLocations, HaveDefaultsThatTheFirstQuestionStores)
{
    for (const Getter& getter : kGetters) {
        EXPECT_EQ(Stored(getter.preference), L"");
        EXPECT_EQ(getter.folder(), Default(getter));
        EXPECT_EQ(Stored(getter.preference), Default(getter));
    }
}

TEST_F(FileLocations, GiveTheStoredFolderWhileItExists)
{
    for (const Getter& getter : kGetters) {
        const TvlString chosen = world.MakeFolder("chosen");
        Store(getter.preference, chosen);
        EXPECT_EQ(getter.folder(), chosen) << getter.defaultFolder;
        world.Remove("chosen");
        EXPECT_EQ(getter.folder(), Default(getter));
        EXPECT_EQ(Stored(getter.preference), chosen);
        world.MakeFolder("chosen");
        EXPECT_EQ(getter.folder(), chosen);
    }
}

TEST_F(FileLocations, AreListedInTheirOrderAsStored)
{
    const TvlString gone = world.Folder("gone");
    Store(L"DefaultFillPath", gone);
    const Locations listed = CFileLocations::GetFileLocations();
    ASSERT_EQ(listed.size(), kLocations);
    std::set<TvlString> names;
    for (std::size_t row = 0; row < kLocations; ++row) {
        EXPECT_EQ(listed[row].first, row == 5 ? gone : Default(kGetters[row]));
        EXPECT_EQ(Stored(kGetters[row].preference), listed[row].first);
        names.insert(listed[row].second);
    }
    EXPECT_EQ(names.size(), kLocations) << "a display name stands for one location";
    EXPECT_FALSE(names.contains(L""));
}

TEST_F(FileLocations, AreSetByDisplayName)
{
    const TvlString fonts = DisplayName(L"DefaultFontPath");
    std::vector<TvlString> changed;
    const int listener = CAppPrefManager::GetInstance().AddListener(
        [&](const CPrefObjectBase& preference) { changed.push_back(preference.GetName()); });
    CFileLocations::SetFileLocations({{world.Path("a"), fills}, {world.Path("b"), L"no location"}, {TvlString(), fonts},
        {world.Folder("c"), fonts}});
    EXPECT_EQ(Stored(L"DefaultFillPath"), world.Folder("a"));
    EXPECT_EQ(Stored(L"DefaultFontPath"), world.Folder("c"));
    CFileLocations::SetFileLocation({world.Path("a"), fills});   // differs in the separator alone
    CFileLocations::SetFileLocation({TvlString(), fills});
    CFileLocations::SetFileLocation({world.Path("d"), TvlString()});
    CAppPrefManager::GetInstance().RemoveListener(listener);
    EXPECT_EQ(changed, (std::vector<TvlString>{L"File Locations/DefaultFillPath", L"File Locations/DefaultFontPath"}));
    EXPECT_EQ(Stored(L"DefaultFillPath"), world.Folder("a"));
}

TEST_F(FileLocations, KeepTheDefaultsOfTheFirstQuestion)
{
    const TvlString first = CFileLocations::GetDefaultFileLocation(fills);
    EXPECT_EQ(Path::GetFileName(first.Left(first.GetLength() - 1)), L"Fills");
    const UserWorld other;
    EXPECT_EQ(CFileLocations::GetDefaultFileLocation(fills), first);
    EXPECT_EQ(CFileLocations::GetDefaultFileLocation(L"no location"), L"");
}

TEST_F(FileLocations, WarnOnceOfMissingFolders)
{
    FakeWindowing windowing;
    CFileLocations::CheckForMissingLocations();
    CFileLocations::GetFileLocations();   // stores the defaults, which exist
    CFileLocations::CheckForMissingLocations();
    EXPECT_TRUE(windowing.boxes.empty());
    for (const Getter& getter : {kGetters[3], kGetters[5], kGetters[20]})
        Store(getter.preference, world.Folder("gone"));
    windowing.created = reinterpret_cast<HWND>(0x20);
    CFileLocations::CheckForMissingLocations();
    ASSERT_EQ(windowing.boxes.size(), 1u);
    EXPECT_EQ(windowing.boxes[0].owner, windowing.created);
    EXPECT_EQ(windowing.boxes[0].style, 0x10030u);
    EXPECT_FALSE(windowing.boxes[0].text.empty());
    EXPECT_FALSE(windowing.boxes[0].caption.empty());
    EXPECT_EQ(windowing.calls.back(), L"activate") << "the window before is active again";
    EXPECT_EQ(Stored(kGetters[5].preference), world.Folder("gone"));
}

TEST_F(FileLocations, FollowNetworkFoldersUnlessTheUserSaysNo)
{
    EXPECT_TRUE(CFileLocations::IsTrackChangesOnNetworkFolders());
    CAppPrefManager::GetInstance().GetStore()->Write(L"File Locations/TrackChangesOnNetworkFolders", false);
    EXPECT_FALSE(CFileLocations::IsTrackChangesOnNetworkFolders());
}

class Migration : public FileLocations {
protected:
    /// Migrates one location and gives the files that could not be copied.
    std::vector<TvlString> Migrate(const TvlString& name, const TvlString& to, const TvlString& from)
    {
        CFileLocations::Moves moves{{name, {to, from}}};
        std::vector<TvlString> failed;
        steps.clear();
        CFileLocations::MigrateContent(moves, [&](const MigrationStep& step) {
            steps.push_back(step);
            if (!step.problem.IsEmpty())
                failed.push_back(step.source);
        });
        newFolder = moves.begin()->second.first;
        return failed;
    }

    std::vector<MigrationStep> steps;
    TvlString newFolder;
};

TEST_F(Migration, CopiesWhatTheMasksNameWithItsFolders)
{
    for (const char* const name :
        {"old/a.fill", "old/B.FILL2", "old/deep/er/c.fillx", "old/notes.txt", "old/deep/d.fil"})
        world.MakeFile(name, name);
    world.MakeFile("new/a.fill", "older");
    EXPECT_TRUE(Migrate(fills, world.Path("new"), world.Path("old")).empty());
    EXPECT_EQ(newFolder, world.Folder("new"));
    for (const std::string name : {"a.fill", "B.FILL2", "deep/er/c.fillx"}) {
        EXPECT_EQ(world.Bytes("new/" + name), "old/" + name);
        EXPECT_TRUE(world.Has("old/" + name));
    }
    EXPECT_FALSE(world.Has("new/notes.txt"));
    EXPECT_FALSE(world.Has("new/deep/d.fil"));
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps.back().done, 3u);
    EXPECT_EQ(steps.back().count, 3u);
    EXPECT_EQ(steps.back().displayName, fills);
}

TEST_F(Migration, CopiesFilesOfSeveralMasksOnce)
{
    for (const char* const name :
        {"old/x/a.ttf", "old/x/b.otf", "old/x/c.ttf.otf", "old/d.pfb", "old/e.ttc", "old/f.txt"})
        world.MakeFile(name);
    world.MakeFolder("new");
    EXPECT_TRUE(Migrate(DisplayName(L"DefaultFontPath"), world.Path("new"), world.Folder("old")).empty());
    EXPECT_EQ(steps.size(), 5u);
    EXPECT_TRUE(world.Has("new/x/c.ttf.otf"));
}

TEST_F(Migration, PassesOverWhatItCanNotMove)
{
    world.MakeFile("old/a.fill");
    EXPECT_TRUE(Migrate(fills, world.Path("missing"), world.Path("old")).empty());
    EXPECT_FALSE(world.Has("missing"));
    EXPECT_TRUE(Migrate(fills, world.Path("old"), world.Folder("old")).empty());
    EXPECT_TRUE(steps.empty());
    world.MakeFolder("new");
    Migrate(fills, world.Path("new"), world.Path("missing"));
    EXPECT_EQ(newFolder, world.Path("new")) << "left as it was given";
    for (const wchar_t* const maskless : {L"DefaultWorkingPath", L"DefaultCloudPath"})
        Migrate(DisplayName(maskless), world.Path("new"), world.Path("old"));
    Migrate(L"no location", world.Path("new"), world.Path("old"));
    EXPECT_TRUE(steps.empty());
    EXPECT_FALSE(world.Has("new/a.fill"));
}

TEST_F(Migration, NeverDescendsIntoItsOwnDestination)
{
    world.MakeFile("old/a.fill");
    world.MakeFile("old/sub/b.fill");
    world.MakeFile("old/new/there.fill");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(Migrate(fills, world.Path("old/new"), world.Path("old")).empty());
        EXPECT_EQ(steps.size(), 2u);
    }
    EXPECT_TRUE(world.Has("old/new/sub/b.fill"));
    EXPECT_FALSE(world.Has("old/new/new"));
    // The other way round: the new folder holds the old one.
    EXPECT_TRUE(Migrate(fills, world.Path("old"), world.Path("old/sub")).empty());
    EXPECT_TRUE(world.Has("old/b.fill"));
}

TEST_F(Migration, LeavesTheSourceWritableAndTheCopyReadOnly)
{
    const TvlString source = world.MakeFile("old/a.fill", "kept");
    world.MakeFolder("new");
    ASSERT_TRUE(File::MakeReadonly(source));
    EXPECT_TRUE(Migrate(fills, world.Path("new"), world.Path("old")).empty());
    EXPECT_TRUE(File::IsWritable(source));
    EXPECT_FALSE(File::IsWritable(world.Path("new/a.fill")));
    EXPECT_EQ(world.Bytes("new/a.fill"), "kept");
    // A read-only copy is not replaced, and what comes behind it is.
    world.MakeFile("old/a.fill", "changed");
    world.MakeFile("old/b.fill");
    EXPECT_EQ(Migrate(fills, world.Path("new"), world.Path("old")), std::vector<TvlString>{source});
    EXPECT_EQ(world.Bytes("new/a.fill"), "kept");
    EXPECT_TRUE(world.Has("new/b.fill"));
    File::MakeWritable(world.Path("new/a.fill"));
}

TEST_F(Migration, GoesOnAfterAFailureAndLeavesNoHalfFile)
{
    const std::string names[] = {"a.fill", "b.fill", "sub/c.fill"};
    std::size_t copied = 0;
    const auto prepare = [&](MemoryFiles& files) {
        for (const std::string& name : names)
            files.Put("old/" + name, "the content of " + name);
        files.AddFolder("new");
    };
    const auto migrate = [&] {
        CFileLocations::Moves moves{{fills, {L"new", L"old"}}};
        copied = 0;
        CFileLocations::MigrateContent(
            moves, [&](const MigrationStep& step) { copied += step.problem.IsEmpty() ? 1 : 0; });
    };
    const auto check = [&](MemoryFiles& files) {
        std::size_t found = 0;
        for (const std::string& name : names) {
            const auto content = files.Get("new/" + name);
            EXPECT_TRUE(!content || content == "the content of " + name) << *content;
            EXPECT_TRUE(files.Get("old/" + name));
            found += content ? 1 : 0;
        }
        EXPECT_GE(found, copied);
    };
    constexpr std::size_t kRecorded = 30;
    WalkFileFaults(kRecorded, prepare, migrate, check);
    // One failure of a file costs that file alone; only the look at the folders comes before.
    std::size_t fewest = std::size(names);
    WalkFaultPoints(kRecorded, [&](std::size_t point) {
        return RunOnFaultyFiles(
            prepare, [&](MemoryFiles& files) { files.Inject(point, MemoryFiles::Fault::Fail); }, migrate,
            [&](MemoryFiles& files) {
                check(files);
                if (point > 6)
                    fewest = std::min(fewest, copied);
            });
    });
    EXPECT_EQ(fewest, std::size(names) - 1);
}

class AccessGrants : public FileLocations {
protected:
    static constexpr const wchar_t* kUserFolder = L"DefaultUserSelectedDocumentsPath";
    static constexpr const wchar_t* kUserGrant = L"UserSelectedDocuments";

    FakeWindowing windowing;
};

TEST_F(AccessGrants, AreNotNeededWhereTheSystemHasNone)
{
    EXPECT_TRUE(CFileLocations::StartAccessResource());
    bool called = false;
    EXPECT_FALSE(CFileLocations::RequestAccessToUserSelectedFolder(true, [&](TvlString&) { return called = true; }));
    EXPECT_FALSE(called);
    EXPECT_TRUE(windowing.boxes.empty());
}

TEST_F(AccessGrants, AreOpenedAtStartAndForgottenWhenTheyAreGone)
{
    FakeBookmarks bookmarks;
    const TvlString fonts = DisplayName(L"DefaultFontPath");
    Store(L"DefaultFillPath", L"granted");
    Store(L"DefaultFontPath", L"lost");
    bookmarks.grants = {{L"granted", fills}, {L"user", kUserGrant}};
    EXPECT_FALSE(CFileLocations::StartAccessResource()) << "the user has granted no folder";
    EXPECT_EQ(bookmarks.started, (std::set<FakeBookmarks::Grant>{{L"granted", fills}, {L"lost", fonts}}));
    EXPECT_EQ(Stored(L"DefaultFillPath"), L"granted");
    EXPECT_EQ(Stored(L"DefaultFontPath"), L"");
    Store(kUserFolder, L"user");
    EXPECT_TRUE(CFileLocations::StartAccessResource());
    Store(kUserFolder, L"elsewhere");
    EXPECT_FALSE(CFileLocations::StartAccessResource());
    EXPECT_EQ(Stored(kUserFolder), L"");
}

TEST_F(AccessGrants, MoveWithTheirFolders)
{
    FakeBookmarks bookmarks;
    CFileLocations::SetFileLocation({L"one", fills});
    CFileLocations::SetFileLocation({L"two", fills});
    EXPECT_EQ(bookmarks.grants, (std::set<FakeBookmarks::Grant>{{Path::AddBackslash(L"two"), fills}}));
    bookmarks.required = false;
    CFileLocations::SetFileLocation({L"three", fills});
    EXPECT_EQ(bookmarks.grants.size(), 1u);
}

TEST_F(AccessGrants, StandWhileTheGrantedFolderIsWritable)
{
    FakeBookmarks bookmarks;
    Store(kUserFolder, world.MakeFolder("granted"));
    EXPECT_TRUE(CFileLocations::RequestAccessToUserSelectedFolder(true, {}));
    EXPECT_TRUE(windowing.boxes.empty());
    EXPECT_TRUE(bookmarks.grants.empty());
}

TEST_F(AccessGrants, AreAskedOfTheUser)
{
    FakeBookmarks bookmarks;
    const TvlString chosen = world.MakeFolder("chosen");
    const auto choose = [&](TvlString& folder) {
        EXPECT_EQ(folder, L"");
        folder = world.Path("chosen");
        return true;
    };
    windowing.answer = 2;   // Cancel
    EXPECT_FALSE(CFileLocations::RequestAccessToUserSelectedFolder(true, choose));
    ASSERT_EQ(windowing.boxes.size(), 1u);
    EXPECT_EQ(windowing.boxes[0].style, 49u);
    const std::wstring& text = windowing.boxes[0].text;
    EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), 1);
    EXPECT_NE(text.find(GetAppSkinSettingData().GetAppUIName().Std()), std::wstring::npos);
    EXPECT_FALSE(CFileLocations::RequestAccessToUserSelectedFolder(false, {}));
    EXPECT_FALSE(CFileLocations::RequestAccessToUserSelectedFolder(false, [](TvlString&) { return false; }));
    EXPECT_EQ(Stored(kUserFolder), L"");
    windowing.answer = 1;
    world.MakeFile("before/a.fill", "moved");
    Store(L"DefaultFillPath", world.Folder("before"));
    EXPECT_TRUE(CFileLocations::RequestAccessToUserSelectedFolder(true, choose));
    EXPECT_EQ(Stored(kUserFolder), chosen);
    EXPECT_EQ(Stored(L"DefaultFillPath"), Default(kGetters[5])) << "all locations go back to their defaults";
    EXPECT_EQ(world.Bytes("user/Documents/Tovel/Suite/Fills/a.fill"), "moved");
    EXPECT_EQ(bookmarks.grants.size(), kLocations + 1);
    EXPECT_TRUE(bookmarks.grants.contains({chosen, kUserGrant}));
}

TEST_F(AccessGrants, TakeTheDocumentsFolderWhereNoneIsDemanded)
{
    FakeBookmarks bookmarks;
    bookmarks.required = false;
    const TvlString documents = world.MakeFolder("user/Documents");
    EXPECT_TRUE(CFileLocations::RequestAccessToUserSelectedFolder(true, {}));
    EXPECT_TRUE(windowing.boxes.empty());
    EXPECT_EQ(Stored(kUserFolder), documents);
    EXPECT_TRUE(bookmarks.grants.contains({documents, kUserGrant}));
}

}   // namespace
