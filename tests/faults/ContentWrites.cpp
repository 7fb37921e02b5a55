// What is copied, fetched and noted beside the user's settings: folders, files with a mark, downloads, labels for developers.
#include "CFileLocations.h"
#include "Download.h"
#include "FaultWorld.h"
#include "FileOperation.h"
#include "TrackFileFormatUse.h"
#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Internet.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

/// A folder that is copied into another one, where one of its files is there already.
struct Tree {
    Tree()
    {
        world.Put("user/old/a.fill", "content a");
        world.Put("user/old/below/b.fill", "content b");
        world.Put("user/new/a.fill", "before");
    }
    void Forget() { }
    void CheckCopy(const std::string& name, const std::string& old, const FileRun& run) const
    {
        const auto content = world.Get("user/old/" + name);
        const std::string copy = world.Get("user/new/" + name).value_or("none");
        ASSERT_TRUE(content) << name;
        EXPECT_TRUE(copy == *content || (copy == old && !run.isDone)) << name << ": " << copy;
    }

    FaultWorld world;
};

/// A file with the read-only mark, which its copy gets. A copy that has the mark is not replaced.
struct MarkedContent {
    MarkedContent()
    {
        world.Put("user/old/a.fill", "content");
        world.files.AddFolder(FaultWorld::File("user/new"));
        Mark("user/old/a.fill", true);
        for (const auto& [folder, name] : CFileLocations::GetFileLocations())
            if (folder.Find(L"Fills") >= 0)
                moves[name] = {FaultWorld::Path("user/new"), FaultWorld::Path("user/old")};
    }
    void Forget() { }
    bool Migrate()
    {
        bool isDone = !moves.empty();
        CFileLocations::MigrateContent(
            moves, [&](const MigrationStep& step) { isDone = isDone && step.problem.IsEmpty(); });
        return isDone;
    }
    void Check(const FileRun& run)
    {
        EXPECT_EQ(world.Get("user/old/a.fill"), "content");
        const std::string copy = world.Get("user/new/a.fill").value_or("none");
        EXPECT_TRUE(copy == "content" || (copy == "none" && !run.isDone)) << copy;
        EXPECT_TRUE(IsMarked("user/new/a.fill") || !run.isDone);
        Mark("user/old/a.fill", true);
        Mark("user/new/a.fill", false);
    }

    FaultWorld world;
    CFileLocations::Moves moves;

private:
    bool IsMarked(const std::string& name)
    {
        SystemIO::FileStatus status;
        return world.files.Stat(FaultWorld::File(name), status) && status.isReadOnly;
    }
    void Mark(const std::string& name, bool readOnly)
    {
        static_cast<void>(world.files.SetReadOnly(FaultWorld::File(name), readOnly));
    }
};

/// A server that answers whatever it is asked with a text of some blocks.
class OneAnswer final : public Ports::Internet {
public:
    OneAnswer() { SetForTests(this); }
    OneAnswer(const OneAnswer&) = delete;
    OneAnswer& operator=(const OneAnswer&) = delete;
    ~OneAnswer() override { SetForTests(nullptr); }

    bool IsConnected() const override { return true; }
    bool IsUrl(const std::wstring&) const override { return true; }
    std::unique_ptr<Ports::InternetFile> OpenUrl(const std::wstring&, const std::wstring&, const std::wstring&) override
    {
        return std::make_unique<Answer>(text);
    }

    const std::string text = std::string(5000, 'a') + std::string(5000, 'b');

private:
    class Answer final : public Ports::InternetFile {
    public:
        explicit Answer(std::string rest) : m_rest(std::move(rest)) { }
        std::optional<std::size_t> Read(void* bytes, std::size_t size) override
        {
            const std::size_t count = m_rest.copy(static_cast<char*>(bytes), size);
            m_rest.erase(0, count);
            return count;
        }

    private:
        std::string m_rest;
    };
};

struct Download {
    Download() { world.Put("user/file.zip", "before"); }
    // What a killed one has left goes with one that ends two minutes later.
    void Forget() { world.files.PassTime(std::chrono::minutes(3)); }

    FaultWorld world;
    const OneAnswer server;
};

/// A file that gets a label of each document.
struct Labels {
    Labels()
    {
        world.Put("user/labels.txt", stored);
        CAppPrefManager::GetInstance().GetStore()->Write(
            L"FileFormatTracking/DebugTrackingLogFile", FaultWorld::Path("user/labels.txt"));
    }
    void Forget() { }
    std::string File() const { return world.Get("user/labels.txt").value_or("none"); }
    bool Add() const
    {
        TrackFileFormatUse::StartGlobal(L"a.tvr", L"Open").Commit();
        // Nobody is told: that the file has the label is all that anybody can learn.
        return File() == stored + kLabel;
    }
    void Check(const FileRun& run)
    {
        const std::string found = File();
        ASSERT_TRUE(found.starts_with(stored)) << found;
        const std::string added = found.substr(stored.size());
        // It is not flushed. A part of it stays, and the next goes behind that.
        const bool isPart = run.hasFailed && std::string_view(kLabel).starts_with(added);
        EXPECT_TRUE(added == kLabel || isPart || run.isSystemDown) << found;
        stored = found;
    }

    static constexpr const char* kLabel = "Open_tvr\n";
    FaultWorld world;
    std::string stored = "Import_png\n";
};
}   // namespace

FileOperations WritesOfContent()
{
    return {
        FileRow<Tree>(
            "folder_copy", 20,
            [](Tree&) {
                return static_cast<bool>(
                    SystemIO::Folder::Copy(FaultWorld::Path("user/old"), FaultWorld::Path("user/new"), true));
            },
            [](Tree& tree, const FileRun& run) {
                tree.CheckCopy("a.fill", "before", run);
                tree.CheckCopy("below/b.fill", "none", run);
            }),
        FileRow<MarkedContent>(
            "migration_of_a_marked_file", 15, [](MarkedContent& content) { return content.Migrate(); },
            [](MarkedContent& content, const FileRun& run) { content.Check(run); }),
        FileRow<Download>(
            "download", 9,
            [](Download& download) {
                // The result is that of a part, too.
                return TvlUtl::WinInetGzipDownload(L"http://a/", FaultWorld::Path("user/file.zip"))
                    && download.world.Get("user/file.zip") == download.server.text;
            },
            [](Download& download, const FileRun& run) {
                const std::string& whole = download.server.text;
                const std::string found = download.world.Get("user/file.zip").value_or("none");
                const bool isPart = run.hasFailed && (found == "before" || whole.starts_with(found));
                EXPECT_TRUE(found == whole || (isPart && !run.isDone)) << found.size();
            }),
        FileRow<Labels>(
            "labels", 3, [](Labels& labels) { return labels.Add(); },
            [](Labels& labels, const FileRun& run) { labels.Check(run); }),
    };
}
