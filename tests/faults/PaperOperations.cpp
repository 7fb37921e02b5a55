// The store of papers: whatever fails while it is read, changed or saved, no paper of the user's own is lost.
#include "ChildProcess.h"
#include "FakeLocale.h"
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "PaperTypes.h"
#include "siblings/TvlResources/Resources.h"

#include <gtest/gtest.h>

namespace {
constexpr const char* kUserFile = "user/Config/PaperTypes.xml";

const std::string& Master()
{
    static const std::string bytes = FileBytes(std::filesystem::path(SUITE_FOLDER) / "Config" / "PaperTypes.xml");
    return bytes;
}

PaperTypeInformation Custom(const wchar_t* name)
{
    PaperTypeInformation paper;
    paper.DisplayName = name;
    paper.Width = 10000;
    paper.Height = 20000;
    paper.Units = 2;
    return paper;
}

/// A user's file with a paper of the user's own, "the user's own paper", under the master that it was made from.
const std::string& UserFile()
{
    static const std::string bytes = [] {
        FaultWorld world;
        const FakeLocale locale;
        world.Put("suite/Config/PaperTypes.xml", Master());
        CPaperTypeMgr::GetInstance().AddCustomPaper(Custom(L"the user's own paper"), true);
        CPaperTypeMgr::Shutdown();
        CPaperTypeMgr::ReleaseInstance(false);
        return world.Get(kUserFile).value_or("");
    }();
    return bytes;
}

struct Papers {
    Papers()
    {
        world.Put("suite/Config/PaperTypes.xml", Master());
        world.Put(kUserFile, userFile);
        locale.settings[Ports::LocaleSetting::CountryCode] = L"US";
    }
    ~Papers() { CPaperTypeMgr::ReleaseInstance(false); }

    /// What the next start finds.
    void CheckNextStart(const HeapRun& outcome)
    {
        CPaperTypeMgr::ReleaseInstance(false);
        CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
        // Taking over a newer master may leave a copy of that; the papers are beside it then.
        const std::string backup = world.Get("user/Config/PaperTypes_backup.xml").value_or("");
        hadFault = hadFault || outcome.hasFailed;
        const bool isBeside = hadFault && backup.find("the user's own paper") != backup.npos;
        EXPECT_TRUE(papers.FindCustomPaperIndex(L"the user's own paper") != -1 || isBeside);
        EXPECT_EQ(papers.GetPredefinedCount(), kPaperTypeCount);
        EXPECT_TRUE(papers.FindCustomPaperIndex(L"a new paper") != -1 || outcome.hasFailed || !adds);
        CPaperTypeMgr::ReleaseInstance(false);
    }

    const std::string& userFile = UserFile();   // made in a world of its own, before this one begins
    FaultWorld world;
    FakeLocale locale;
    PaperTypeInformation paper;
    TvlString text;
    bool found = false;
    bool hadFault = false;   // in this world
    bool adds = false;       // the operation saves "a new paper"
};

/// A store that has been read before.
struct OpenPapers : Papers {
    OpenPapers() { CPaperTypeMgr::GetInstance(); }

    void CheckStore() const
    {
        const CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
        EXPECT_NE(papers.FindCustomPaperIndex(L"the user's own paper"), -1);
        EXPECT_EQ(papers.GetPredefinedCount(), kPaperTypeCount);
        for (const std::int64_t index : papers.GetPaperOrder())
            EXPECT_LT(index, papers.GetCount());
    }
};
}   // namespace

HeapOperations PaperOperations()
{
    return {
        // What the store can't read or write it tells nobody: queries see a part of it then, and the files stay.
        SilentRow<Papers>(
            "start_and_end",
            [](Papers&) {
                CPaperTypeMgr::GetInstance();
                CPaperTypeMgr::Shutdown();
            },
            [](Papers& papers, const HeapRun& outcome) { papers.CheckNextStart(outcome); }),
        SilentRow<Papers>(
            "save",
            [](Papers& papers) {
                papers.adds = true;
                CPaperTypeMgr::GetInstance().AddCustomPaper(Custom(L"a new paper"), true);
                CPaperTypeMgr::Shutdown();
            },
            [](Papers& papers, const HeapRun& outcome) { papers.CheckNextStart(outcome); }),
        SilentRow<Papers>(
            "start_under_a_newer_master",
            [](Papers& papers) {
                std::string newer = Master();
                newer.replace(newer.find("preset_version=\"1\""), 18, "preset_version=\"2\"");
                papers.world.files.Put(FaultWorld::File("suite/Config/PaperTypes.xml"), newer);
                CPaperTypeMgr::GetInstance();
            },
            [](Papers& papers, const HeapRun& outcome) { papers.CheckNextStart(outcome); }),
        Row<OpenPapers>(
            "AddCustomPaper",
            [](OpenPapers&) { CPaperTypeMgr::GetInstance().AddCustomPaper(Custom(L"a new paper"), true); },
            [](OpenPapers& papers, const HeapRun& outcome) {
                papers.CheckStore();
                const auto index = CPaperTypeMgr::GetInstance().FindCustomPaperIndex(L"a new paper");
                EXPECT_TRUE(index != -1 || outcome.hasFailed);
            }),
        Row<OpenPapers>(
            "UpdateCustomPaper",
            [](OpenPapers& papers) {
                PaperTypeInformation changed = Custom(L"the user's own paper");
                changed.Width = 30000;
                papers.found = CPaperTypeMgr::GetInstance().UpdateCustomPaper(changed);
            },
            [](OpenPapers& papers, const HeapRun& outcome) {
                papers.CheckStore();
                EXPECT_TRUE(papers.found || outcome.hasFailed);
                const CPaperTypeMgr& store = CPaperTypeMgr::GetInstance();
                PaperTypeInformation now;
                EXPECT_TRUE(
                    store.GetPaperInfoAt(static_cast<int>(store.FindCustomPaperIndex(L"the user's own paper")), now));
                EXPECT_TRUE(now.Width == 30000 || (now.Width == 10000 && outcome.hasFailed)) << now.Width;
                EXPECT_EQ(now.Height, 20000);
            }),
        Row<OpenPapers>(
            "GetPaperInfo",
            [](OpenPapers& papers) {
                papers.found = CPaperTypeMgr::GetInstance().GetPaperInfo(kPaperA4, papers.paper);
            },
            [](OpenPapers& papers, const HeapRun& outcome) {
                EXPECT_TRUE((papers.found && papers.paper.Width == 2100000) || outcome.hasFailed);
                papers.CheckStore();
            }),
        Row<OpenPapers>(
            "AddMRUItem", [](OpenPapers&) { CPaperTypeMgr::GetInstance().AddMRUItem(7); },
            [](OpenPapers& papers, const HeapRun& outcome) {
                papers.CheckStore();
                const auto used = CPaperTypeMgr::GetInstance().GetMRUList();
                EXPECT_TRUE((!used.empty() && used.front() == 7) || outcome.hasFailed);
            }),
        Row<OpenPapers>(
            "ResetCustomPaperTypeOrder", [](OpenPapers&) { CPaperTypeMgr::GetInstance().ResetCustomPaperTypeOrder(); },
            [](OpenPapers& papers, const HeapRun& outcome) {
                papers.CheckStore();
                const auto order = CPaperTypeMgr::GetInstance().GetPaperOrder();
                EXPECT_TRUE((!order.empty() && order.back() >= kPaperTypeCount) || outcome.hasFailed);
            }),
        Row<OpenPapers>(
            "GetPageDimensions",
            [](OpenPapers& papers) { papers.text = TvlUtl::GetDimensionsString(2100000, 2970000, 2, 0, 0); },
            [](OpenPapers& papers, const HeapRun& outcome) {
                EXPECT_TRUE(papers.text.Find(L"210") == 0 || outcome.hasFailed);
                papers.text = L"";
            }),
    };
}
