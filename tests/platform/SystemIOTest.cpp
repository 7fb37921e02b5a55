// Whole files and paths.
#include "siblings/TvlUtils/SystemIO.h"

#include "ChildProcess.h"
#include "MemoryFiles.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {
using namespace TvlUtils::SystemIO;
using namespace std::string_literals;
namespace fs = std::filesystem;

const std::string kOld = "the old content, which is longer\n";
const std::string kNew = "new\0content"s;

std::size_t CountFiles(const fs::path& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(WriteAside, LeavesOldOrNewContentAfterEveryFault)
{
    FileResult result;
    const auto prepare = [](MemoryFiles& files) { files.Put("folder/a.xml", kOld); };
    const auto write = [&] {
        result = std::errc::interrupted;   // what stays when the process ends
        result = File::WriteAside(L"folder/a.xml", kNew);
    };
    const auto check = [&](MemoryFiles& files) {
        const auto content = files.Get("folder/a.xml");
        EXPECT_TRUE(result ? content == kNew : result.Is(std::errc::interrupted) || content == kOld);
        EXPECT_TRUE(content == kOld || content == kNew);
        EXPECT_TRUE(File::WriteAside(L"folder/a.xml", kOld));
        EXPECT_EQ(files.CountFiles(), 1u) << "no leftovers after the next success";
    };
    // Status, open, write, flush, close, rename, list.
    WalkFileFaults(7, prepare, write, check);
    WalkFullDisk(kNew.size(), prepare, write, check);
}

#ifndef _WIN32
TEST(WriteAside, KeepsTheRightsOfTheFileThatItReplaces)
{
    const ScratchFolder folder;
    const auto rightsOf = [](const fs::path& path) { return fs::status(path).permissions(); };
    const fs::path usual = folder.Path() / "usual";
    std::ofstream(usual) << kOld;
    const fs::path fresh = folder.Path() / "fresh";
    EXPECT_TRUE(File::WriteAside(FromFilePath(fresh), kNew));
    EXPECT_EQ(rightsOf(fresh), rightsOf(usual));

    for (const unsigned rights : {0600u, 0640u, 0644u, 0666u, 0755u}) {
        const fs::path path = folder.Path() / std::to_string(rights);
        const fs::path copy = folder.Path() / ("copy of " + std::to_string(rights));
        for (const fs::path& made : {path, copy}) {
            std::ofstream(made) << kOld;
            fs::permissions(made, static_cast<fs::perms>(rights));
        }
        EXPECT_TRUE(File::WriteAside(FromFilePath(path), kNew));
        EXPECT_TRUE(File::Copy(FromFilePath(usual), FromFilePath(copy), true));
        for (const fs::path& made : {path, copy})
            EXPECT_EQ(rightsOf(made), static_cast<fs::perms>(rights)) << made;
    }
}
#endif

TEST(WriteAside, TakesItsFileAwayWhenOneOperationFails)
{
    WalkFaultPoints(7, [](std::size_t point) {
        return RunOnFaultyFiles([](MemoryFiles& files) { files.Put("folder/a.xml", kOld); },
            [&](MemoryFiles& files) { files.Inject(point, MemoryFiles::Fault::Fail); },
            [] { static_cast<void>(File::WriteAside(L"folder/a.xml", kNew)); },
            [](MemoryFiles& files) { EXPECT_EQ(files.CountFiles(), 1u); });
    });
}

TEST(WriteAside, LeavesOldOrNewContentWhereverTheProcessEnds)
{
    const ScratchFolder folder;
    const fs::path path = folder.Path() / "a.xml";
    ChildProcess child{"file_writer", {TvlPlatform::ToUtf8(path.wstring()), "new content"}, {}, {}};
    WalkFaultPoints(7, [&](std::size_t point) {
        std::ofstream(path, std::ios::binary) << kOld;
        child.environment["TVL_FILE_STOP_AT"] = std::to_string(point);
        const int exitCode = RunProgram(child).exitCode;
        EXPECT_TRUE(exitCode == 0 || exitCode == kFileStopExitCode) << exitCode;
        const std::string content = FileBytes(path);
        EXPECT_TRUE(content == "new content" || (exitCode != 0 && content == kOld)) << content;

        EXPECT_TRUE(File::WriteAside(path.wstring(), kNew));
        EXPECT_EQ(FileBytes(path), kNew);
        EXPECT_EQ(CountFiles(folder.Path()), 1u);
        return exitCode == kFileStopExitCode;
    });
}

TEST(WriteAside, ManyWritersAtOnceLeaveOneWholeContent)
{
    const ScratchFolder folder;
    const TvlString path = (folder.Path() / "a.xml").wstring();
    {
        std::vector<std::jthread> writers;
        for (char c = 'a'; c < 'e'; ++c)
            writers.emplace_back([&path, c] {
                for (int i = 0; i < 20; ++i)
                    EXPECT_TRUE(File::WriteAside(path, std::string(10'000, c)));
            });
    }
    std::string bytes;
    EXPECT_TRUE(File::ReadAll(path, bytes));
    EXPECT_EQ(bytes, std::string(10'000, bytes.at(0)));
    EXPECT_EQ(CountFiles(folder.Path()), 1u);
}

TEST(WriteAside, RefusesWhatMustNotBeReplaced)
{
    const ScratchFolder folder;
    const TvlString path = (folder.Path() / "a.xml").wstring();
    EXPECT_TRUE(File::WriteAside(path, kOld));
    EXPECT_TRUE(FileLayer::Get().SetReadOnly(path.Std(), true));
    EXPECT_TRUE(File::WriteAside(path, kNew).Is(std::errc::permission_denied));
    EXPECT_TRUE(FileLayer::Get().SetReadOnly(path.Std(), false));
    EXPECT_FALSE(File::WriteAside(folder.Path().wstring(), kNew)) << "a folder";
    EXPECT_TRUE(File::WriteAside((folder.Path() / "none" / "a").wstring(), kNew).IsMissing());
    EXPECT_FALSE(File::WriteAside(path + std::wstring(1, L'\0') + L"b", kNew)) << "a zero in the name";
    EXPECT_EQ(FileBytes(path.Std()), kOld);
    EXPECT_EQ(CountFiles(folder.Path()), 1u);
}

TEST(WriteAside, LeavesForeignFilesAlone)
{
    MemoryFiles files;
    const char* const kForeign[] = {"folder/a.0123456789abcdeg.aside", "folder/a.0123.aside", "folder/a.aside",
        "folder/b.0123456789abcdef.aside", "folder/aa.0123456789abcdef.aside"};
    for (const char* name : kForeign)
        files.Put(name, "");
    files.Put("folder/a.0123456789abcdef.aside", "");
    EXPECT_TRUE(File::WriteAside(L"folder/a", kNew));
    EXPECT_EQ(files.CountFiles(), std::size(kForeign) + 1);
}

TEST(ReadAll, GivesTheWholeFileOrNothing)
{
    std::string bytes;
    FileResult result;
    WalkFileFaults(
        4, [](MemoryFiles& files) { files.Put("a", std::string(200'000, 'x')); },
        [&] {
            result = std::errc::interrupted;   // what stays when the process ends
            result = File::ReadAll(L"a", bytes);
        },
        [&](MemoryFiles&) {
            EXPECT_TRUE(result.Is(std::errc::interrupted) || bytes.size() == (result ? 200'000u : 0u));
        });

    MemoryFiles files;
    files.Put("a", std::string(1000, 'x'));
    files.Put("empty", "");
    EXPECT_TRUE(File::ReadAll(L"a", bytes, 1000) && bytes.size() == 1000);
    EXPECT_TRUE(File::ReadAll(L"a", bytes, 999).Is(std::errc::file_too_large));
    EXPECT_TRUE(bytes.empty());
    EXPECT_TRUE(File::ReadAll(L"empty", bytes, 0));
    EXPECT_TRUE(File::ReadAll(L"none", bytes).IsMissing());
}

TEST(File, TellsFilesFromFolders)
{
    const ScratchFolder folder;
    const TvlString here = folder.Path().wstring();
    const TvlString deep = Path::Combine(Path::Combine(here, L"x"), L"y");
    EXPECT_TRUE(Folder::EnsureExists(deep));
    EXPECT_TRUE(Folder::EnsureExists(deep + L"/"));
    const TvlString file = Path::Combine(deep, L"größe", L"txt");
    EXPECT_TRUE(File::WriteAside(file, kNew));
    EXPECT_TRUE(File::Exists(file) && Path::Exists(file) && !Folder::Exists(file));
    EXPECT_TRUE(!File::Exists(deep) && Path::Exists(deep) && Folder::Exists(deep));
    EXPECT_FALSE(Folder::EnsureExists(file));
    EXPECT_FALSE(Folder::EnsureExists(Path::Combine(file, L"z")));
    EXPECT_FALSE(File::Delete(here)) << "a folder";
    EXPECT_TRUE(File::Delete(file));
    EXPECT_FALSE(File::Delete(file));
    EXPECT_FALSE(Path::Exists(file));
}

TEST(Path, CombinesParts)
{
    const wchar_t separator = static_cast<wchar_t>(fs::path::preferred_separator);
    const TvlString ab = TvlString(L"a") + separator + L"b";
    EXPECT_EQ(Path::Combine(L"a", L"b"), ab);
    EXPECT_EQ(Path::Combine(L"a/", L"b"), L"a/b");
    EXPECT_EQ(Path::Combine(L"", L"b"), L"b");
    EXPECT_EQ(Path::Combine(L"a", L""), L"a");
    EXPECT_EQ(Path::Combine(L"a", L"/b"), L"/b");
    for (const wchar_t* extension : {L"tvws", L".tvws"})
        EXPECT_EQ(Path::Combine(L"a", L"b", extension), ab + L".tvws") << extension;
    EXPECT_EQ(Path::Combine(L"a", L"b.x", L""), ab + L".x");
    EXPECT_EQ(Path::Combine(L"a", L"b.x", L"y"), ab + L".x.y");

    const bool hasDrives = separator == L'\\';
    EXPECT_EQ(Path::IsFullyQualified(L"C:\\b"), hasDrives);
    EXPECT_EQ(Path::IsFullyQualified(L"\\\\server\\b"), hasDrives);
    EXPECT_EQ(Path::Combine(L"a\\", L"b"), hasDrives ? L"a\\b" : L"a\\/b");
    EXPECT_FALSE(Path::IsFullyQualified(L"b"));
    EXPECT_FALSE(Path::IsFullyQualified(L"1:b"));
    EXPECT_FALSE(Path::IsFullyQualified(L""));
}

}   // namespace
