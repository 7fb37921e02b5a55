// Does one kind of work again and again, for tests that end it in the middle:
//
//   fault_worker WORK LEDGER TIMES     WORK is save, switch, extract, apply, prefer or rounds
//   fault_worker check                 what a start finds, one line each
//
// Before each piece of work the ledger gets a line "begin ENTRY", and behind it "done ENTRY".
//
// Variables of the environment: FAULT_ALLOCATION and FAULT_FILE give the allocation or the file operation, counted from 1,
// that fails in a check, and FAULT_ONWARD that all behind it do. FAULT_DATABASE gives the operation on the registry's
// database that meets the fault FAULT_KIND, whatever the process does.
#include "Checks.h"
#include "FailingDatabase.h"
#include "FailingFiles.h"
#include "FailingHeap.h"
#include "IniUpdateRegistry.h"
#include "PaperTypes.h"
#include "UILanguage.h"
#include "WorkspaceManager.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <new>
#include <optional>
#include <string>

namespace {
namespace SystemIO = TvlUtils::SystemIO;
constexpr int kOutOfMemory = 3;
constexpr int kRefused = 4;
constexpr LANGID kEnglish = 0x0409;
constexpr LANGID kGerman = 0x0407;

/// Kept outside of the process: what it has written is there whatever becomes of it.
class Ledger {
public:
    explicit Ledger(const char* path) : m_file(path, std::ios::app | std::ios::binary) { }
    void Begin(const std::string& entry) { m_file << "begin " << entry << std::endl; }
    void Done(const std::string& entry) { m_file << "done " << entry << std::endl; }

private:
    std::ofstream m_file;
};

/// One piece of work; false when it tells of a failure.
using Work = bool (*)(Ledger& ledger, int number);

bool Save(Ledger& ledger, int number)
{
    // Names go on where the last process of the ledger ended.
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    const std::string name = "paper" + std::to_string(papers.GetCount()) + "_" + std::to_string(number);
    ledger.Begin(name);
    PaperTypeInformation paper;
    paper.DisplayName = TvlPlatform::FromUtf8(name);
    paper.Width = 10000;
    paper.Height = 20000;
    paper.Units = 2;
    papers.AddCustomPaper(paper, true);
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(false);
    ledger.Done(name);
    return true;
}

bool Switch(Ledger& ledger, int)
{
    const auto manager = StartManager();
    const std::string name = manager->GetCurrentWorkspaceName() == L"A" ? "B" : "A";
    ledger.Begin(name);
    const bool isDone =
        manager->SetCurrentWorkspace(TvlPlatform::FromUtf8(name), false, false) == WorkspaceManagerTypes::Result::Ok;
    manager->AppShuttingDown();
    ledger.Done(name);
    return isDone;
}

bool Extract(Ledger& ledger, int number)
{
    const std::string name = number % 2 == 0 ? "A" : "B";
    ledger.Begin(name);
    const bool isDone = WorkspaceFile(WorkspacePath(name)).GetFile(L"content/settings.ini", UserFile(L"extracted.ini"));
    ledger.Done(name);
    return isDone;
}

bool Apply(Ledger& ledger, int number)
{
    const std::string entry = std::to_string(number);
    ledger.Begin(entry);
    IniUpdateRegistry(UserFile(L"Workspaces/settings.ini").c_str());
    ledger.Done(entry);
    return true;
}

/// A preference and the language of the user interface. What could not be stored is told, and not done.
bool Prefer(Ledger& ledger, int)
{
    const std::string value = StoredPreference() == "on" ? "off" : "on";
    ledger.Begin(value);
    const bool isStored = StorePreference(value);
    if (isStored)
        ledger.Done(value);
    CGlbLang language;
    language.SetFromWinLangID(value == "on" ? kGerman : kEnglish);
    return IGLB_UILanguage::GetInst().WriteStoredLanguage(language) == 1 && isStored;
}

/// What an application does from its start to its end. The ledger keeps the longest time that one took.
bool Round(Ledger& ledger, int number)
{
    const auto begin = std::chrono::steady_clock::now();
    const auto manager = StartManager();
    const auto& files = manager->GetWorkspaces();
    bool isDone = files.cend() - files.cbegin() >= 3;
    constexpr const wchar_t* kNames[] = {L"A", L"B", L"_default"};
    isDone =
        manager->SetCurrentWorkspace(kNames[number % 3], false, false) == WorkspaceManagerTypes::Result::Ok && isDone;
    isDone = manager->GetNamedWorkspaces().size() >= 3 && isDone;
    manager->AppShuttingDown();
    const auto taken = std::chrono::steady_clock::now() - begin;
    ledger.Done(std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count()));
    return isDone;
}

struct NamedWork {
    const char* name;
    Work work;
};
constexpr NamedWork kWork[] = {
    {"save", Save}, {"switch", Switch}, {"extract", Extract}, {"apply", Apply}, {"prefer", Prefer}, {"rounds", Round}};

int Number(const char* variable)
{
    const char* const text = std::getenv(variable);
    return text ? std::atoi(text) : 0;
}

int RunWork(Work work, const char* ledgerPath, int times)
{
    Ledger ledger(ledgerPath);
    for (int number = 0; number < times; ++number)
        if (!work(ledger, number))
            return kRefused;
    return 0;
}

int Check()
{
    const int allocation = Number("FAULT_ALLOCATION");
    const int file = Number("FAULT_FILE");
    const bool isOnward = Number("FAULT_ONWARD") != 0;
    std::string report;
    std::optional<FailingFiles> files;
    if (file > 0)
        files.emplace(file, isOnward);
    try {
        std::optional<FailingHeap> heap;
        if (allocation > 0)
            heap.emplace(allocation - 1, isOnward ? FailingHeap::Extent::Onward : FailingHeap::Extent::Once);
        report = ReportState();
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
    std::cout << report;
    return 0;
}
}   // namespace

int main(int count, char** arguments)
{
    if (const int point = Number("FAULT_DATABASE"); point > 0)
        FailDatabase(point, static_cast<DatabaseFault>(Number("FAULT_KIND")));
    if (count == 2 && std::string(arguments[1]) == "check")
        return Check();
    if (count != 4)
        return kRefused;
    for (const auto& [name, work] : kWork)
        if (std::string(name) == arguments[1])
            return RunWork(work, arguments[2], std::atoi(arguments[3]));
    return kRefused;
}
