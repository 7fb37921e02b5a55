// Folders, identifiers, profiles and the like: answers, and what is remembered for the next one.
#include "AddOns.h"
#include "CFileLocations.h"
#include "CGUIDMap.h"
#include "CPluginStates.h"
#include "CloudHelpers.h"
#include "CurrentUser.h"
#include "DataSize.h"
#include "FaultWorld.h"
#include "GuidMap.h"
#include "HeapOperation.h"
#include "PathExports.h"
#include "Policy.h"
#include "ProfilePath.h"
#include "WUTLRegistry.h"
#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <gtest/gtest.h>

namespace {
struct Surroundings {
    void Expect(const wchar_t* part, const HeapRun& outcome)
    {
        EXPECT_TRUE(text.Find(part) >= 0 || outcome.hasFailed) << text.c_str();
        text = L"";
    }

    FaultWorld world;
    TvlString text;
    std::size_t count = 0;
    wchar_t buffer[1024] = {};
};

/// Locations that were stored before.
struct Stored : Surroundings {
    const std::vector<CFileLocations::Location> locations = CFileLocations::GetFileLocations();
};

/// A program that has a marker in a folder of add-on content.
struct Marked : Surroundings {
    Marked()
    {
        using namespace TvlUtils::SystemIO;
        const TvlString program = Path::GetFileNameWithoutExtension(Path::GetProcessFileName(nullptr));
        world.files.Put(ToFilePath(Path::Combine(folder, program, L"addon")), "");
    }
    const TvlString folder = FaultWorld::Path("user/add-ons and more");
};

/// Switches of the machine.
struct Switched : Surroundings {
    Switched()
    {
        const auto set = [](const TvlString& path, const wchar_t* name, const wchar_t* value) {
            WUTLRegistry key(path.c_str(), WUTLRegistry::kReadWriteAccess, 1);
            EXPECT_EQ(key.SetValue(name, value), 0);
        };
        const TvlString product = TvlString(L"HKEY_LOCAL_MACHINE\\") + INIGetRegistryProductKey();
        set(product, L"IsAdminPackage", L"1");
        set(product, L"InternetFeatures", L"off");
        set(L"HKEY_LOCAL_MACHINE\\Software\\Tovel\\Media\\Tovel Content", L"Path", kContent);
    }
    static constexpr const wchar_t* kContent = L"/content of the machine, at some length";
};

/// Pairs of a file that is there.
struct Identifiers : Surroundings {
    Identifiers() { world.Put("suite/Data/guidmap.dat", TvlUtl::MakeGuidMap({{engine, application}})); }

    const GUID engine{1, 2, 3, {4}};
    const GUID application{5, 6, 7, {8}};
};

struct Moving : Surroundings {
    Moving()
    {
        world.Put("user/old/a fill.fill", "a");
        world.Put("user/old/below/another fill.fill", "b");
        world.files.AddFolder(FaultWorld::File("user/new"));
    }
};
}   // namespace

HeapOperations EnvironmentOperations()
{
    return {
        Row<Surroundings>(
            "GetFileLocationsFillsDir",
            [](Surroundings& surroundings) { surroundings.text = CFileLocations::GetFileLocationsFillsDir(); },
            [](Surroundings& surroundings, const HeapRun& outcome) { surroundings.Expect(L"Fills", outcome); }),
        Row<Surroundings>(
            "GetFileLocations",
            [](Surroundings& surroundings) { surroundings.count = CFileLocations::GetFileLocations().size(); },
            [](Surroundings& surroundings, const HeapRun& outcome) {
                EXPECT_TRUE(surroundings.count == 24 || outcome.hasFailed);
                surroundings.count = 0;
            }),
        // What the registry has no memory for stays as it was, and nobody is told.
        SilentRow<Stored>(
            "SetFileLocations",
            [](Stored&) {
                auto locations = CFileLocations::GetFileLocations();
                locations.front().first = L"/a folder of the user's own";
                CFileLocations::SetFileLocations(locations);
            },
            [](Stored& stored, const HeapRun& outcome) {
                auto locations = CFileLocations::GetFileLocations();
                ASSERT_EQ(locations.size(), 24u);
                const TvlString first = locations.front().first;
                EXPECT_TRUE(first.Find(L"/a folder of the user's own") == 0
                    || (outcome.hasFailed && first == stored.locations.front().first))
                    << first.c_str();
                locations.front() = stored.locations.front();
                EXPECT_EQ(locations, stored.locations) << "those that stay";
            }),
        // Without a report nobody is told of a folder that could not be listed.
        SilentRow<Moving>(
            "MigrateContent",
            [](Moving& moving) {
                CFileLocations::Moves moves;
                for (const auto& [folder, name] : CFileLocations::GetFileLocations())
                    if (folder.Find(L"Fills") >= 0)
                        moves[name] = {FaultWorld::Path("user/new"), FaultWorld::Path("user/old")};
                CFileLocations::MigrateContent(moves);
                moving.count = moves.size();
            },
            [](Moving& moving, const HeapRun& outcome) {
                EXPECT_EQ(moving.world.Get("user/old/a fill.fill"), "a") << "nothing is taken away";
                const auto copy = moving.world.Get("user/new/a fill.fill");
                EXPECT_TRUE(copy == "a" || (!copy && outcome.hasFailed));
                EXPECT_TRUE(moving.count == 1 || outcome.hasFailed);
            }),
        // A map that can't be read has no pairs.
        SilentRow<Identifiers>(
            "CGUIDMap",
            [](Identifiers& identifiers) {
                const CGUIDMap map;
                identifiers.count = map.FindApplication(identifiers.engine) ? 1 : 0;
            },
            [](Identifiers& identifiers, const HeapRun& outcome) {
                EXPECT_TRUE(identifiers.count == 1 || outcome.hasFailed);
                identifiers.count = 0;
            }),
        Row<Identifiers>(
            "MakeGuidMap",
            [](Identifiers& identifiers) {
                identifiers.count = TvlUtl::MakeGuidMap({{identifiers.engine, identifiers.application}}).size();
            },
            [](Identifiers& identifiers, const HeapRun& outcome) {
                EXPECT_TRUE(identifiers.count == 76 || outcome.hasFailed) << identifiers.count;
                identifiers.count = 0;
            }),
        Row<Surroundings>(
            "GetPluginSearchPathAndState",
            [](Surroundings& surroundings) {
                surroundings.count = CPluginStates::GetPluginSearchPathAndState().size();
            },
            [](Surroundings& surroundings, const HeapRun& outcome) {
                EXPECT_TRUE(surroundings.count > 0 || outcome.hasFailed);
                surroundings.count = 0;
            }),
        Row<Marked>(
            "ShouldLoadAddOn",
            [](Marked& marked) { marked.count = AddOns::ShouldLoadAddOn(marked.folder, &marked.text); },
            [](Marked& marked, const HeapRun& outcome) {
                EXPECT_TRUE(marked.count == 1 || outcome.hasFailed);
                marked.count = 0;
                marked.Expect(L".addon", outcome);
            },
            [](Marked& marked) { return marked.count == 0; }),
        Row<Surroundings>(
            "GetCloudFilePath",
            [](Surroundings& surroundings) {
                surroundings.text = TvlUtl::CloudHelpers::GetCloudFilePath(L"an identifier", L"a name*.tvr");
            },
            [](Surroundings& surroundings, const HeapRun& outcome) { surroundings.Expect(L"%3A.tvr", outcome); }),
        Row<Surroundings>(
            "FormatDataSize", [](Surroundings& surroundings) { surroundings.text = TvlUtl::FormatDataSize(123456789); },
            [](Surroundings& surroundings, const HeapRun& outcome) { surroundings.Expect(L"117 ", outcome); }),
        Row<Surroundings>(
            "GetCurrentUserName", [](Surroundings& surroundings) { surroundings.text = TvlUtl::GetCurrentUserName(); },
            [](Surroundings& surroundings, const HeapRun& outcome) {
                surroundings.Expect(TvlUtl::GetCurrentUserName().c_str(), outcome);
            }),
        // A switch that can't be read is false.
        SilentRow<Switched>(
            "Policy",
            [](Switched& switched) {
                switched.text = TvlUtl::OfflineContentLocation();
                switched.count = std::size_t{TvlUtl::IsNetworkInstall()} + TvlUtl::IsInternetFeaturesDisabled();
            },
            [](Switched& switched, const HeapRun& outcome) {
                EXPECT_TRUE(switched.count == 2 || outcome.hasFailed);
                switched.count = 0;
                EXPECT_TRUE(switched.text.IsEmpty() || switched.text == Switched::kContent);
                switched.Expect(Switched::kContent, outcome);
                EXPECT_EQ(switched.world.registry.OpenKeys(), 0u);
            }),
        Row<Surroundings>(
            "GetFillsDir", [](Surroundings& surroundings) { GetFillsDir(surroundings.buffer); },
            [](Surroundings& surroundings, const HeapRun& outcome) {
                const TvlString folder = surroundings.buffer;
                EXPECT_TRUE(folder.Find(L"Fills") >= 0 || (folder.IsEmpty() && outcome.hasFailed)) << folder.c_str();
            },
            [](Surroundings& surroundings) { return surroundings.buffer[0] == 0; }),
        Row<Surroundings>(
            "UTLGetPrivateProfileRelPath",
            [](Surroundings& surroundings) {
                UTLGetPrivateProfileRelPath(L"Paths", L"Fonts", L"/base/folder/of/some/length", surroundings.buffer,
                    1024, FaultWorld::Path("user/none.ini").c_str());
            },
            [](Surroundings& surroundings, const HeapRun& outcome) {
                surroundings.text = surroundings.buffer;
                surroundings.Expect(L"base", outcome);
            }),
    };
}
