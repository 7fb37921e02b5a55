// What the store of papers writes: the master's copy of a first start, a newer master taken over, and what a user changes.
#include "ChildProcess.h"
#include "FakeLocale.h"
#include "FaultWorld.h"
#include "FileOperation.h"
#include "OldOrNew.h"
#include "PaperTypes.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefManager.h"

#include <gtest/gtest.h>

namespace {
constexpr const char* kMaster = "suite/Config/PaperTypes.xml";
constexpr const char* kUserFile = "user/Config/PaperTypes.xml";
constexpr const char* kBackup = "user/Config/PaperTypes_backup.xml";
constexpr const char* kOldVersion = "preset_version=\"1\"";
constexpr const char* kNewVersion = "preset_version=\"2\"";
constexpr int kHidden = 3;   // a paper that Americans are shown
constexpr int kUsed = 7;

const std::string& Master()
{
    static const std::string bytes = FileBytes(std::filesystem::path(SUITE_FOLDER) / "Config" / "PaperTypes.xml");
    return bytes;
}

PaperTypeInformation Own(int width)
{
    PaperTypeInformation paper;
    paper.DisplayName = L"own";
    paper.Width = width;
    paper.Height = 20000;
    paper.Units = 2;
    return paper;
}

/// A user who has not started yet.
struct NewUser {
    NewUser()
    {
        world.Put(kMaster, Master());
        locale.settings[Ports::LocaleSetting::CountryCode] = L"US";
    }
    ~NewUser() { Forget(); }
    void Forget() { CPaperTypeMgr::ReleaseInstance(false); }

    /// What a start finds of the user's own: papers, what is hidden of two of the suite's, and the papers used last.
    static std::string Found()
    {
        const CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
        std::string found;
        PaperTypeInformation paper;
        for (int index = papers.GetPredefinedCount(); papers.GetPaperInfoAt(index, paper); ++index)
            found += TvlPlatform::ToUtf8(paper.DisplayName) + " " + std::to_string(paper.Width) + " ";
        found += papers.IsHidden(kHidden) ? "hidden" : "shown";
        for (const std::int64_t used : papers.GetMRUList())
            found += " " + std::to_string(used);
        return found;
    }

    FaultWorld world;
    FakeLocale locale;
};

void SavePapers(const PaperTypeInformation& own, bool changesLists)
{
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    papers.AddCustomPaper(own, true);
    if (changesLists) {
        papers.DeletePaper(kHidden, false);
        papers.AddMRUItem(kUsed);
    }
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(false);
}

void SaveOwn() { SavePapers(Own(10000), false); }
void SaveChanges() { SavePapers(Own(30000), true); }

/// What is found before and after SaveChanges, in a world of its own: to be asked for where there is no other.
struct Outcomes {
    static const Outcomes& Get()
    {
        static const Outcomes outcomes = [] {
            const NewUser user;
            Outcomes found;
            SaveOwn();
            found.before = NewUser::Found();
            CPaperTypeMgr::ReleaseInstance(false);
            SaveChanges();
            found.after = NewUser::Found();
            found.file = user.world.Get(kUserFile).value_or("none");
            return found;
        }();
        return outcomes;
    }
    std::string before;
    std::string after;
    std::string file;   // bytes of the user's, behind the changes
};

struct Expected {
    const Outcomes& expected = Outcomes::Get();
};

/// One with a paper of its own.
struct User : Expected, NewUser {
    User() { SaveOwn(); }
};

/// One for whom the suite has a newer master.
struct UserOfANewerSuite : User {
    UserOfANewerSuite()
    {
        userFile = world.Get(kUserFile).value_or("");
        std::string newer = Master();
        newer.replace(newer.find(kOldVersion), std::string(kOldVersion).size(), kNewVersion);
        world.Put(kMaster, newer);
    }
    /// Whether the user's file has been brought in line with the master, as the store notes it.
    static bool IsUpToDate()
    {
        return CAppPrefManager::GetInstance().GetStore()->Read(L"PaperTypes/InstallTime").has_value();
    }

    std::string userFile;
    bool hadFault = false;   // in this world
};

void CheckNewerMaster(UserOfANewerSuite& user, const FileRun& run)
{
    user.hadFault = user.hadFault || run.hasFailed;
    const std::string found = UserOfANewerSuite::Found();
    // Where the merged file could not be written the papers are beside the master's copy.
    const bool isBeside = user.hadFault && user.world.Get(kBackup) == user.userFile;
    ExpectOldOrNew(isBeside ? user.expected.before : found, user.expected.before, user.expected.before, run.isDone);
    EXPECT_EQ(CPaperTypeMgr::GetInstance().GetPredefinedCount(), kPaperTypeCount);
    EXPECT_NE(user.world.Get(kUserFile).value_or("").find(kNewVersion), std::string::npos) << "the next start goes on";
}
}   // namespace

FileOperations WritesOfPapers()
{
    return {
        FileRow<NewUser>(
            "papers_first_start", 8,
            [](NewUser&) { return CPaperTypeMgr::GetInstance().GetPredefinedCount() == kPaperTypeCount; },
            [](NewUser& user, const FileRun& run) {
                ExpectOldOrNew(user.world.Get(kUserFile).value_or(""), "", Master(), run.isDone);
            }),
        FileRow<UserOfANewerSuite>(
            "papers_newer_master", 20,
            [](UserOfANewerSuite&) {
                CPaperTypeMgr::GetInstance();
                return UserOfANewerSuite::IsUpToDate();
            },
            CheckNewerMaster),
        FileRow<User>(
            "papers_used_and_hidden", 12,
            [](User& user) {
                SaveChanges();
                // The end of the store tells nothing: that the file has the changes is all that anybody can learn.
                return user.world.Get(kUserFile) == user.expected.file;
            },
            [](User& user, const FileRun& run) {
                EXPECT_TRUE(run.isDone || run.hasFailed) << "without a fault it is saved";
                ExpectOldOrNew(User::Found(), user.expected.before, user.expected.after, run.isDone);
                EXPECT_EQ(CPaperTypeMgr::GetInstance().GetPredefinedCount(), kPaperTypeCount);
            }),
    };
}
