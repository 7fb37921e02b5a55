// What the file layer gives to the disk, and in which order: a name outlasts a power cut when its folder was flushed.
#include "ChildProcess.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {
using Steps = std::vector<std::string>;

// Each thread for itself: those of other tests flush files as well.
thread_local Steps* heard = nullptr;   // where its steps are written down, while somebody listens
thread_local ino_t watched = 0;        // a folder's

void Note(const std::string& step)
{
    if (heard)
        heard->push_back(step);
}

std::string NameOf(int descriptor)
{
    struct stat found = {};
    if (fstat(descriptor, &found) < 0)
        return "nothing";
    return S_ISDIR(found.st_mode) ? (found.st_ino == watched ? "the folder" : "another folder") : "a file";
}

template <class Function>
Function* Next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
}   // namespace

// In the system's place: these note that they are called.
extern "C" {
__attribute__((visibility("default"))) int fsync(int descriptor)
{
    Note("flush " + NameOf(descriptor));
    return Next<int(int)>("fsync")(descriptor);
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept
{
    Note("rename");
    return Next<int(const char*, const char*)>("rename")(from, to);
}

__attribute__((visibility("default"))) int mkdir(const char* path, mode_t mode) noexcept
{
    Note("make");
    return Next<int(const char*, mode_t)>("mkdir")(path, mode);
}
}

namespace {
using namespace TvlUtils::SystemIO;

class PowerCut : public testing::Test {
protected:
    PowerCut()
    {
        struct stat found = {};
        EXPECT_EQ(stat(folder.Path().c_str(), &found), 0);
        watched = found.st_ino;
        heard = &steps;
    }
    ~PowerCut() override { heard = nullptr; }
    TvlString Path(const char* name) const { return FromFilePath(folder.Path() / name); }

    const ScratchFolder folder;
    Steps steps;
};

TEST_F(PowerCut, FindsAFileThatWasReplacedOrMoved)
{
    EXPECT_TRUE(File::WriteAside(Path("a"), "bytes"));
    EXPECT_EQ(steps, (Steps{"flush a file", "rename", "flush the folder"}));
    steps.clear();
    EXPECT_TRUE(File::Move(Path("a"), Path("b")));
    EXPECT_EQ(steps, (Steps{"rename", "flush the folder"}));
}

TEST_F(PowerCut, FindsFoldersThatWereMade)
{
    EXPECT_TRUE(Folder::EnsureExists(Path("c/d")));
    EXPECT_EQ(steps, (Steps{"make", "flush the folder", "make", "flush another folder"}));
    steps.clear();
    EXPECT_TRUE(Folder::EnsureExists(Path("c/d")));
    EXPECT_TRUE(FileLayer::Get().MakeFolder(folder.Path() / "e" / ""));
    EXPECT_EQ(steps, (Steps{"make", "flush the folder"})) << "with a separator behind its name";
}
}   // namespace
