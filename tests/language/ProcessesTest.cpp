// Real processes: several that start at once, and the program's commands.
#include "ChildProcess.h"
#include "UserWorld.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlUtils/InterProcess.h"

#include <gmock/gmock.h>
#include <optional>
#include <thread>

namespace {
using namespace PREFUTILS;
using testing::AllOf;
using testing::HasSubstr;
using TvlUtils::InterProcessEvent;

/// Keeps the values that the child processes change: on windows they are the user's own.
class StoredValues {
public:
    StoredValues()
    {
        for (const wchar_t* const name : kNames)
            m_values.push_back(Read(name));
    }
    StoredValues(const StoredValues&) = delete;
    StoredValues& operator=(const StoredValues&) = delete;
    ~StoredValues()
    {
        for (std::size_t i = 0; i < m_values.size(); ++i)
            Write(kNames[i], m_values[i]);
    }

private:
    struct Value {
        DWORD type = 0;
        std::vector<BYTE> bytes;
    };
    static constexpr const wchar_t* kNames[] = {L"UILang", L"QueryStartupLang"};

    static HKEY Key()
    {
        HKEY key = nullptr;
        IRegistry::GetInstance().RegCreateKeyExW(RegistryRoot(0x80000001), L"SOFTWARE\\Tovel\\Suite", 0, nullptr, 0,
            kRegistryReadWrite, nullptr, &key, nullptr);
        return key;
    }
    static std::optional<Value> Read(const wchar_t* name)
    {
        Value value;
        value.bytes.resize(64);
        DWORD size = 64;
        const HKEY key = Key();
        const bool found = key
            && IRegistry::GetInstance().RegQueryValueExW(key, name, nullptr, &value.type, value.bytes.data(), &size)
                == 0;
        IRegistry::GetInstance().RegCloseKey(key);
        value.bytes.resize(size);
        return found ? std::optional(value) : std::nullopt;
    }
    static void Write(const wchar_t* name, const std::optional<Value>& value)
    {
        const HKEY key = Key();
        if (value)
            IRegistry::GetInstance().RegSetValueExW(
                key, name, 0, value->type, value->bytes.data(), static_cast<DWORD>(value->bytes.size()));
        else
            IRegistry::GetInstance().RegDeleteValueW(key, name);
        IRegistry::GetInstance().RegCloseKey(key);
    }

    std::vector<std::optional<Value>> m_values;
};

class LanguageProcesses : public testing::Test {
protected:
    LanguageProcesses()
    {
        Install("ENU", "English");
        Install("DEU", "Deutsch");
        Install("FRA", "French");
        m_world.environment.variables[L"TVL_SUITE_DIR"] = m_world.Path("suite").Std();
    }
    void Install(const std::string& code, const std::string& name) const
    {
        m_world.MakeFile("suite/Languages/" + code + "/Data/info.json",
            R"({"langCode":")" + code + R"(","dirName":")" + code + R"(","uiName":")" + name + "\"}");
    }
    ChildResult Run(const std::string& program, std::vector<std::string> arguments) const
    {
        const auto path = [this](const char* name) { return TvlPlatform::ToUtf8(m_world.Path(name).Std()); };
        ChildResult result = RunProgram({program, std::move(arguments), "",
            {{"TVL_SUITE_DIR", path("suite")}, {"TVL_USER_DIR", path("user")}, {"TVL_REGISTRY", path("registry.db")},
                {"LANG", "en_US.UTF-8"}, {"LC_ALL", "en_US.UTF-8"}}});
        std::erase(result.output, '\r');
        return result;
    }
    ChildResult Tvl(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "language");
        return Run("tvl", std::move(arguments));
    }

    StoredValues m_values;
    UserWorld m_world;
};

TEST_F(LanguageProcesses, StartedAtOnceAskOnceAndAgree)
{
    ASSERT_EQ(Tvl({"set", "DEU", "--ask", "on"}).exitCode, 0);
    const auto start = InterProcessEvent::createEvent(L"language-start", 0, 0);
    std::vector<std::unique_ptr<InterProcessEvent>> ready;
    std::vector<ChildResult> results(4);
    std::vector<std::thread> processes;
    for (std::size_t i = 0; i < results.size(); ++i) {
        const std::string number = std::to_string(i);
        ready.push_back(InterProcessEvent::createEvent(L"language-ready-" + TvlString(std::to_wstring(i)), 0, 0));
        processes.emplace_back([&, i, number] { results[i] = Run("language_process", {number}); });
    }
    for (const auto& event : ready)
        EXPECT_TRUE(event->wait(120000));
    start->set();
    for (std::thread& process : processes)
        process.join();
    int asked = 0;
    for (const ChildResult& result : results) {
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_THAT(result.output, testing::EndsWith("FRA"));
        asked += result.output.starts_with("asked ");
    }
    EXPECT_EQ(asked, 1);
    EXPECT_THAT(Tvl({"current"}).output, testing::StartsWith("FRA  "));
}

TEST_F(LanguageProcesses, CommandsListSetAndExplain)
{
    EXPECT_EQ(Tvl({"list"}).output, "FRA  0x040c  French\nDEU  0x0407  Deutsch\nENU  0x0409  English\n");
    EXPECT_THAT(Tvl({"list", "--json"}).output, HasSubstr(R"({"code":"DEU","windowsId":1031,"name":"Deutsch"})"));
    const ChildResult unknown = Tvl({"set", "JPN"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.errors, HasSubstr("\"JPN\" is not installed; there are FRA DEU ENU"));

    EXPECT_EQ(Tvl({"set", "deu", "--ask", "on"}).exitCode, 0);
    const ChildResult current = Tvl({"current"});
    EXPECT_EQ(current.errors, "") << "it neither asks nor warns";
    EXPECT_EQ(current.output, "DEU  " + TvlPlatform::ToUtf8(m_world.Path("suite/Languages/DEU").Std()) + "\n");
    EXPECT_THAT(Tvl({"why"}).output,
        AllOf(HasSubstr("installed languages     FRA DEU ENU\n"),
            HasSubstr("stored language         DEU: taken as DEU\n"),
            HasSubstr("question                not asked: the process is silent\n"),
            HasSubstr("language                DEU\n")));
    // Without a terminal nobody can be asked.
    const ChildResult asking = Tvl({"set", "ENU", "--ask", "off"});
    EXPECT_EQ(asking.exitCode, 0);
    EXPECT_THAT(Tvl({"current", "--ask"}).output, testing::StartsWith("ENU  "));
}

TEST_F(LanguageProcesses, CommandsTellOfASuiteWithoutLanguages)
{
    m_world.Remove("suite");
    for (const char* const command : {"list", "current"}) {
        const ChildResult result = Tvl({command});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.errors, HasSubstr("the suite has no languages"));
    }
    EXPECT_THAT(Tvl({"why"}).output, HasSubstr("language folder         none\n"));
}

}   // namespace
