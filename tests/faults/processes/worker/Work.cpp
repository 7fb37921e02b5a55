#include "Work.h"

#include "Checks.h"
#include "IniUpdateRegistry.h"
#include "PaperTypes.h"
#include "UILanguage.h"
#include "WorkspaceManager.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <chrono>

namespace {
namespace File = TvlUtils::SystemIO::File;
using TvlPlatform::FromUtf8;
using WorkspaceManagerTypes::Result;

constexpr LANGID kEnglish = 0x0409;
constexpr LANGID kGerman = 0x0407;

bool Save(Ledger& ledger, int number)
{
    // Names go on where the last process of the ledger ended.
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    const std::string name = "paper" + std::to_string(papers.GetCount()) + "_" + std::to_string(number);
    ledger.Begin(name);
    PaperTypeInformation paper;
    paper.DisplayName = FromUtf8(name);
    paper.Width = 10000;
    paper.Height = 20000;
    paper.Units = 2;
    papers.AddCustomPaper(paper, true);
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(false);
    ledger.Done(name);
    return true;
}

/// Settings of the same workspace as before in the place of those on disk, as an application stores them.
bool ChangeSettings(Ledger& ledger, int age)
{
    SettingsOwner owner = OwnerInFile(SettingsFile());
    if (!owner.IsAWorkspace())
        return false;
    owner.age = age;
    if (!File::WriteAside(SettingsFile(), SettingsText(owner)))
        return false;
    ledger.Changed(owner);
    return true;
}

/// What the user of an application changes. The first start has no settings yet, and where the registry has failed those on
/// disk are not the application's own.
bool ChangeOwnSettings(Ledger& ledger)
{
    const SettingsOwner owner = OwnerInFile(SettingsFile());
    return owner.name == kNoSettings || IsApplying() || ChangeSettings(ledger, owner.age + 1);
}

bool Switch(Ledger& ledger, int)
{
    const auto manager = StartManager();
    const std::string name = manager->GetCurrentWorkspaceName() == L"A" ? "B" : "A";
    const bool isChanged = ChangeOwnSettings(ledger);
    ledger.Begin(name);
    const bool isCurrent = manager->SetCurrentWorkspace(FromUtf8(name), false, false) == Result::Ok;
    const bool isChangedAgain = ChangeOwnSettings(ledger);
    manager->AppShuttingDown();
    // The end of a manager tells nothing: what it has stored is asked instead.
    const bool isDone = isChanged && isChangedAgain && isCurrent && StoredWorkspace() == name && !IsApplying();
    if (isDone)
        ledger.Done(name);
    return isDone;
}

bool Extract(Ledger& ledger, int number)
{
    const std::string name = number % 2 == 0 ? "A" : "B";
    ledger.Begin(name);
    const bool isDone = WorkspaceFile(WorkspacePath(name)).GetFile(L"content/settings.ini", UserFile(L"extracted.ini"));
    if (isDone)
        ledger.Done(name);
    return isDone;
}

bool Apply(Ledger& ledger, int)
{
    const int age = OwnerInFile(SettingsFile()).age + 1;
    ledger.Begin(std::to_string(age));
    if (!ChangeSettings(ledger, age))
        return false;
    IniUpdateRegistry(SettingsFile().c_str());
    // It tells nothing by itself: the mark stays where the registry has failed.
    const bool isDone = !IsApplying();
    if (isDone)
        ledger.Done(std::to_string(age));
    return isDone;
}

/// What could not be stored is told, and not done.
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

bool Round(Ledger& ledger, int number)
{
    const auto begin = std::chrono::steady_clock::now();
    const auto manager = StartManager();
    const auto& files = manager->GetWorkspaces();
    bool isDone = files.cend() - files.cbegin() >= 3;
    // Another process may be at them just then: such a change is refused, and the next round makes another.
    if (ChangeSettings(ledger, number + 1))
        ledger.Begin(std::to_string(number + 1));
    constexpr const wchar_t* kNames[] = {L"A", L"B", L"_default"};
    isDone = manager->SetCurrentWorkspace(kNames[number % 3], false, false) == Result::Ok && isDone;
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
}   // namespace

Work FindWork(const std::string& wanted)
{
    for (const auto& [name, work] : kWork)
        if (wanted == name)
            return work;
    return nullptr;
}
