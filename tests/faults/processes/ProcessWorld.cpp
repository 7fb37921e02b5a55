#include "ProcessWorld.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

namespace {
void MakeWorkspace(const fs::path& path, const std::string& name)
{
    WorkspaceContainer container = WorkspaceContainer::Create(TvlUtils::SystemIO::FromFilePath(path));
    const auto add = [&](const wchar_t* entry, const std::string& bytes) {
        EXPECT_TRUE(container.AddFile(entry, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr));
    };
    add(L"content/settings.ini", SettingsText({name}));
    add(kOtherEntry, kOtherContent);
    EXPECT_TRUE(container.Close());
}

/// Whether a file belongs to a process at work, or to one that died.
bool IsLeftover(const std::string& name)
{
    for (const char* const end : {".aside", ".extracting", ".applying", ".new"})
        if (name.ends_with(end))
            return true;
    return false;
}

void TakeLine(const std::string& line, State& state)
{
    std::istringstream words(line);
    std::string what;
    std::string name;
    SettingsOwner owner;
    words >> what;
    const auto takeOwner = [&](SettingsOwner& taken) { words >> taken.name >> taken.age; };
    if (what == "paper" && words >> name)
        state.papers.insert(name);
    else if (what == "predefined")
        words >> state.predefined;
    else if (what == "workspace" && words >> name)
        takeOwner(state.workspaces[name]);
    else if (what == "kept" && words >> name)
        takeOwner(state.kept[name]);
    else if (what == "current" && words >> state.current)
        takeOwner(state.settings);
    else if (what == "preferences")
        takeOwner(state.preferences);
    else if (what == "extracted")
        takeOwner(state.extracted);
    else if (what == "preferred")
        words >> state.preference >> state.language;
    else if (what == "file" && words >> name && IsLeftover(name))
        state.leftovers.push_back(name);
}

WorkerResult RunWorker(const ChildProcess& worker)
{
    const ChildResult result = RunProgram(worker);
    WorkerResult told{result.exitCode, result.errors, {}};
    std::istringstream words(result.output);
    for (std::string word; words >> word;)
        if (word == "met")
            words >> told.counted.met;
        else if (word == "counted")
            words >> told.counted.allocations >> told.counted.files >> told.counted.database;
    return told;
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

ChildProcess ProcessWorld::Worker(std::vector<std::string> arguments, const Variables& variables) const
{
    ChildProcess worker{"fault_worker", std::move(arguments), {}, variables, {}};
    worker.environment["TVL_USER_DIR"] = Native("user");
    worker.environment["TVL_SUITE_DIR"] = Native("suite");
    worker.environment["TVL_REGISTRY"] = Native("registry.db");
    return worker;
}

WorkerResult ProcessWorld::Work(const std::string& work, int times, const Variables& variables) const
{
    return RunWorker(Worker({work, Native("ledger"), std::to_string(times)}, variables));
}

WorkerResult ProcessWorld::WorkUntil(const std::string& work, int times, std::chrono::microseconds killAfter) const
{
    ChildProcess worker = Worker({work, Native("ledger"), std::to_string(times)});
    worker.killAfter = killAfter;
    return RunWorker(worker);
}

WorkerResult ProcessWorld::WorkBeside(const std::string& work, int times, const std::string& ledger) const
{
    return RunWorker(Worker({work, Native(ledger), std::to_string(times)}));
}

WorkerResult ProcessWorld::Start(const Variables& variables) const { return RunWorker(Worker({"start"}, variables)); }

State ProcessWorld::Check() const
{
    const ChildResult result = RunProgram(Worker({"check"}));
    State state;
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);)
        TakeLine(line, state);
    return state;
}

Entries ProcessWorld::Ledger(const std::string& name) const
{
    Entries entries;
    std::istringstream lines(FileBytes(Native(name)));
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
        const std::string entry = line.substr(line.find(' ') + 1);
        if (line.starts_with("begin")) {
            entries.lastBegun = entry;
            entries.begun.insert(entry);
            continue;
        }
        if (line.starts_with("changed")) {
            std::string workspace;
            std::istringstream words(entry);
            words >> workspace;
            words >> entries.changed[workspace];
            continue;
        }
        entries.lastDone = entry;
        entries.all.push_back(entry);
    }
    return entries;
}

void ProcessWorld::ClearLedger() const { fs::remove(Native("ledger")); }
