// The forms of cloud assets.
#include "CFileLocations.h"
#include "CloudHelpers.h"
#include "UserWorld.h"

#include <gtest/gtest.h>
#include <random>

namespace {
using namespace TvlUtl::CloudHelpers;
namespace Path = TvlUtils::SystemIO::Path;

struct NamePair {
    TvlString name;
    TvlString escaped;
};

const NamePair kNames[] = {
    {L"", L""},
    {L"plain name.tvr", L"plain name.tvr"},
    {L"\"*/:<>?\\|", L"%22%3A%2F%2A%3C%3E%3F%5C%7C"},
    {L"%", L"%25"},
    {L"a%3Ab", L"a%253Ab"},
    {L"%25:%2A", L"%2525%2A%252A"},
    {L"100%: done?", L"100%25%2A done%3F"},
};

TEST(CloudNames, AreMadeSafeAndBack)
{
    for (const auto& [name, escaped] : kNames) {
        EXPECT_EQ(EscapeFileName(name), escaped);
        EXPECT_EQ(UnescapeFileName(escaped), name);
    }
    EXPECT_EQ(UnescapeFileName(L"%zz %2 % %3a%4A"), L"%zz %2 % %3a%4A");
}

TEST(CloudNames, ComeBackWhateverIsInThem)
{
    constexpr std::wstring_view kAlphabet = L"\"*/:<>?\\|%%%%0123456789ACFacf .\u00e4\u4e2d";
    std::mt19937 random(20240229);
    std::uniform_int_distribution<std::size_t> length(0, 24), letter(0, kAlphabet.size() - 1);
    for (int i = 0; i < 100'000; ++i) {
        std::wstring name(length(random), L' ');
        for (wchar_t& c : name)
            c = kAlphabet[letter(random)];
        const TvlString escaped = EscapeFileName(name);
        ASSERT_EQ(escaped.FindOneOf(L"\"*/:<>?\\|"), -1) << name.c_str();
        ASSERT_EQ(UnescapeFileName(escaped), TvlString(name)) << name.c_str();
    }
}

class CloudPaths : public testing::Test {
protected:
    /// Elements joined by the system's separator.
    static TvlString Joined(std::initializer_list<const wchar_t*> elements)
    {
        TvlString path;
        for (const wchar_t* const element : elements)
            path = path.IsEmpty() ? TvlString(element) : Path::Combine(path, element);
        return path;
    }
    TvlString InCloud(std::initializer_list<const wchar_t*> elements) const
    {
        return CFileLocations::GetFileLocationsTovelCloudDir() + Joined(elements);
    }

    UserWorld world;
};

TEST_F(CloudPaths, LeadFromIdentifierToFile)
{
    EXPECT_EQ(GetCloudFilePath(L"id7", L"a:b.tvr"), InCloud({L"id7", L"a%2Ab.tvr"}));
    EXPECT_EQ(GetCloudFilePath(L"", L"a.tvr"), L"");
    EXPECT_EQ(GetCloudFilePath(L"id7", L""), L"");
    for (const wchar_t* const hostile : {L"..", L"../..", L"id/../..", L"/etc", L"/"})
        EXPECT_EQ(GetCloudFilePath(hostile, L"passwd"), L"") << hostile;
    EXPECT_EQ(GetCloudFilePath(L"id7", L".."), L"");
}

TEST_F(CloudPaths, LeadFromFileToIdentifier)
{
    struct Case {
        TvlString path;
        TvlString id;
        TvlString asset;
    };
    const Case cases[] = {
        {InCloud({L"id7", L"a%2Ab.tvr"}), L"id7", Joined({L"CLOUD:", L"id7", L"a%2Ab.tvr"})},
        {InCloud({L"shelf", L"id7", L"a.tvr"}), L"id7", Joined({L"CLOUD:", L"id7", L"a.tvr"})},
        {InCloud({L"id7", L""}) + L"/", L"id7", L""},
        {InCloud({L"a.tvr"}), L"", L""},
        {InCloud({L"id7", L"..", L"..", L"a.tvr"}), L"", L""},
        {world.Path("elsewhere/id7/a.tvr"), L"", L""},
        {L"a.tvr", L"", L""},
        {L"", L"", L""},
    };
    for (const auto& [path, id, asset] : cases) {
        EXPECT_EQ(GetCloudFileIdByPath(path), id) << path.c_str();
        EXPECT_EQ(GetCloudAssetIDFromFilePath(path), asset) << path.c_str();
        EXPECT_EQ(IsLocalFileCloudAsset(path), !asset.IsEmpty()) << path.c_str();
    }
}

TEST_F(CloudPaths, LeadFromAssetToFile)
{
    struct Case {
        TvlString asset;
        bool isAsset;
        TvlString id;
        TvlString file;
    };
    const Case cases[] = {
        {Joined({L"CLOUD:", L"id7", L"a.tvr"}), true, L"id7", InCloud({L"id7", L"a.tvr"})},
        {Joined({L"CLOUD:", L"id7", L"a b.tvr \t"}), true, L"id7", InCloud({L"id7", L"a b.tvr"})},
        // Escaped a second time: the two forms do not undo each other.
        {Joined({L"CLOUD:", L"id7", L"a%2Ab.tvr"}), true, L"id7", InCloud({L"id7", L"a%252Ab.tvr"})},
        {Joined({L"CLOUD:", L"id7", L" "}), true, L"id7", L""},
        {Joined({L"CLOUD:", L"..", L"a.tvr"}), true, L"..", L""},
        {Joined({L"CLOUD:", L"id7"}), false, L"CLOUD:", L""},
        {Joined({L"Cloud:", L"id7", L"a.tvr"}), false, L"id7", L""},
        {Joined({L"CLOUD:", L"shelf", L"id7", L"a.tvr"}), false, L"", L""},
        {L"CLOUD:", false, L"", L""},
        {L"", false, L"", L""},
    };
    for (const auto& [asset, isAsset, id, file] : cases) {
        EXPECT_EQ(IsAssetPathFromCloud(asset), isAsset) << asset.c_str();
        EXPECT_EQ(GetCloudIdFromAssetId(asset), id) << asset.c_str();
        EXPECT_EQ(GetLocalPathForAssetPathFromCloud(asset), file) << asset.c_str();
    }
}

TEST_F(CloudPaths, FollowTheUsersChoiceOfFolder)
{
    const TvlString chosen = world.MakeFolder("other cloud");
    for (const auto& [folder, name] : CFileLocations::GetFileLocations())
        if (folder == CFileLocations::GetFileLocationsTovelCloudDir())
            CFileLocations::SetFileLocation({chosen, name});
    EXPECT_EQ(GetCloudFilePath(L"id7", L"a.tvr"), chosen + Joined({L"id7", L"a.tvr"}));
    EXPECT_TRUE(CFileLocations::IsTovelCloudFile(world.MakeFile("other cloud/id7/a.tvr")));
    EXPECT_FALSE(CFileLocations::IsTovelCloudFile(world.Path("other cloud/id7/missing.tvr")));
    EXPECT_FALSE(CFileLocations::IsTovelCloudFile(world.MakeFile("elsewhere.tvr")));
}

}   // namespace
