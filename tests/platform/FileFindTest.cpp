// Files found by mask, copied, and marked read-only.
#include "ChildProcess.h"
#include "MemoryFiles.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {
using namespace TvlUtils::SystemIO;
namespace fs = std::filesystem;

struct MaskCase {
    const wchar_t* name;
    const wchar_t* mask;
    bool matches;
};

constexpr MaskCase kMasks[] = {
    {L"a.tmx", L"*.tmx*", true},
    {L"a.TMX2", L"*.tmx*", true},
    {L"a.tm", L"*.tmx*", false},
    {L".tmx", L"*.tmx*", true},
    {L"\u00c4.uwl", L"\u00e4.UWL*", true},
    {L"a.8bf", L"*.8b?", true},
    {L"a.8b", L"*.8b?", false},
    {L"a.8bfx", L"*.8b?", false},
    {L"abab.xab", L"*ab", true},
    {L"aXbXc", L"a*b*c", true},
    {L"aXbX", L"a*b*c", false},
    {L"name", L"*.*", true},
    {L"name", L"*", true},
    {L"name", L"", false},
    {L"", L"", true},
    {L"", L"**", true},
    {L"a[1].x", L"a[1].?", true},
};

TEST(Masks, TakeNamesInAnyCase)
{
    for (const auto& [name, mask, matches] : kMasks)
        EXPECT_EQ(File::MatchesMask(name, mask), matches) << name << L" " << mask;
}

TEST(Masks, TakeNoTimeForManyStars)
{
    const TvlString name(L'a', 5000);
    TvlString mask;
    for (int i = 0; i < 50; ++i)
        mask += L"*a";
    EXPECT_TRUE(File::MatchesMask(name, mask));
    EXPECT_FALSE(File::MatchesMask(name, mask + L"b"));
}

class Files : public testing::Test {
protected:
    TvlString Make(const std::string& name, const std::string& bytes = "content") const
    {
        const fs::path path = folder.Path() / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return At(name);
    }
    TvlString At(const std::string& name) const { return FromFilePath((folder.Path() / name).make_preferred()); }
    std::string Bytes(const std::string& name) const { return FileBytes(folder.Path() / name); }

    ScratchFolder folder;
};

TEST_F(Files, AreFoundInTheirOrder)
{
    for (const char* const name : {"b.x", "A.x", "c.y", "sub/a.x", "sub/deep.x/d.x", "z.x1"})
        Make(name);
    using Paths = std::vector<TvlString>;
    EXPECT_EQ(File::Find(At(""), L"*.x", false, false), (Paths{At("A.x"), At("b.x")}));
    EXPECT_EQ(File::Find(At(""), L"*.x*", true, false),
        (Paths{At("A.x"), At("b.x"), At("sub/a.x"), At("sub/deep.x/d.x"), At("z.x1")}));
    EXPECT_EQ(
        File::Find(At("sub"), L"*.x", true, true), (Paths{At("sub/a.x"), At("sub/deep.x"), At("sub/deep.x/d.x")}));
    EXPECT_EQ(File::Find(At("missing"), L"*", true, true), Paths());
    Paths found{At("x")};
    EXPECT_TRUE(File::Find(At("missing"), L"*", true, true, found).IsMissing());
    EXPECT_EQ(found, Paths());
    EXPECT_TRUE(File::Find(At("sub"), L"a.*", true, true, found));
    EXPECT_EQ(found, Paths{At("sub/a.x")});
    EXPECT_EQ(File::Find(At("b.x"), L"*", true, true), Paths());
}

TEST_F(Files, AreNotSoughtBehindLinks)
{
    Make("sub/a.x");
    std::error_code failed;
    fs::create_directory_symlink(folder.Path(), folder.Path() / "sub" / "round", failed);
    if (failed)
        GTEST_SKIP() << "the system makes no links: " << failed.message();
    EXPECT_EQ(File::Find(At(""), L"*.x", true, false), std::vector<TvlString>{At("sub/a.x")});
    EXPECT_TRUE(Folder::Copy(At("sub"), At("copy"), true));
    EXPECT_FALSE(Path::Exists(At("copy/round")));
}

TEST_F(Files, AreCopiedWhole)
{
    const std::string large(5'000'001, 'x');
    Make("large", large);
    Make("other", "other");
    EXPECT_TRUE(File::Copy(At("large"), At("copy"), false));
    EXPECT_TRUE(Bytes("copy") == large);
    EXPECT_TRUE(File::Copy(At("other"), At("copy"), false).Is(std::errc::file_exists));
    EXPECT_TRUE(File::Copy(At("other"), At("copy"), true));
    EXPECT_EQ(Bytes("copy"), "other");
    EXPECT_TRUE(File::Copy(At("other"), At("other"), true));
    EXPECT_EQ(Bytes("other"), "other");
    EXPECT_TRUE(File::Copy(At("missing"), At("copy"), true).IsMissing());
    EXPECT_FALSE(File::Copy(At("other"), At("missing/copy"), true));
}

TEST(CopiedFiles, AreOldOrNewAfterEveryFault)
{
    FileResult result;
    const auto prepare = [](MemoryFiles& files) {
        files.Put("from", "the new content");
        files.Put("to", "old");
    };
    const auto copy = [&] {
        result = std::errc::interrupted;
        result = File::Copy(L"from", L"to", true);
    };
    const auto check = [&](MemoryFiles& files) {
        const auto content = files.Get("to");
        EXPECT_TRUE(content == "the new content" || (!result && content == "old")) << content.value_or("nothing");
        EXPECT_EQ(files.Get("from"), "the new content");
    };
    // Open, status, open, read, write, flush, close, rename, list.
    WalkFileFaults(9, prepare, copy, check);
    WalkFullDisk(15, prepare, copy, check);
}

TEST_F(Files, HaveAReadOnlyMark)
{
    const TvlString path = Make("a");
    EXPECT_TRUE(File::IsWritable(path));
    EXPECT_TRUE(File::MakeReadonly(path));
    EXPECT_FALSE(File::IsWritable(path));
    EXPECT_FALSE(File::Copy(Make("b"), path, true));
    EXPECT_TRUE(File::MakeWritable(path));
    EXPECT_TRUE(File::IsWritable(path));
    EXPECT_FALSE(File::IsWritable(At("")));
    EXPECT_FALSE(File::MakeWritable(At("missing")));
}

TEST_F(Files, AreCopiedWithTheirFolders)
{
    Make("from/a", "1");
    Make("from/sub/b", "2");
    fs::create_directories(folder.Path() / "from" / "empty");
    Make("to/a", "older");
    EXPECT_TRUE(Folder::Copy(At("from"), At("to"), false));
    EXPECT_EQ(Bytes("to/a"), "older");
    EXPECT_EQ(Bytes("to/sub/b"), "2");
    EXPECT_TRUE(Folder::Exists(At("to/empty")));
    EXPECT_TRUE(Folder::Copy(At("from"), At("to"), true));
    EXPECT_EQ(Bytes("to/a"), "1");
    // Into a folder of its own, twice, and out of one.
    for (int round = 0; round < 2; ++round)
        EXPECT_TRUE(Folder::Copy(At("from"), At("from/inner"), true));
    EXPECT_EQ(Bytes("from/inner/sub/b"), "2");
    EXPECT_FALSE(Folder::Exists(At("from/inner/inner")));
    EXPECT_TRUE(Folder::Copy(At("from/inner"), At("from"), true));
    EXPECT_TRUE(Folder::Copy(At("from"), At("from"), true));
    EXPECT_TRUE(Folder::Copy(At("missing"), At("to"), true).IsMissing());
}

TEST_F(Files, CanBeMadeInAWritableFolder)
{
    Folder::WritableStatus status{};
    EXPECT_TRUE(Folder::IsWritable(At(""), &status));
    EXPECT_EQ(status, Folder::WritableStatus::Writable);
    EXPECT_EQ(fs::directory_iterator(folder.Path()), fs::directory_iterator()) << "nothing is left behind";
    EXPECT_FALSE(Folder::IsWritable(At("missing"), &status));
    EXPECT_EQ(status, Folder::WritableStatus::Missing);
    MemoryFiles files;
    files.AddFolder("a");
    files.Inject(2, MemoryFiles::Fault::Fail);
    EXPECT_FALSE(Folder::IsWritable(L"a", &status));
    EXPECT_EQ(status, Folder::WritableStatus::Refused);
    files.Inject(4, MemoryFiles::Fault::FailOnward);   // what was made can't be removed
    EXPECT_FALSE(Folder::IsWritable(L"a", &status));
    EXPECT_EQ(files.CountFiles(), 1u);
    files.Restart();
    EXPECT_TRUE(Folder::IsWritable(L"a", &status));
    EXPECT_EQ(files.CountFiles(), 0u) << "what an earlier one has left goes";
}

TEST(Folders, AreNotDeletedWhereNobodyCanTellWhetherTheyAreLinks)
{
    MemoryFiles files;
    files.Put("/world/folder/file", "kept");
    files.Inject(2, MemoryFiles::Fault::Fail);   // the folder above can't be listed
    EXPECT_FALSE(Folder::DeleteRecursive(L"/world/folder", true));
    EXPECT_EQ(files.Get("/world/folder/file"), "kept");
    files.Restart();
    EXPECT_TRUE(Folder::DeleteRecursive(L"/world/folder", true));
    EXPECT_EQ(files.CountFiles(), 0u);
}

}   // namespace
