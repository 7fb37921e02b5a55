// What is written of the user's own: papers, units, events, settings.
#include "CFileLocations.h"
#include "ChildProcess.h"
#include "FaultWorld.h"
#include "FileOperation.h"
#include "IniUpdateRegistry.h"
#include "OldOrNew.h"
#include "PaperTypes.h"
#include "Tally.h"
#include "Units.h"
#include "siblings/TvlConfig/CustomUnits.h"
#include "siblings/TvlConfig/EventLog.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <gtest/gtest.h>

namespace {
namespace File = TvlUtils::SystemIO::File;

/// A world and nothing to forget.
struct Plain {
    void Forget() { }
    FaultWorld world;
};

// Papers: a store with "old" that gets "new".

struct Papers : Plain {
    Papers()
    {
        world.Put("suite/Config/PaperTypes.xml",
            FileBytes(std::filesystem::path(SUITE_FOLDER) / "Config" / "PaperTypes.xml"));
        Add(L"old");
        Forget();
    }
    ~Papers() { Forget(); }
    void Forget() { CPaperTypeMgr::ReleaseInstance(false); }
    /// Whether the user's file has a paper of this name.
    bool HasStored(const std::string& name) const
    {
        const std::string bytes = world.Get("user/Config/PaperTypes.xml").value_or("");
        return bytes.find('"' + name + '"') != bytes.npos;
    }
    static void Add(const wchar_t* name)
    {
        PaperTypeInformation paper;
        paper.DisplayName = name;
        paper.Width = 10000;
        paper.Height = 20000;
        paper.Units = 2;
        CPaperTypeMgr::GetInstance().AddCustomPaper(paper, true);
        CPaperTypeMgr::Shutdown();
    }
};

// Custom units: a file with one that gets another.

constexpr const char* kUnits = "TvlCustomUnits 1\na,b,c,d,2.000000,2,0.000000,0.000000,0.000000,0\n";

struct Units : Plain {
    Units() { world.Put("user/CustomUnits.txt", kUnits); }
};

// Custom units, of which one is based on another: the first one goes, and those behind it move up one id.

/// A file with units of these names and bases.
std::string UnitsFile(const std::vector<std::pair<const char*, int>>& units)
{
    std::string bytes = "TvlCustomUnits 1\n";
    for (const auto& [name, base] : units)
        bytes += std::string(name) + ",b,c,d,2.000000," + std::to_string(base) + ",0.000000,0.000000,0.000000,0\n";
    return bytes;
}

struct ThreeUnits : Plain {
    ThreeUnits() { world.Put("user/CustomUnits.txt", all); }
    static bool RemoveFirst()
    {
        wchar_t records[][kCustomUnitTextSize] = {L"bbx,b,c,d,2.000000,1,0.000000,0.000000,0.000000,0",
            L"ccx,b,c,d,2.000000,42,0.000000,0.000000,0.000000,0", L""};
        TvlConfig::CustomUnitBatch batch;
        int index = 0;
        bool isNoted = true;
        for (auto& record : records)
            isNoted = INISetCustomUnit(index++, record) && isNoted;
        return batch.Commit() && isNoted;
    }

    const std::string all = UnitsFile({{"aax", 1}, {"bbx", 1}, {"ccx", 43}});
    const std::string rest = UnitsFile({{"bbx", 1}, {"ccx", 42}});
};

// Behind a line that is no unit they move up at the end of their last client, each to the place that bases count on.

struct UnitsBehindNone : Plain {
    UnitsBehindNone() { world.Put("user/CustomUnits.txt", found); }

    const std::string units = UnitsFile({{"aax", 1}, {"bbx", 1}, {"ccx", 43}});
    const std::string found = std::string(units).insert(units.find("aax"), "none\n");
    const std::string written = units + units.substr(units.find("ccx"));   // what is behind the last one stays
};

// Events: a file that is nearly full, so that it is put by on the way.

struct Events : Plain {
    Events() { EXPECT_TRUE(log.Append(event)); }

    const TvlString folder = FaultWorld::Path("user/Analytics");
    const ProductAnalytics::EventLog log{folder, 150};
    const ProductAnalytics::StoredEvent event{
        L"2024-05-31T08:15:30.250Z", L"document.opened", {{L"key", L"value"}}, L""};
    std::size_t told = 1;   // events that were acknowledged
};

// Settings.

constexpr const char* kIni = "[Tools/Line]\r\nWidth=old\r\n[Other]\r\nx=1\r\n";

struct Settings : Plain {
    Settings() { world.Put("user/settings.ini", kIni); }
};

/// The preferences are others than those of the settings.
struct Preferences : Settings {
    Preferences()
    {
        world.Put("user/before.ini", "[Tools/Line]\r\nWidth=before\r\n");
        IniUpdateRegistry(FaultWorld::Path("user/before.ini").c_str());
    }
    static std::string Width()
    {
        const auto width = CAppPrefManager::GetInstance().GetStore()->Read(L"Tools/Line/Width");
        const auto text = width ? TvlPref::ValueAs<TvlString>(*width) : std::nullopt;
        return text ? TvlPlatform::ToUtf8(*text) : "none";
    }
    bool IsMarked() const { return world.Get("user/settings.ini.applying").has_value(); }
    void Apply() { IniUpdateRegistry(FaultWorld::Path("user/settings.ini").c_str()); }
};

struct Content : Plain {
    Content()
    {
        world.Put("user/old/a.fill", "content a");
        world.Put("user/old/below/b.fill", "content b");
        world.files.AddFolder(FaultWorld::File("user/new"));
        // Here, for it does far more with files than the copies.
        for (const auto& [folder, name] : CFileLocations::GetFileLocations())
            if (folder.Find(L"Fills") >= 0)
                moves[name] = {FaultWorld::Path("user/new"), FaultWorld::Path("user/old")};
    }

    CFileLocations::Moves moves;
};
}   // namespace

FileOperations WritesOfTheUser()
{
    return {
        FileRow<Papers>(
            "papers", 12,
            [](Papers& papers) {
                Papers::Add(L"new");
                // The end of the store tells nothing: that the file has the paper is all that anybody can learn.
                return papers.HasStored("new");
            },
            [](Papers& papers, const FileRun& run) {
                const CPaperTypeMgr& store = CPaperTypeMgr::GetInstance();
                EXPECT_NE(store.FindCustomPaperIndex(L"old"), -1);
                EXPECT_EQ(store.GetPredefinedCount(), kPaperTypeCount);
                const bool isThere = store.FindCustomPaperIndex(L"new") != -1;
                EXPECT_TRUE(isThere || run.hasFailed);
                EXPECT_TRUE(isThere || !run.isDone);
                Tally::Get().Add("acknowledged entries lost", run.isDone && !isThere ? 1 : 0);
                papers.Forget();
            }),
        FileRow<Units>(
            "custom_units", 9,
            [](Units&) {
                wchar_t record[kCustomUnitTextSize] = L"e,f,g,h,3.000000,2,0.000000,0.000000,0.000000,0";
                return INISetCustomUnit(1, record) == 1;
            },
            [](Units& units, const FileRun& run) {
                const std::string bytes = units.world.Get("user/CustomUnits.txt").value_or("none");
                const std::string next = std::string(kUnits) + "e,f,g,h,3.000000,2,0.000000,0.000000,0.000000,0\n";
                ExpectOldOrNew(bytes, kUnits, next, run.isDone);
            }),
        FileRow<ThreeUnits>(
            "units_removed", 9, [](ThreeUnits&) { return ThreeUnits::RemoveFirst(); },
            [](ThreeUnits& units, const FileRun& run) {
                const std::string bytes = units.world.Get("user/CustomUnits.txt").value_or("none");
                ExpectOldOrNew(bytes, units.all, units.rest, run.isDone);
            }),
        FileRow<UnitsBehindNone>(
            "units_at_end", 14,
            [](UnitsBehindNone& units) {
                UNITCustomInitialize();
                UNITCustomUnInitialize();
                // The end tells nothing: that the file has the units is all that anybody can learn.
                return units.world.Get("user/CustomUnits.txt") == units.written;
            },
            [](UnitsBehindNone& units, const FileRun& run) {
                const std::string bytes = units.world.Get("user/CustomUnits.txt").value_or("none");
                ExpectOldOrNew(bytes, units.found, units.written, run.isDone);
            }),
        FileRow<Events>(
            "events", 3,
            [](Events& events) {
                const bool isDone = static_cast<bool>(events.log.Append(events.event));
                events.told += isDone;
                return isDone;
            },
            [](Events& events, const FileRun& run) {
                // Nobody waits for an event to be flushed: it is lost with the system, and with nothing less.
                ProductAnalytics::EventReader reader(events.folder);
                const auto found = reader.ReadNew();
                const bool isThere = found.size() >= events.told || run.isSystemDown;
                EXPECT_TRUE(isThere) << found.size() << " of " << events.told;
                Tally::Get().Add("acknowledged entries lost", isThere ? 0 : 1);
                for (const auto& event : found)
                    EXPECT_EQ(event, events.event);
                EXPECT_LE(reader.CountSkipped(), 2);
            }),
        FileRow<Settings>(
            "settings", 9,
            [](Settings&) {
                TvlUtils::IniParser parser(FaultWorld::Path("user/settings.ini"));
                return !parser.GetAllData().empty() && parser.SetString(L"Tools/Line", L"Width", L"new");
            },
            [](Settings& settings, const FileRun& run) {
                const std::string bytes = settings.world.Get("user/settings.ini").value_or("none");
                ExpectOldOrNew(bytes, kIni, "[Tools/Line]\r\nWidth=new\r\n[Other]\r\nx=1\r\n", run.isDone);
            }),
        RowWithoutWrites<Preferences>(
            "preferences", 5,
            [](Preferences& preferences) {
                preferences.Apply();
                return Preferences::Width() == "old" && !preferences.IsMarked();
            },
            [](Preferences& preferences, const FileRun& run) {
                EXPECT_EQ(preferences.world.Get("user/settings.ini"), kIni);
                EXPECT_EQ(preferences.world.registry.OpenKeys(), 0u);
                const std::string width = Preferences::Width();
                EXPECT_TRUE(width == "old" || preferences.IsMarked() || (width == "before" && run.hasFailed)) << width;
                if (preferences.IsMarked())
                    preferences.Apply();   // as the next start does
                EXPECT_NE(Preferences::Width(), "none");
                EXPECT_FALSE(preferences.IsMarked());
            }),
        FileRow<Settings>(
            "copy", 9,
            [](Settings&) {
                return static_cast<bool>(
                    File::Copy(FaultWorld::Path("user/settings.ini"), FaultWorld::Path("user/copy.ini"), true));
            },
            [](Settings& settings, const FileRun& run) {
                ExpectOldOrNew(settings.world.Get("user/copy.ini").value_or("none"), "none", kIni, run.isDone);
                EXPECT_EQ(settings.world.Get("user/settings.ini"), kIni);
            }),
        FileRow<Content>(
            "migration", 20,
            [](Content& content) {
                bool isDone = !content.moves.empty();
                CFileLocations::MigrateContent(
                    content.moves, [&](const MigrationStep& step) { isDone = isDone && step.problem.IsEmpty(); });
                return isDone;
            },
            [](Content& content, const FileRun& run) {
                EXPECT_EQ(content.world.Get("user/old/a.fill"), "content a") << "nothing is taken away";
                EXPECT_EQ(content.world.Get("user/old/below/b.fill"), "content b");
                for (const auto& [name, bytes] :
                    {std::pair("user/new/a.fill", "content a"), std::pair("user/new/below/b.fill", "content b")}) {
                    const auto copy = content.world.Get(name);
                    EXPECT_TRUE(copy == bytes || !run.isDone) << name;
                    EXPECT_TRUE(!copy || copy == bytes) << "a part of " << name;
                }
            }),
    };
}
