// The commands of tvl for what this folder's functions do.
#include "ChildProcess.h"
#include "WebServer.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {
using testing::HasSubstr;
using testing::StartsWith;

class SmallCommands : public testing::Test {
protected:
    ChildResult Run(std::vector<std::string> arguments) const
    {
        ChildResult result = RunProgram({"tvl", std::move(arguments), "",
            {{"TVL_REGISTRY", Text("registry.db")}, {"TVL_SUITE_DIR", Text("suite")}}});
        std::erase(result.output, '\r');
        std::erase(result.errors, '\r');
        return result;
    }
    void ExpectOutput(std::vector<std::string> arguments, const std::string& output) const
    {
        const ChildResult result = Run(std::move(arguments));
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.output, output);
    }
    void ExpectRefused(std::vector<std::string> arguments, const std::string& problem) const
    {
        const ChildResult result = Run(std::move(arguments));
        EXPECT_EQ(result.exitCode, 2) << problem;
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, StartsWith("tvl: "));
        EXPECT_THAT(result.errors, HasSubstr(problem));
    }
    std::string Text(const std::string& name) const
    {
        const std::u8string text = (folder.Path() / name).u8string();
        return {text.begin(), text.end()};
    }
    void Write(const std::string& name, const std::string& bytes) const
    {
        std::filesystem::create_directories((folder.Path() / name).parent_path());
        std::ofstream(folder.Path() / name, std::ios::binary) << bytes;
    }

    ScratchFolder folder;
};

TEST_F(SmallCommands, MapIdentifiersBothWays)
{
    const std::string engine = "00000009-0000-0000-0000-0000000000a1";
    const std::string application = "00000001-0000-0000-0000-0000000000ff";
    Write("list",
        "# engine application\n{00000009-0000-0000-0000-0000000000A1} " + application
            + "\n\n00000002-0000-0000-0000-000000000000 00000003-0000-0000-0000-000000000000 # more\r\n");
    Write("suite/Data/guidmap.dat", "old");
    ExpectOutput({"guidmap", "build", Text("list"), Text("suite/Data/guidmap.dat")}, "2 pairs\n");
    ExpectOutput({"guidmap", "find", engine}, application + "\n");
    ExpectOutput({"guidmap", "find", application, "--application", "--json"},
        "{\"from\":\"" + application + "\",\"to\":\"" + engine + "\"}\n");
    ExpectRefused({"guidmap", "find", application}, "no partner");
    ExpectRefused({"guidmap", "find", engine + "0"}, "no identifier");
    Write("suite/Data/guidmap.dat", "short");
    ExpectRefused({"guidmap", "find", engine}, "no partner");
    Write("list", engine + " " + application + "\n" + engine + " 00000000-0000-0000-0000-000000000000\n");
    ExpectRefused({"guidmap", "build", Text("list"), Text("out")}, "list:2: " + engine + " has a partner already");
    Write("list", engine + "\n");
    ExpectRefused({"guidmap", "build", Text("list"), Text("out")}, "list:1: ");
    ExpectRefused({"guidmap", "build", Text("none"), Text("out")}, "none: ");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "out"));
}

/// Keys of the machine's own registry on windows: under a name that nobody else has, and gone with the test.
class RegistryCommands : public SmallCommands {
protected:
    ~RegistryCommands() override { Run({"registry", "delete", key}); }

    std::string key = "HKEY_CURRENT_USER\\Software\\" + folder.Path().filename().string();
};

TEST_F(RegistryCommands, ShowAndChangeValues)
{
    ExpectOutput({"registry", "set", key, "path", "C:\\\"x\""}, "");
    ExpectOutput({"registry", "set", key, "number", "4294967295", "--type", "dword"}, "");
    ExpectOutput({"registry", "set", key + "\\Sub", "", "01fF", "--type", "binary"}, "");
    ExpectOutput({"registry", "get", "HKCU" + key.substr(key.find('\\')), "PATH"}, "C:\\\"x\"\n");
    const auto listed = nlohmann::json::parse(Run({"registry", "list", key, "--json"}).output);
    EXPECT_EQ(listed["keys"], nlohmann::json({"Sub"}));
    EXPECT_EQ(listed["values"].size(), 2u);
    const std::string exported = Run({"registry", "export", key}).output;
    EXPECT_THAT(exported, StartsWith("Windows Registry Editor Version 5.00\n\n[" + key + "]\n"));
    EXPECT_THAT(exported, HasSubstr("\n\"path\"=\"C:\\\\\\\"x\\\"\"\n"));
    EXPECT_THAT(exported, HasSubstr("\n\"number\"=dword:ffffffff\n"));
    EXPECT_THAT(exported, HasSubstr("\n[" + key + "\\Sub]\n@=hex:01,ff\n"));
    ExpectOutput({"registry", "export", key, "--output", Text("x.reg")}, "");
    const std::string file = FileBytes(folder.Path() / "x.reg");
    const std::string shown = TvlPlatform::ToUtf8(TvlPlatform::FromUtf16Le(file.data(), file.size()));
    EXPECT_THAT(shown, StartsWith("\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n"));
    ExpectOutput({"registry", "delete", key, "number"}, "");
    ExpectRefused({"registry", "get", key, "number"}, "has no value \"number\"");
    ExpectOutput({"registry", "delete", key}, "");
    ExpectRefused({"registry", "list", key}, "there is no such key");
    ExpectRefused({"registry", "delete", "HKCU"}, "access is denied");
    ExpectRefused({"registry", "get", "HKEY_NOBODY\\x", "y"}, "root");
    ExpectRefused({"registry", "set", key, "x", "4294967296", "--type", "dword"}, "no number");
    ExpectRefused({"registry", "set", key, "x", "0f0", "--type", "binary"}, "hexadecimal");
}

TEST_F(SmallCommands, DownloadAndShowSizesAndPolicies)
{
    const WebServer server([](const std::string&, const LoopbackSocket& connection) {
        connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\nConnection: close\r\n\r\nhello");
    });
    ExpectOutput({"download", TvlPlatform::ToUtf8(server.Url(L"/x")), Text("file")}, "");
    EXPECT_EQ(FileBytes(folder.Path() / "file"), "hello");
    ExpectRefused({"download", "no address", Text("other")}, "could be stored");
    const auto size = nlohmann::json::parse(Run({"size", "1536", "--json"}).output);
    EXPECT_EQ(size["class"], 1);
    EXPECT_EQ(size["value"], 1.5);
    ExpectRefused({"size", "1k"}, "no number of bytes");
    const auto policy = nlohmann::json::parse(Run({"policy", "--json"}).output);
    EXPECT_EQ(policy["IsNetworkInstall"], false);
    EXPECT_EQ(policy["OfflineContentLocation"], "");
}

}   // namespace
