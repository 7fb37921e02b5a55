// Files that fail: papers of the user's own are never lost.
#include "MemoryFiles.h"
#include "PaperFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefManager.h"

namespace {

class PaperFaults : public PaperFolders {
protected:
    /// The store's files in memory: the master, and what the user has.
    void Prepare(MemoryFiles& files) const
    {
        files.Put(Master(), m_master);
        files.Put(User(), m_user);
    }
    /// What a next start finds among the user's own papers, each followed by a blank.
    static std::string OwnPapers()
    {
        CPaperTypeMgr::ReleaseInstance(false);
        std::string names;
        for (const auto index : {kPaperTypeCount, kPaperTypeCount + 1}) {
            TvlString name;
            if (Papers().GetPaperNameAt(index, name))
                names += TvlPlatform::ToUtf8(name) + " ";
        }
        return names;
    }

    PaperFaults()
    {
        Papers().AddCustomPaper(Custom(L"old", 10000, 20000), true);
        Restart();
        m_user = FileBytes(User());
        m_master = FileBytes(Master());
    }

    std::string m_user;
    std::string m_master;
};

TEST_F(PaperFaults, SavingLeavesOldOrNewPapers)
{
    const auto operation = [] {
        Papers().AddCustomPaper(Custom(L"new", 10000, 20000), true);
        CPaperTypeMgr::Shutdown();
    };
    bool isSaved = false;
    const auto check = [&](MemoryFiles&) {
        const std::string papers = OwnPapers();
        EXPECT_TRUE(papers == "old " || papers == "old new ") << papers;
        isSaved |= papers == "old new ";
        CPaperTypeMgr::ReleaseInstance(false);
    };
    // The start looks at three files and reads one; the save has the seven operations of writing aside.
    WalkFileFaults(
        12, [&](MemoryFiles& files) { Prepare(files); }, operation, check);
    constexpr std::size_t kStep = 499;   // bytes; the disk is full at each of these places
    for (std::size_t room = 0; room < m_user.size() + kStep; room += kStep)
        RunOnFaultyFiles([&](MemoryFiles& files) { Prepare(files); },
            [&](MemoryFiles& files) { files.SetCapacity(files.UsedBytes() + room); }, operation, check);
    EXPECT_TRUE(isSaved);
}

TEST_F(PaperFaults, ANewMasterNeverCostsPapers)
{
    m_master.replace(m_master.find("preset_version=\"1\""), 18, "preset_version=\"2\"");
    bool endsProcess = false;
    int besides = 0;
    const auto check = [&](MemoryFiles& files) {
        // Where the merged file can't be written, the user has a copy of the master, and the papers beside it.
        const bool isBeside = !endsProcess && OwnPapers().empty() && files.Get(Backup()) == m_user;
        besides += isBeside;
        EXPECT_TRUE(isBeside || OwnPapers() == "old ") << OwnPapers();
        EXPECT_NE(files.Get(User())->find("preset_version=\"2\""), std::string::npos)
            << "the next start has tried again";
        CPaperTypeMgr::ReleaseInstance(false);
        // Another run starts from a master that was not seen.
        CAppPrefManager::GetInstance().GetStore()->Remove(L"PaperTypes/InstallTime");
    };
    CAppPrefManager::GetInstance().GetStore()->Remove(L"PaperTypes/InstallTime");
    using Fault = MemoryFiles::Fault;
    for (const Fault fault : MemoryFiles::kFaults) {
        SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault));
        endsProcess = MemoryFiles::EndsSystem(fault) || fault == Fault::StopKept;
        WalkFaultPoints(20, [&](std::size_t point) {
            return RunOnFaultyFiles([&](MemoryFiles& files) { Prepare(files); },
                [&](MemoryFiles& files) { files.Inject(point, fault); }, [] { Papers(); }, check);
        });
    }
    EXPECT_GT(besides, 0) << "no write of the merged file has failed";
}

}   // namespace
