// The file layer: the system's and the one in memory hold the same contract.
#include "siblings/TvlUtils/FileLayer.h"

#include "ChildProcess.h"
#include "MemoryFiles.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using namespace TvlUtils::SystemIO;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

std::string Read(FileHandle& file, long long offset, std::size_t size)
{
    std::string bytes(size, '\0');
    std::size_t done = 0;
    EXPECT_TRUE(file.ReadAt(offset, bytes.data(), size, done));
    return bytes.substr(0, done);
}

bool Write(FileHandle& file, long long offset, std::string_view bytes)
{
    std::size_t done = 0;
    return file.WriteAt(offset, bytes.data(), bytes.size(), done) && done == bytes.size();
}

void MakeFile(const fs::path& path, std::string_view bytes)
{
    std::unique_ptr<FileHandle> file;
    ASSERT_TRUE(FileLayer::Get().Open(path, OpenMode::CreateNew, file));
    EXPECT_TRUE(Write(*file, 0, bytes));
    EXPECT_TRUE(file->Flush());
    EXPECT_TRUE(file->Close());
}

void ExpectOpenContract(const fs::path& folder)
{
    FileLayer& files = FileLayer::Get();
    const fs::path path = folder / u8"größe.txt";
    std::unique_ptr<FileHandle> file;
    EXPECT_TRUE(files.Open(path, OpenMode::Read, file).IsMissing());
    EXPECT_TRUE(files.Open(path, OpenMode::ReadWrite, file).IsMissing());
    EXPECT_TRUE(files.Open(folder / "none" / "a", OpenMode::CreateNew, file).IsMissing());
    EXPECT_TRUE(files.Open(folder, OpenMode::Read, file).Is(std::errc::is_a_directory));
    EXPECT_FALSE(file);

    MakeFile(path, "0123456789");
    EXPECT_TRUE(files.Open(path, OpenMode::CreateNew, file).Is(std::errc::file_exists));
    ASSERT_TRUE(files.Open(path, OpenMode::ReadWrite, file));
    EXPECT_EQ(Read(*file, 4, 100), "456789");
    EXPECT_EQ(Read(*file, 100, 1), "");
    EXPECT_TRUE(Write(*file, 8, "abcd"));
    EXPECT_EQ(Read(*file, 0, 100), "01234567abcd");
    EXPECT_TRUE(file->Close());

    ASSERT_TRUE(files.Open(path, OpenMode::Append, file));
    std::unique_ptr<FileHandle> other;
    ASSERT_TRUE(files.Open(path, OpenMode::Append, other));
    EXPECT_TRUE(Write(*file, 0, "ef") && Write(*other, 0, "gh") && Write(*file, 2, "ij"));
    EXPECT_EQ(Read(*file, 10, 100), "cdefghij");
    other.reset();
    EXPECT_TRUE(file->Close());

    ASSERT_TRUE(files.Open(path, OpenMode::Read, file));
    EXPECT_EQ(Read(*file, 10, 2), "cd");
    EXPECT_FALSE(Write(*file, 0, "x"));
    file.reset();
    FileStatus status;
    EXPECT_TRUE(files.Stat(path, status));
    EXPECT_EQ(status.size, 18);
    EXPECT_TRUE(status.kind == FileKind::File && !status.isReadOnly);

    EXPECT_TRUE(files.SetReadOnly(path, true));
    EXPECT_TRUE(files.Stat(path, status) && status.isReadOnly);
    EXPECT_TRUE(files.SetReadOnly(path, false));
    EXPECT_TRUE(files.Stat(path, status) && !status.isReadOnly);
    EXPECT_TRUE(files.Remove(path));
    ASSERT_TRUE(files.Open(path, OpenMode::Append, file));
    EXPECT_TRUE(Write(*file, 100, "new"));
    EXPECT_EQ(Read(*file, 0, 100), "new");
    EXPECT_TRUE(file->Close());
    EXPECT_TRUE(files.Remove(path));
}

std::vector<std::string> Names(const fs::path& folder)
{
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(FileLayer::Get().List(folder, entries));
    std::vector<std::string> names;
    for (const FolderEntry& entry : entries)
        names.push_back((entry.kind == FileKind::Folder ? "folder " : "file ") + entry.name.string());
    return names;
}

void ExpectNamesContract(const fs::path& folder)
{
    FileLayer& files = FileLayer::Get();
    const fs::path inner = folder / "inner";
    EXPECT_TRUE(files.MakeFolder(inner / "deep").IsMissing());
    EXPECT_TRUE(files.MakeFolder(inner));
    EXPECT_TRUE(files.MakeFolder(inner).Is(std::errc::file_exists));
    MakeFile(inner / "a", "1");
    MakeFile(inner / "b", "22");
    EXPECT_THAT(Names(inner), UnorderedElementsAre("file a", "file b"));
    EXPECT_TRUE(files.Remove(inner).Is(std::errc::directory_not_empty));

    EXPECT_TRUE(files.Rename(inner / "a", inner / "b"));
    FileStatus status;
    EXPECT_TRUE(files.Stat(inner / "b", status) && status.size == 1) << "a file of that name is replaced";
    EXPECT_TRUE(files.Rename(inner / "a", inner / "c").IsMissing());
    EXPECT_TRUE(files.Rename(inner, folder / "other"));
    EXPECT_THAT(Names(folder), UnorderedElementsAre("folder other"));
    EXPECT_THAT(Names(folder / "other"), UnorderedElementsAre("file b"));

    std::vector<FolderEntry> entries;
    EXPECT_TRUE(files.List(inner, entries).IsMissing());
    EXPECT_TRUE(files.Remove(inner).IsMissing());
    EXPECT_TRUE(files.Stat(inner, status).IsMissing());
    EXPECT_TRUE(files.Stat(folder / "other", status) && status.kind == FileKind::Folder);
    EXPECT_TRUE(files.Remove(folder / "other" / "b"));
    EXPECT_TRUE(files.Remove(folder / "other"));
}

TEST(FileLayer, HoldsItsContractOnTheSystemsFiles)
{
    const ScratchFolder folder;
    ExpectOpenContract(folder.Path());
    ExpectNamesContract(folder.Path());
    std::unique_ptr<FileHandle> file;
    EXPECT_EQ(
        FileLayer::Get().Open(folder.Path() / "none", OpenMode::Read, file).Reason(), L"No such file or directory");
}

TEST(FileLayer, HoldsItsContractInMemory)
{
    MemoryFiles files;
    files.AddFolder("folder");
    ExpectOpenContract("folder");
    ExpectNamesContract("folder");
}

// What the fault walks rest upon: writers that forget something are found out.

FileResult WriteInPlace(const fs::path& path, std::string_view bytes)
{
    std::unique_ptr<FileHandle> file;
    FileResult result = FileLayer::Get().Open(path, OpenMode::ReadWrite, file);
    std::size_t done = 0;
    for (std::size_t at = 0; result && at < bytes.size(); at += done)
        result = file->WriteAt(static_cast<long long>(at), bytes.data() + at, bytes.size() - at, done);
    return result ? file->Close() : result;
}

FileResult WriteAsideWithoutFlush(const fs::path& path, std::string_view bytes)
{
    const fs::path aside = "folder/aside";
    std::unique_ptr<FileHandle> file;
    FileResult result = FileLayer::Get().Open(aside, OpenMode::CreateNew, file);
    file.reset();
    if (result)
        result = WriteInPlace(aside, bytes);
    return result ? FileLayer::Get().Rename(aside, path) : result;
}

/// Faults after which neither the old nor the new content is there.
template <class Writer>
int CountLosses(Writer write)
{
    int losses = 0;
    WalkFileFaults(
        3, [](MemoryFiles& files) { files.Put("folder/a", "old content"); },
        [&] { static_cast<void>(write("folder/a", "something new")); },
        [&](const MemoryFiles& files) {
            const std::string content = files.Get("folder/a").value_or("");
            losses += content != "old content" && content != "something new";
        });
    return losses;
}

TEST(FileLayer, FaultWalksFindWritersThatLoseContent)
{
    EXPECT_GT(CountLosses(WriteInPlace), 0);
    EXPECT_GT(CountLosses(WriteAsideWithoutFlush), 0);
    EXPECT_EQ(CountLosses([](const fs::path& path, std::string_view) {
        FileStatus status;
        for (int i = 0; i < 3; ++i)
            static_cast<void>(FileLayer::Get().Stat(path, status));
        return FileResult();
    }),
        0);
}

TEST(FileLayer, AShortWriteHappensInTheNextWriteThatCanBeCutOrNowhere)
{
    MemoryFiles files;
    files.Put("folder/a", "0123456789");
    FileStatus status;
    // A status, an open, writes of one byte and of four, and a close.
    const auto operate = [&] {
        std::unique_ptr<FileHandle> file;
        EXPECT_TRUE(files.Stat("folder/a", status) && files.Open("folder/a", OpenMode::ReadWrite, file));
        std::size_t one = 0;
        std::size_t four = 0;
        EXPECT_TRUE(file->WriteAt(0, "x", 1, one) && file->WriteAt(1, "xxxx", 4, four) && file->Close());
        return one + four;
    };
    for (const auto& [point, at, written] : {std::tuple(1u, 4u, 3u), {3u, 4u, 3u}, {4u, 4u, 3u}, {5u, 0u, 5u}}) {
        files.Inject(point, MemoryFiles::Fault::ShortWrite);
        EXPECT_EQ(operate(), written) << point;
        EXPECT_EQ(files.FaultPoint(), at) << point;
        EXPECT_EQ(files.FaultReached(), at > 0) << point;
        files.Restart();
    }
}

TEST(FileLayer, InMemoryNamesAreLostThatNoRenamingHasFlushed)
{
    MemoryFiles files;
    files.Put("folder/moved", "moved");
    files.Put("folder/removed", "removed");
    files.Put("folder/below/gone", "gone");
    files.Inject(1000, MemoryFiles::Fault::StopUnnamed);
    EXPECT_TRUE(files.MakeFolder("folder/made"));
    EXPECT_TRUE(files.Remove("folder/below/gone"));
    MakeFile("folder/made/lost", "lost");
    EXPECT_TRUE(files.Rename("folder/moved", "folder/made/kept"));
    MakeFile("folder/made/unnamed", "unnamed");
    EXPECT_TRUE(files.Remove("folder/removed"));
    files.EndProcess();
    files.Restart();
    EXPECT_EQ(files.Get("folder/made/kept"), "moved");
    EXPECT_EQ(files.Get("folder/made/lost"), "lost") << "flushed with what was renamed behind it";
    EXPECT_FALSE(files.Get("folder/made/unnamed"));
    EXPECT_EQ(files.Get("folder/moved"), "moved") << "under both names: the folder that it left was not flushed";
    EXPECT_EQ(files.Get("folder/removed"), "removed");
    EXPECT_EQ(files.Get("folder/below/gone"), "gone");
}

}   // namespace
