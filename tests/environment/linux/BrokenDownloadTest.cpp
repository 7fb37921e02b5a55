// Downloads from servers that fall silent, and from those with a protected connection, through libcurl.
#include "ChildProcess.h"
#include "Download.h"
#include "WebServer.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <array>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
namespace fs = std::filesystem;
namespace SystemIO = TvlUtils::SystemIO;
using testing::ElementsAre;

// What the stand-in below changes of the settings of a transfer. The numbers are those of curl.h, which never change.
constexpr int kUrl = 10002;
constexpr int kLowSpeedTime = 20;
constexpr int kCertificates = 10065;
std::string trusted;    // file with the certificates that are trusted in the place of the system's; empty for those
std::string patience;   // that was asked for, in seconds

using SetOption = int (*)(void*, int, void*);
}   // namespace

/// In libcurl's place: lets a test be trusted, and shortens a minute to a second.
extern "C" __attribute__((visibility("default"))) int curl_easy_setopt(void* transfer, int option, ...)
{
    // It was loaded by a module of its own, and is not among those that RTLD_NEXT looks through.
    static void* const library = dlopen("libcurl.so.4", RTLD_LAZY | RTLD_NOLOAD);
    static const auto set = reinterpret_cast<SetOption>(dlsym(library, "curl_easy_setopt"));
    std::va_list arguments;
    va_start(arguments, option);
    void* value = va_arg(arguments, void*);   // numbers are as wide as pointers
    va_end(arguments);
    if (option == kUrl && !trusted.empty())
        set(transfer, kCertificates, trusted.data());
    if (option == kLowSpeedTime) {
        patience = std::to_string(reinterpret_cast<long>(value));
        value = reinterpret_cast<void*>(1L);
    }
    return set(transfer, option, value);
}

namespace {
/// openssl's server for files, each of which is a whole answer of the protocol.
class ProtectedServer {
public:
    explicit ProtectedServer(const fs::path& folder)
    {
        std::array<int, 2> pipes{};
        if (pipe2(pipes.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        const std::string folderName = folder.string();
        std::array<const char*, 10> arguments{
            "openssl", "s_server", "-HTTP", "-accept", "127.0.0.1:0", "-cert", "certificate", "-key", "key", nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, folderName.c_str());
        posix_spawn_file_actions_adddup2(&actions, pipes[1], STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        const int failed =
            posix_spawnp(&m_process, "openssl", &actions, nullptr, const_cast<char**>(arguments.data()), environ);
        posix_spawn_file_actions_destroy(&actions);
        close(pipes[1]);
        m_output.reset(fdopen(pipes[0], "r"));
        if (failed)
            throw std::runtime_error("openssl can't be started");
        ReadPort();
    }
    ProtectedServer(const ProtectedServer&) = delete;
    ProtectedServer& operator=(const ProtectedServer&) = delete;
    ~ProtectedServer()
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }

    std::wstring Url(const std::wstring& path) const { return L"https://127.0.0.1:" + m_port + path; }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void ReadPort()
    {
        constexpr std::string_view kBegin = "ACCEPT 127.0.0.1:";
        std::array<char, 256> line{};
        while (std::fgets(line.data(), line.size(), m_output.get())) {
            const std::string_view text = line.data();
            if (text.starts_with(kBegin)) {
                const std::string_view digits = text.substr(kBegin.size(), text.find('\n') - kBegin.size());
                m_port.assign(digits.begin(), digits.end());
                return;
            }
        }
    }

    pid_t m_process = 0;
    std::unique_ptr<std::FILE, Closer> m_output;
    std::wstring m_port;
};

class BrokenDownload : public testing::Test {
protected:
    BrokenDownload()
    {
        TvlUtils::SetLogReceiver([this](TvlUtils::LogLevel, const TvlString& line) { lines.push_back(line); });
    }
    ~BrokenDownload() override
    {
        TvlUtils::SetLogReceiver({});
        trusted.clear();
    }

    bool Load(const std::wstring& url) const
    {
        return TvlUtl::WinInetGzipDownload(url, SystemIO::FromFilePath(folder.Path() / "file"));
    }
    std::string Bytes() const { return FileBytes(folder.Path() / "file"); }

    ScratchFolder folder;
    std::vector<TvlString> lines;   // of the log
};

TEST_F(BrokenDownload, EndsWhenTheServerFallsSilent)
{
    struct Row {
        const char* answer;
        bool result;
        const char* stored;
    };
    for (const auto& [answer, result, stored] :
        {Row{"", false, ""}, Row{"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nabc", true, "abc"}}) {
        const WebServer server([&text = answer](const std::string&, const LoopbackSocket& connection) {
            connection.Send(text);
            connection.Receive();   // nothing, until the other side has gone
        });
        lines.clear();
        EXPECT_EQ(Load(server.Url(L"/")), result) << answer;
        EXPECT_EQ(Bytes(), stored);
        EXPECT_THAT(lines, ElementsAre(L"A download ended early: Timeout was reached"));
        EXPECT_EQ(patience, "60");
    }
}

TEST_F(BrokenDownload, StaysProtectedWhereItBeganSo)
{
    const fs::path served = folder.Path() / "served";
    fs::create_directory(served);
    const std::string make = "cd '" + served.string()
        + "' && openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key -out certificate "
          "-days 2 "
          "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 2> /dev/null";
    ASSERT_EQ(std::system(make.c_str()), 0);

    int unprotected = 0;
    const WebServer plain([&](const std::string&, const LoopbackSocket& connection) {
        ++unprotected;
        connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nplain");
    });
    const auto put = [&](const char* name, const std::string& head, const std::string& body) {
        std::ofstream(served / name, std::ios::binary)
            << "HTTP/1.1 " << head << "\r\nContent-Length: " << body.size() << "\r\n\r\n"
            << body;
    };
    const std::wstring away = plain.Url(L"/");
    put("here", "200 OK", "protected");
    put("moved", "302 Found\r\nLocation: /here", "");
    put("led-away", "302 Found\r\nLocation: " + std::string(away.begin(), away.end()), "");
    const ProtectedServer server(served);

    EXPECT_FALSE(Load(server.Url(L"/here"))) << "nobody has signed for this server";
    EXPECT_FALSE(fs::exists(folder.Path() / "file"));
    EXPECT_THAT(lines, ElementsAre(L"A download ended early: SSL peer certificate or SSH remote key was not OK"));

    trusted = (served / "certificate").string();
    for (const wchar_t* const path : {L"/here", L"/moved"}) {
        EXPECT_TRUE(Load(server.Url(path)));
        EXPECT_EQ(Bytes(), "protected");
    }
    lines.clear();
    Load(server.Url(L"/led-away"));
    EXPECT_EQ(unprotected, 0);
    EXPECT_NE(Bytes(), "plain");
    EXPECT_THAT(lines, ElementsAre(L"A download ended early: Unsupported protocol"));

    EXPECT_TRUE(Load(plain.Url(L"/"))) << "from the beginning there is no protection to lose";
    EXPECT_EQ(Bytes(), "plain");
}

}   // namespace
