// Ctrl-C: long commands end with nothing half done.
#include "ChildProcess.h"
#include "WebServer.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {
namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kInterrupted = 130;

/// Starts the program in a world of its own, and interrupts it after a while.
ChildResult Interrupt(const ScratchFolder& folder, std::vector<std::string> arguments, bool isTurnedOff = false)
{
    const std::map<std::string, std::string> environment = {{"TVL_USER_DIR", (folder.Path() / "user").string()},
        {"TVL_REGISTRY", (folder.Path() / "registry.db").string()}};
    ChildProcess child{"tvl", std::move(arguments), {}, environment, 1500ms};
    child.isInterrupted = true;
    child.ignoresInterrupt = isTurnedOff;
    return RunProgram(child);
}

TEST(Interrupt, LeavesNothingOfADownloadWhoseServerKeepsItWaiting)
{
    std::atomic<bool> isOver = false;
    {
        const WebServer server([&](const std::string&, const LoopbackSocket& connection) {
            connection.Send(
                "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\nConnection: close\r\n\r\n" + std::string(50000, 'x'));
            while (!isOver)
                std::this_thread::sleep_for(10ms);
        });
        const ScratchFolder folder;
        const fs::path file = folder.Path() / "downloads" / "file.bin";
        fs::create_directories(file.parent_path());
        std::ofstream(file) << "old";
        const std::string url = TvlPlatform::ToUtf8(server.Url(L"/file"));
        EXPECT_EQ(Interrupt(folder, {"download", url, file.string()}).exitCode, kInterrupted);
        isOver = true;
        EXPECT_EQ(FileBytes(file), "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << "no other file is left";
    }
}

TEST(Interrupt, DoesNothingToAProgramThatWasStartedWithItTurnedOff)
{
    const WebServer server([](const std::string&, const LoopbackSocket& connection) {
        connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 3\r\nConnection: close\r\n\r\n");
        std::this_thread::sleep_for(3s);   // the interrupt comes meanwhile
        connection.Send("new");
    });
    const ScratchFolder folder;
    const fs::path file = folder.Path() / "file.bin";
    const std::string url = TvlPlatform::ToUtf8(server.Url(L"/file"));
    EXPECT_EQ(Interrupt(folder, {"download", url, file.string()}, true).exitCode, 0);
    EXPECT_EQ(FileBytes(file), "new");
}

TEST(Interrupt, StoresNoPartOfAnImport)
{
    constexpr int kPapers = 100'000;   // takes far longer than the test waits
    const ScratchFolder folder;
    const fs::path table = folder.Path() / "papers.txt";
    {
        std::ofstream lines(table);
        for (int i = 0; i < kPapers; ++i)
            lines << "Interrupted" << i << ',' << 100 + i % 1000 << ',' << 1100 + i / 1000 << ",mm\n";
    }
    EXPECT_EQ(Interrupt(folder, {"paper", "import", "--file", table.string()}).exitCode, kInterrupted);
    std::string stored;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path()))
        if (entry.is_regular_file() && entry.path() != table)
            stored += FileBytes(entry.path());
    EXPECT_EQ(stored.find("Interrupted"), std::string::npos);
}

}   // namespace
