// Files, profiles and documents: a full heap is a failure like any other, and leaves the old file whole.
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <gtest/gtest.h>

namespace {
namespace SystemIO = TvlUtils::SystemIO;
namespace File = SystemIO::File;
namespace Folder = SystemIO::Folder;

constexpr const char* kIni = "[Section]\r\nName=the old value, which is long\r\n";
constexpr const char* kXml = "<a><b name=\"the old value, which is long\"/></a>";

struct Files {
    Files()
    {
        world.Put("user/a.ini", kIni);
        world.Put("user/a.xml", kXml);
        world.Put("user/folder/below/it/file.txt", "content");
    }

    /// A file is the old one or the new one, and no other file is left beside it once all went well.
    void Check(const char* name, const std::string& old, const std::string& next, const HeapRun& outcome)
    {
        const std::string found = world.Get(name).value_or("none");
        EXPECT_TRUE(found == next || (found == old && !isDone)) << found;
        EXPECT_TRUE(isDone || outcome.hasFailed);
        if (outcome.IsSound()) {
            EXPECT_EQ(world.files.CountFiles(), kFiles) << "leftovers";
        }
        isDone = false;
    }

    static bool HasFailed(Files& files) { return !files.isDone; }

    static constexpr std::size_t kFiles = 3;
    FaultWorld world;
    std::string bytes;
    bool isDone = false;
    std::size_t count = 0;
};
}   // namespace

HeapOperations FileOperations()
{
    return {
        Row<Files>(
            "WriteAside",
            [](Files& files) {
                files.isDone = static_cast<bool>(File::WriteAside(FaultWorld::Path("user/a.ini"), "new"));
            },
            [](Files& files, const HeapRun& outcome) { files.Check("user/a.ini", kIni, "new", outcome); },
            Files::HasFailed),
        Row<Files>(
            "ReadAll",
            [](Files& files) {
                files.isDone = static_cast<bool>(File::ReadAll(FaultWorld::Path("user/a.ini"), files.bytes));
            },
            [](Files& files, const HeapRun& outcome) {
                EXPECT_EQ(files.bytes, files.isDone ? kIni : "");
                files.Check("user/a.ini", kIni, kIni, outcome);
            },
            Files::HasFailed),
        Row<Files>(
            "Copy",
            [](Files& files) {
                files.isDone =
                    static_cast<bool>(File::Copy(FaultWorld::Path("user/a.xml"), FaultWorld::Path("user/a.ini"), true));
            },
            [](Files& files, const HeapRun& outcome) { files.Check("user/a.ini", kIni, kXml, outcome); },
            Files::HasFailed),
        Row<Files>(
            "Find",
            [](Files& files) {
                std::vector<TvlString> found;
                files.isDone = static_cast<bool>(File::Find(FaultWorld::Path("user"), L"*", true, true, found));
                files.count = found.size();
            },
            [](Files& files, const HeapRun& outcome) {
                EXPECT_TRUE(files.count == 6 || !files.isDone) << files.count;
                EXPECT_TRUE(files.isDone || outcome.hasFailed);
                files.isDone = false;
            },
            Files::HasFailed),
        Row<Files>(
            "Folder_Copy",
            [](Files& files) {
                files.isDone = static_cast<bool>(
                    Folder::Copy(FaultWorld::Path("user/folder"), FaultWorld::Path("user/folder2"), true));
            },
            [](Files& files, const HeapRun& outcome) {
                const auto copy = files.world.Get("user/folder2/below/it/file.txt");
                EXPECT_TRUE(copy == "content" || (!copy && !files.isDone));
                EXPECT_TRUE(files.isDone || outcome.hasFailed);
                files.isDone = false;
            },
            Files::HasFailed),
        Row<Files>(
            "DeleteRecursive",
            [](Files& files) { files.isDone = Folder::DeleteRecursive(FaultWorld::Path("user/folder"), true); },
            [](Files& files, const HeapRun& outcome) {
                const bool isThere = files.world.Get("user/folder/below/it/file.txt").has_value();
                EXPECT_TRUE(!isThere || outcome.hasFailed);
                EXPECT_FALSE(isThere && files.isDone);
                files.isDone = false;
            },
            Files::HasFailed),
        Row<Files>(
            "IniParser_SetString",
            [](Files& files) {
                TvlUtils::IniParser parser(FaultWorld::Path("user/a.ini"));
                // A file that could not be read is an empty one, which must not take the other's place.
                if (!parser.GetAllData().empty())
                    files.isDone = parser.SetString(L"Section", L"Name", L"new");
            },
            [](Files& files, const HeapRun& outcome) {
                files.Check("user/a.ini", kIni, "[Section]\r\nName=new\r\n", outcome);
            },
            Files::HasFailed),
        Row<Files>(
            "WXmlDoc_Save",
            [](Files& files) {
                WXmlDoc document(false);
                if (document.Load(FaultWorld::Path("user/a.xml")))
                    files.isDone = document.Save(FaultWorld::Path("user/a.ini"));
            },
            [](Files& files, const HeapRun& outcome) {
                const std::string bytes = files.world.Get("user/a.ini").value_or("none");
                EXPECT_TRUE(bytes.find("the old value") != bytes.npos) << bytes;
                EXPECT_TRUE(files.isDone ? bytes.find("<b name") != bytes.npos : outcome.hasFailed);
                files.isDone = false;
            },
            Files::HasFailed),
    };
}
