#include "ProcessWorld.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

namespace {
std::string Settings(const std::string& name)
{
    std::string settings = "[Test]\r\nName=" + name + "\r\n";
    for (int i = 1; i < ProcessWorld::kPreferences; ++i)
        settings += "Value" + std::to_string(i) + "=" + std::string(50, 'v') + "\r\n";
    return settings;
}

void MakeWorkspace(const fs::path& path, const std::string& name)
{
    WorkspaceContainer container = WorkspaceContainer::Create(TvlUtils::SystemIO::FromFilePath(path));
    const std::string settings = Settings(name);
    EXPECT_TRUE(container.AddFile(
        L"content/settings.ini", TvlUtils::Stream::OverMemory(settings.data(), settings.size()), false, nullptr));
    EXPECT_TRUE(container.Close());
}

/// Whether a file belongs to a process at work, or to one that died.
bool IsLeftover(const std::string& name)
{
    for (const char* const end : {".aside", ".extracting", ".applying"})
        if (name.ends_with(end))
            return true;
    return false;
}

void TakeLine(const std::string& line, State& state)
{
    std::istringstream words(line);
    std::string what;
    std::string first;
    std::string second;
    words >> what >> first >> second;
    if (what == "paper")
        state.papers.insert(first);
    else if (what == "predefined")
        state.predefined = std::stoi(first);
    else if (what == "workspace")
        state.workspaces[first] = second;
    else if (what == "current") {
        state.current = first;
        state.settings = second;
    } else if (what == "preferences") {
        state.preferences = std::stoi(first);
        state.preferred = second;
    } else if (what == "preferred") {
        state.preference = first;
        state.language = second;
    } else if (what == "extracted")
        state.extracted = first;
    else if (what == "file" && IsLeftover(first))
        state.leftovers.push_back(first);
}
}   // namespace

ProcessWorld::ProcessWorld()
{
    const fs::path& root = m_folder.Path();
    for (const char* const folder : {"suite/Config", "suite/Workspaces", "user/Workspaces"})
        fs::create_directories(root / folder);
    fs::copy(fs::path(SUITE_FOLDER) / "Config" / "PaperTypes.xml", root / "suite" / "Config" / "PaperTypes.xml");
    for (const char* const name : {"_default", "A", "B"})
        MakeWorkspace(root / "user" / "Workspaces" / (std::string(name) + ".tvws"), name);
    EXPECT_EQ(Work("switch", 1).exitCode, 0);
    ClearLedger();
}

ChildProcess ProcessWorld::Worker(std::vector<std::string> arguments) const
{
    return {"fault_worker", std::move(arguments), {},
        {{"TVL_USER_DIR", Native("user")}, {"TVL_SUITE_DIR", Native("suite")}, {"TVL_REGISTRY", Native("registry.db")}},
        {}};
}

State ProcessWorld::Start() const
{
    const ChildResult result = RunProgram(Worker({"check"}));
    State state;
    state.isThere = result.exitCode == 0;
    EXPECT_TRUE(state.isThere) << result.exitCode << '\n' << result.errors;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        TakeLine(line, state);
    return state;
}

int ProcessWorld::StartWithFault(const std::map<std::string, std::string>& variables) const
{
    ChildProcess child = Worker({"check"});
    for (const auto& [name, value] : variables)
        child.environment[name] = value;
    return RunProgram(child).exitCode;
}

Entries ProcessWorld::Ledger(const std::string& name) const
{
    Entries entries;
    std::istringstream lines(FileBytes(Native(name)));
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
        const std::size_t blank = line.find(' ');
        const std::string entry = line.substr(blank + 1);
        if (line.starts_with("begin")) {
            entries.lastBegun = entry;
            continue;
        }
        entries.done.insert(entry);
        entries.lastDone = entry;
        entries.all.push_back(entry);
    }
    return entries;
}

void ProcessWorld::ClearLedger() const { fs::remove(Native("ledger")); }
