// Archives that are broken on purpose: refused or listed, and nothing else.
#include "MemoryFiles.h"
#include "WorkspaceWorld.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FileStat.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

/// Those that open; all others are refused.
const std::set<std::string> kOpening = {
    "good", "metadata", "only_end",
    "streamed",   // sizes behind the bytes, a folder, and a comment with the mark of an end

    "name_14",   // a mark that turns the direction of letters
    "name_19",   // the same name in capitals
};

class HostileContainers : public WorkspaceWorld {
protected:
    /// Whether it opens; goes through everything in it.
    bool Use(const TvlString& path)
    {
        const WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
        for (const TvlString& name : container.GetFileNames(L".*", true)) {
            EXPECT_EQ(name.Find(L".."), -1);
            EXPECT_EQ(name.FindOneOf(L":\\"), -1);
            EXPECT_NE(name.GetAt(0), L'/');
            const bool isRead = static_cast<bool>(container.OpenFile(name, false));
            EXPECT_EQ(container.ExtractFile(name, world.Path("out/extracted")), isRead);
        }
        WorkspaceFile file(path);
        WorkspaceFileExportSettings settings;
        WorkspaceFile::ReadExportSettings(path, settings);
        return static_cast<bool>(container);
    }
    bool UseIn(MemoryFiles& files, const std::string& bytes)
    {
        const TvlString path = world.Path("in/hostile.tvws");
        files.Put(TvlUtils::SystemIO::ToFilePath(path), bytes);
        return Use(path);
    }
    TvlString Put(const std::string& bytes) { return world.MakeFile("in/hostile.tvws", bytes); }
    HostileContainers() { world.MakeFolder("out"); }
};

TEST_F(HostileContainers, AreRefusedOrListed)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CONTAINER_SEEDS)) {
        const TvlString path = Put(FileBytes(entry.path()));
        log.clear();
        const std::string name = entry.path().stem().string();
        const bool opens = Use(path);
        const bool isKnown = !name.starts_with("flip_");   // a flip may do anything
        if (isKnown) {
            EXPECT_EQ(opens, kOpening.contains(name))
                << name << ' ' << (log.empty() ? "" : TvlPlatform::ToUtf8(log.front()));
        }
        EXPECT_TRUE(opens || !log.empty()) << name << " is refused without a reason";
        ++files;
    }
    EXPECT_GT(files, 50);
    std::size_t made = 0;
    for (const auto& entry :
        std::filesystem::recursive_directory_iterator(TvlUtils::SystemIO::ToFilePath(world.Path(""))))
        made += entry.is_regular_file();
    EXPECT_LE(made, 2u) << "nothing but the archive and what was extracted";
}

/// A workspace with a piece of everything.
std::string WholeWorkspace(UserWorld& world)
{
    const TvlString path = world.Path("whole.tvws");
    WorkspaceFile::CreateDefault(path);
    WorkspaceFile file(path);
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += std::to_string(i * i) + "\n";
    EXPECT_TRUE(file.AddFile(world.MakeFile("text", text), kSettings));
    EXPECT_TRUE(file.AddFile(world.MakeFile("stored", "ab"), L"content/icons/a.ico"));
    return FileBytes(TvlUtils::SystemIO::ToFilePath(path));
}

TEST_F(HostileContainers, AreAnyCutOfAWorkspace)
{
    const std::string whole = WholeWorkspace(world);
    MemoryFiles files;
    files.AddFolder(TvlUtils::SystemIO::ToFilePath(world.Path("out")));
    for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 300)
        EXPECT_FALSE(UseIn(files, whole.substr(0, size))) << size;
}

TEST_F(HostileContainers, AreWorkspacesWithFlippedBits)
{
    const std::string whole = WholeWorkspace(world);
    MemoryFiles files;
    files.AddFolder(TvlUtils::SystemIO::ToFilePath(world.Path("out")));
    std::mt19937 random(5);
    int opened = 0;
    constexpr int kTries = 2000;
    for (int i = 0; i < kTries; ++i) {
        std::string flipped = whole;
        // Every other one near the end, where the table is.
        const std::size_t range = i % 2 ? whole.size() : std::min<std::size_t>(whole.size(), 400);
        flipped[whole.size() - 1 - random() % range] ^= static_cast<char>(1 << random() % 8);
        opened += UseIn(files, flipped);
    }
    EXPECT_GT(opened, 0);
    EXPECT_LT(opened, kTries);
}

TEST_F(HostileContainers, UnpackNoMoreThanAllowed)
{
    const TvlString path = world.Path("bomb.tvws");
    constexpr std::size_t kAllowed = std::size_t{64} << 20;
    {
        const std::string zeros(kAllowed + 1, '\0');
        WorkspaceContainer container = WorkspaceContainer::Create(path);
        container.SetMaxEntryBytes(kAllowed + 1);
        EXPECT_TRUE(container.AddFile(kSettings, StreamOf(zeros), false, nullptr));
        EXPECT_TRUE(container.AddFile(kConfiguration, StreamOf(zeros.substr(1)), false, nullptr));
        EXPECT_TRUE(container.Close());
    }
    EXPECT_LT(TvlUtils::SystemIO::File::GetFileStat(path).size, 300'000);
    WorkspaceFile file(path);
    EXPECT_EQ(file.GetFilesInDirectory(L".*").size(), 3u);
    EXPECT_FALSE(file.GetFile(kSettings, world.Path("out/settings")));
    EXPECT_FALSE(log.empty());
    EXPECT_FALSE(world.Has("out/settings"));
    EXPECT_TRUE(file.GetFile(kConfiguration, world.Path("out/settings"))) << "one byte less";
}

TEST_F(HostileContainers, RefuseLinks)
{
    std::string bytes = FileBytes(std::filesystem::path(CONTAINER_SEEDS) / "good.tvws");
    const std::size_t record = bytes.find("PK\1\2");
    bytes[record + 41] = static_cast<char>(0xA0);   // the upper byte of the file's type and mode: a symbolic link
    EXPECT_FALSE(Use(Put(bytes)));
    bytes[record + 41] = static_cast<char>(0x80);   // a file
    EXPECT_TRUE(Use(Put(bytes)));
}

TEST_F(HostileContainers, HaveNoMoreEntriesThanAllowed)
{
    const TvlString path = world.Path("many.tvws");
    WorkspaceContainer container = WorkspaceContainer::Create(path);
    // One place is left for the properties.
    for (std::size_t i = 0; i + 1 < DocContainer::kMaxEntries; ++i)
        container.CreateFileW(L"content/" + TvlString(std::to_wstring(i)), false, false, nullptr).Write("x", 1);
    EXPECT_TRUE(container.Close());
    container = WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
    EXPECT_EQ(container.GetFileNames(L"content/.*", true).size(), DocContainer::kMaxEntries - 1);
    EXPECT_TRUE(container.AddFile(L"content/1", StreamOf("y"), false, nullptr)) << "in place of another";
    EXPECT_FALSE(container.AddFile(L"content/more", StreamOf("y"), false, nullptr));
}

TEST_F(HostileContainers, HaveNoNamesThatMeanMoreThanAFile)
{
    WorkspaceContainer container = WorkspaceContainer::Create(world.Path("names.tvws"));
    for (const wchar_t* name :
        {L"content/CON", L"content/con.ico", L"nul .ico", L"CONIN$", L"conout$.txt", L"com\u00B9.ico", L"LPT\u00B3",
            L"Aux /a.ico", L"a\u001bb.ico", L"a\u0080.ico", L"a\u009b1m.ico", L"a\u009f"})
        EXPECT_FALSE(container.AddFile(name, StreamOf("x"), false, nullptr)) << TvlPlatform::ToUtf8(name);
    for (const wchar_t* name :
        {L"content/cone.ico", L"a con.ico", L"com\u2074", L"conin", L"a\u00a0b.ico", L"\u00c2\u00a9.ico"})
        EXPECT_TRUE(container.AddFile(name, StreamOf("x"), false, nullptr)) << TvlPlatform::ToUtf8(name);
}

TEST_F(HostileContainers, MatchNamesInBoundedTime)
{
    const TvlString name(std::wstring(1000, L'a'));
    const TvlString path = Make("long.tvws", {{name.c_str(), "x"}});
    const WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
    std::wstring expression;
    for (int i = 0; i < 200; ++i)
        expression += L"a*.*";
    EXPECT_TRUE(container.GetFileNames(expression + L"b", true).empty());
    EXPECT_EQ(container.GetFileNames(expression, true).size(), 2u);
    struct Row {
        const wchar_t* pattern;
        bool isExpression;
        std::size_t count;
    };
    for (const auto& [pattern, isExpression, count] :
        {Row{L"metadata/metadata.xml", true, 1}, Row{L"metadata", true, 0}, Row{L"metadata/.*", true, 1},
            Row{L"metadata/*", false, 1}, Row{L"*", true, 0}, Row{L"", true, 0}})
        EXPECT_EQ(container.GetFileNames(pattern, isExpression).size(), count) << pattern;
}

}   // namespace
