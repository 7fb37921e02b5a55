// Downloads from a web server that the test runs on the loopback.
#include "Download.h"
#include "ChildProcess.h"
#include "PeakMemory.h"
#include "WebServer.h"
#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "windows/Internet.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
namespace fs = std::filesystem;
namespace SystemIO = TvlUtils::SystemIO;
using namespace std::string_literals;
using testing::HasSubstr;

constexpr std::size_t kBodySize = 12000;

std::string Body()
{
    std::string body;
    while (body.size() < kBodySize)
        body += "Tovel ";
    return body;
}

// The body, compressed by zlib: the bare stream, which every system takes for "deflate", and gzip's frame around it.
const std::string kStream = "\xed\xc4\x21\x0d\x00\x00\x08\x00\xb0\x2a\x84\xa2\x02\x8e\x0d\x47\x7e\x62\x60\x7e\xf1\x9c"
                            "\xad\x8e\xb4\x6d\xdb\xb6\x6d\xdb\xb6\x6d\xdb\xb6\x6d\xdb\xb6\x6d\xdb\xb6\x6d\xfb\xf5\x03"s;
const std::string kGzip = "\x1f\x8b\x08\0\0\0\0\0\2\3"s + kStream + "\x85\x95\x17\x01\xe0\x2e\0\0"s;

std::string Head(const std::string& status, std::size_t length, const std::string& lines = "")
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(length) + "\r\nConnection: close\r\n" + lines
        + "\r\n";
}

std::string Whole(const std::string& body, const std::string& encoding = "")
{
    return Head("200 OK", body.size(), encoding.empty() ? "" : "Content-Encoding: " + encoding + "\r\n") + body;
}

struct Page {
    const wchar_t* path;
    std::string answer;
    bool result;
    std::string stored;
};

const Page kPages[] = {
    {L"/plain", Whole(Body()), true, Body()},
    {L"/gzip", Whole(kGzip, "gzip"), true, Body()},
    {L"/deflate", Whole(kStream, "deflate"), true, Body()},
    {L"/empty", Whole(""), false, ""},
    {L"/missing", Head("404 Not Found", 9) + "not found", true, "not found"},
    {L"/broken", Head("500 Internal Server Error", 5) + "sorry", true, "sorry"},
    {L"/moved", Head("302 Found", 0, "Location: /plain\r\n"), true, Body()},
    {L"/cut", Head("200 OK", 2 * kBodySize) + Body(), true, Body()},
    {L"/cut-at-once", Head("200 OK", kBodySize), false, ""},
};

const Page* FindPage(const std::string& request)
{
    for (const Page& page : kPages)
        if (request.starts_with("GET " + fs::path(page.path).string() + " "))
            return &page;
    return nullptr;
}

class Download : public testing::Test {
protected:
    TvlString Destination() const { return SystemIO::FromFilePath(folder.Path() / "file"); }
    std::size_t FilesInFolder() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), {}));
    }

    ScratchFolder folder;
};

TEST_F(Download, StoresWhatTheServerAnswersWhateverItsStatus)
{
    std::string lastRequest;
    {
        const WebServer server([&](const std::string& request, const LoopbackSocket& connection) {
            lastRequest = request;
            if (const Page* const page = FindPage(request))
                connection.Send(page->answer);
        });
        for (const auto& [path, answer, result, stored] : kPages) {
            SCOPED_TRACE(path);
            std::ofstream(folder.Path() / "file") << "old";
            EXPECT_EQ(TvlUtl::WinInetGzipDownload(server.Url(path), Destination()), result);
            EXPECT_EQ(FileBytes(folder.Path() / "file"), stored);
            EXPECT_EQ(FilesInFolder(), 1u);
        }
    }
    EXPECT_THAT(lastRequest, HasSubstr("User-Agent: Tovel gzip download"));
    EXPECT_THAT(lastRequest, HasSubstr("Accept-Encoding: gzip, deflate"));
}

TEST_F(Download, LeavesNothingWhenThereIsNothingToRead)
{
    const WebServer server([](const std::string&, const LoopbackSocket& connection) { connection.Send(Whole("x")); });
    std::wstring closed;
    {
        const WebServer gone([](const std::string&, const LoopbackSocket&) {});
        closed = gone.Url(L"/");
    }
    for (const std::wstring& url : {L""s, L"no address"s, L"nowhere://x"s, closed}) {
        EXPECT_FALSE(TvlUtl::WinInetGzipDownload(url, Destination()));
        EXPECT_EQ(FilesInFolder(), 0u);
    }
    EXPECT_FALSE(TvlUtl::WinInetGzipDownload(server.Url(L"/"), Destination() + L"/no such folder/file"));
    fs::create_directories(folder.Path() / "file" / "below");
    EXPECT_FALSE(TvlUtl::WinInetGzipDownload(server.Url(L"/"), Destination()));
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Download, TakesNamesAsLongAsTheFileSystemDoes)
{
    constexpr std::size_t kLongestName = 255;   // bytes; on windows whole paths have a limit as well
    constexpr std::size_t kLongestPath = 259;
    constexpr bool isPathLimited = fs::path::preferred_separator != '/';
    const std::size_t room = isPathLimited ? kLongestPath - folder.Path().native().size() - 1 : kLongestName;
    const std::size_t longest = std::min(room, kLongestName);
    const WebServer server([](const std::string&, const LoopbackSocket& connection) { connection.Send(Whole("x")); });
    for (const std::size_t length : {longest - 23, longest - 22, longest}) {
        const fs::path path = folder.Path() / std::string(length, 'n');
        EXPECT_TRUE(TvlUtl::WinInetGzipDownload(server.Url(L"/"), SystemIO::FromFilePath(path))) << length;
        EXPECT_EQ(FileBytes(path), "x") << length;
    }
    EXPECT_EQ(FilesInFolder(), 3u);
}

TEST_F(Download, TakesAwayWhatKilledOnesHaveLeft)
{
    const WebServer server([](const std::string&, const LoopbackSocket& connection) { connection.Send(Whole("x")); });
    struct Left {
        const char* name;
        std::chrono::seconds age;
        bool stays;
    };
    // FNV-1a of "file", and of "file2".
    const Left kLeft[] = {
        {"aaea5743.0123456789abcdef.aside", std::chrono::minutes(3), false},
        {"aaea5743.0123456789abcdee.aside", std::chrono::minutes(1), true},   // may be at work
        {"aaea5743.0123456789abcdeg.aside", std::chrono::hours(1), true},
        {"7fe7a6e3.0123456789abcdef.aside", std::chrono::hours(1), true},
        {"aaea5743.aside", std::chrono::hours(1), true},
    };
    for (const auto& [name, age, stays] : kLeft) {
        std::ofstream(folder.Path() / name) << "left";
        fs::last_write_time(folder.Path() / name, fs::file_time_type::clock::now() - age);
    }
    EXPECT_TRUE(TvlUtl::WinInetGzipDownload(server.Url(L"/"), Destination()));
    for (const auto& [name, age, stays] : kLeft)
        EXPECT_EQ(fs::exists(folder.Path() / name), stays) << name;
}

/// Takes what is written and only counts it.
class CountedFile final : public SystemIO::FileHandle {
public:
    CountedFile(long long& size, long long& flushed) : m_size(size), m_flushed(flushed) { }
    SystemIO::FileResult ReadAt(long long, void*, std::size_t, std::size_t&) override { return std::errc::io_error; }
    SystemIO::FileResult WriteAt(long long offset, const void*, std::size_t size, std::size_t& done) override
    {
        done = size;
        if (offset == m_size)
            m_size += static_cast<long long>(size);
        return {};
    }
    SystemIO::FileResult Flush() override
    {
        m_flushed = m_size;
        return {};
    }
    SystemIO::FileResult Close() override { return {}; }

private:
    long long& m_size;
    long long& m_flushed;
};

/// A disk that keeps nothing, so that a gigabyte needs none.
class CountingFiles final : public SystemIO::FileLayer {
public:
    using FileResult = SystemIO::FileResult;
    using Path = fs::path;

    CountingFiles() { SetForTests(this); }
    CountingFiles(const CountingFiles&) = delete;
    CountingFiles& operator=(const CountingFiles&) = delete;
    ~CountingFiles() override { SetForTests(nullptr); }

    FileResult Open(const Path&, SystemIO::OpenMode, std::unique_ptr<SystemIO::FileHandle>& handle) override
    {
        handle = std::make_unique<CountedFile>(size, flushed);
        return {};
    }
    FileResult Rename(const Path&, const Path&) override
    {
        EXPECT_EQ(flushed, size) << "a power cut could leave the name and not the bytes";
        ++renamed;
        return {};
    }
    FileResult Remove(const Path&) override { return {}; }
    FileResult List(const Path&, std::vector<SystemIO::FolderEntry>&) override { return std::errc::io_error; }
    FileResult Stat(const Path&, SystemIO::FileStatus&) override { return std::errc::io_error; }
    FileResult MakeFolder(const Path&) override { return std::errc::io_error; }
    FileResult SetReadOnly(const Path&, bool) override { return std::errc::io_error; }

    long long size = 0;      // bytes written, one behind the other
    long long flushed = 0;   // of them
    int renamed = 0;
};

/// A server that sends as many bytes as it is told, whatever they are.
class SizedAnswers final : public Ports::Internet {
public:
    explicit SizedAnswers(long long size) : m_size(size) { SetForTests(this); }
    SizedAnswers(const SizedAnswers&) = delete;
    SizedAnswers& operator=(const SizedAnswers&) = delete;
    ~SizedAnswers() override { SetForTests(nullptr); }

    bool IsConnected() const override { return true; }
    bool IsUrl(const std::wstring&) const override { return true; }
    std::unique_ptr<Ports::InternetFile> OpenUrl(const std::wstring&, const std::wstring&, const std::wstring&) override
    {
        return std::make_unique<File>(m_size);
    }

private:
    class File final : public Ports::InternetFile {
    public:
        explicit File(long long size) : m_left(size) { }
        std::optional<std::size_t> Read(void*, std::size_t size) override
        {
            const long long count = std::min(m_left, static_cast<long long>(size));
            m_left -= count;
            return static_cast<std::size_t>(count);
        }

    private:
        long long m_left;
    };

    long long m_size;
};

TEST_F(Download, StoresNothingOfAnAnswerWithoutEnd)
{
    constexpr long long kMost = 4LL << 30;
    for (const long long size : {kMost, kMost + 1}) {
        const SizedAnswers server(size);
        CountingFiles files;
        int lines = 0;
        TvlUtils::SetLogReceiver([&](TvlUtils::LogLevel, const TvlString&) { ++lines; });
        EXPECT_EQ(TvlUtl::WinInetGzipDownload(L"http://a/", Destination()), size == kMost);
        TvlUtils::SetLogReceiver({});
        EXPECT_EQ(files.size, kMost);
        EXPECT_EQ(files.renamed, size == kMost ? 1 : 0);
        EXPECT_EQ(lines, size == kMost ? 0 : 1);
    }
}

TEST_F(Download, ReadsAGigabyteInConstantMemory)
{
    constexpr long long kSize = 1LL << 30;
    constexpr std::size_t kMostGrowth = std::size_t{64} << 20;
    const std::string block(std::size_t{1} << 20, 'T');
    const WebServer server([&](const std::string&, const LoopbackSocket& connection) {
        connection.Send(Head("200 OK", kSize, "Cache-Control: no-store\r\n"));   // else the system keeps a copy
        for (long long sent = 0; sent < kSize && connection.Send(block);)
            sent += static_cast<long long>(block.size());
    });
    CountingFiles files;
    const std::size_t before = PeakMemory();
    EXPECT_TRUE(TvlUtl::WinInetGzipDownload(server.Url(L"/large"), Destination()));
    EXPECT_EQ(files.size, kSize);
    EXPECT_LT(PeakMemory(), before + kMostGrowth);
}

}   // namespace
