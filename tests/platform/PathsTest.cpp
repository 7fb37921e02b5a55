// Paths as texts.
#include "MemoryFiles.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/StringSplit.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {
using namespace TvlUtils::SystemIO;
using Texts = std::vector<TvlString>;

/// A path of a table, where "/" stands for the system's separator.
TvlString Native(const wchar_t* path)
{
    std::wstring text = path;
    std::replace(text.begin(), text.end(), L'/', *Path::Combine(L"a", L"b").Mid(1, 1).c_str());
    return text;
}

struct Parts {
    const wchar_t* path;
    const wchar_t* folder;
    const wchar_t* name;
    const wchar_t* stem;
    const wchar_t* extension;
};

constexpr Parts kParts[] = {
    {L"/home/me/a.b.tvr", L"/home/me/", L"a.b.tvr", L"a.b", L".tvr"},
    {L"folder.d/name", L"folder.d/", L"name", L"name", L""},
    {L"name.", L"", L"name.", L"name", L"."},
    {L".hidden", L"", L".hidden", L"", L".hidden"},
    {L"folder/", L"folder/", L"", L"", L""},
    {L"/", L"/", L"", L"", L""},
    {L"", L"", L"", L"", L""},
};

TEST(Paths, AreTakenApart)
{
    for (const auto& [path, folder, name, stem, extension] : kParts) {
        EXPECT_EQ(Path::GetFolderName(Native(path)), Native(folder));
        EXPECT_EQ(Path::GetFileName(Native(path)), Native(name));
        EXPECT_EQ(Path::GetFileNameWithoutExtension(Native(path)), Native(stem));
        EXPECT_EQ(Path::GetExtension(Native(path)), Native(extension));
    }
}

TEST(Paths, SplitIntoElements)
{
    EXPECT_EQ(Path::Split(Native(L"/a//b c/d/")), (Texts{L"a", L"b c", L"d"}));
    EXPECT_EQ(Path::Split(Native(L"CLOUD:/id/name")), (Texts{L"CLOUD:", L"id", L"name"}));
    EXPECT_EQ(Path::Split(Native(L"//")), Texts{});
    EXPECT_EQ(Path::Split(L""), Texts{});
}

TEST(Paths, GetOneSeparatorAtTheirEnd)
{
    EXPECT_EQ(Path::AddBackslash(Native(L"a/b")), Native(L"a/b/"));
    EXPECT_EQ(Path::AddBackslash(Native(L"a/b/")), Native(L"a/b/"));
    EXPECT_EQ(Path::AddBackslash(L""), L"");
}

struct Pair {
    const wchar_t* folder;
    const wchar_t* path;
    bool contains;
    const wchar_t* relative;   // dotted
};

constexpr Pair kPairs[] = {
    {L"/a/b", L"/a/b/c/d", true, L"./c/d"},
    {L"/a/b/", L"/a/b", true, L"."},
    {L"/a/b", L"/a/bc", false, L"../bc"},
    {L"/a/b", L"/a", false, L".."},
    {L"/a/b", L"/a/b/../c", false, L"../c"},
    {L"/a/b", L"/a/./b//c/x/..", true, L"./c"},
    {L"/a/b", L"/../../a/b/c", true, L"./c"},
    {L"/", L"/a", true, L"./a"},
    {L"a", L"a/b", true, L"./b"},
    {L"a", L"../a/b", false, L"../../a/b"},
    {L"/a", L"a", false, L""},
    {L"", L"/a", false, L""},
    {L"/a", L"", false, L""},
};

TEST(Paths, TellWhatLiesInAFolderAndHowToGetThere)
{
    for (const auto& [folder, path, contains, relative] : kPairs) {
        EXPECT_EQ(Path::Contains(Native(folder), Native(path)), contains) << folder << L" " << path;
        EXPECT_EQ(Path::GetRelativePath(Native(folder), Native(path), true), Native(relative))
            << folder << L" " << path;
    }
    EXPECT_EQ(Path::GetRelativePath(Native(L"/a"), Native(L"/a/b"), false), L"b");
    EXPECT_EQ(Path::GetRelativePath(Native(L"/a"), Native(L"/a"), false), L"");
}

TEST(Paths, HaveCaseAsTheSystemHas)
{
#ifdef _WIN32
    EXPECT_TRUE(Path::Contains(L"C:\\Users\\Me", L"c:/USERS/me/a"));
    EXPECT_FALSE(Path::Contains(L"C:\\Users", L"D:\\Users\\a"));
    EXPECT_FALSE(Path::Contains(L"C:\\a", L"C:\\..\\..\\b"));
    EXPECT_EQ(Path::GetRelativePath(L"C:\\a", L"D:\\a", true), L"");
    EXPECT_EQ(Path::GetFileName(L"C:name"), L"name");
    EXPECT_EQ(Path::Split(L"C:\\a/b"), (Texts{L"C:", L"a", L"b"}));
#else
    EXPECT_FALSE(Path::Contains(L"/home/Me", L"/home/me/a"));
    EXPECT_EQ(Path::Split(L"a\\b"), Texts{L"a\\b"});
#endif
}

TEST(TempFolder, IsNewAndItsOwnersAlone)
{
    const TvlString folder = Path::CreateNewTempFolder();
    ASSERT_TRUE(Folder::Exists(folder));
    EXPECT_TRUE(File::Find(folder, L"*", true, true).empty());
    EXPECT_NE(Path::CreateNewTempFolder(), folder);
#ifndef _WIN32
    EXPECT_EQ(std::filesystem::status(ToFilePath(folder)).permissions(), std::filesystem::perms::owner_all);
#endif
    EXPECT_TRUE(Folder::DeleteRecursive(folder, true));
}

TEST(TempFolder, IsNoneWhenItCantBeMade)
{
    TvlString folder;
    const auto prepare = [](MemoryFiles& files) { files.AddFolder(ToFilePath(Path::GetTempFolder())); };
    WalkFileFaults(
        1, prepare, [&] { folder = {}, folder = Path::CreateNewTempFolder(); },
        [&](MemoryFiles&) { EXPECT_EQ(Folder::Exists(folder), !folder.IsEmpty()); });
}

TEST(Texts, SplitAtTheFirstSeparator)
{
    using Split = std::pair<TvlString, TvlString>;
    using TvlUtils::String::SplitAtFirst;
    EXPECT_EQ(SplitAtFirst(L"a,b,c", L','), Split(L"a", L"b,c"));
    EXPECT_EQ(SplitAtFirst(L",b", L','), Split(L"", L"b"));
    EXPECT_EQ(SplitAtFirst(L"a,", L','), Split(L"a", L""));
    EXPECT_EQ(SplitAtFirst(L"a", L','), Split(L"a", L""));
    EXPECT_EQ(SplitAtFirst(L"a", L',', true), Split(L"", L"a"));
}

}   // namespace
