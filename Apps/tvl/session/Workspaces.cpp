// The application's workspaces.
#include "Session.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <cwchar>

using WorkspaceManagerTypes::Result;
namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr const wchar_t* kSession = L"Session";   // stays
constexpr const wchar_t* kDraft = L"Draft";       // goes again
constexpr const wchar_t* kDefault = L"_default";

// How many sessions the workspace has seen. It is a preference, and so each workspace has its own.
CAppPrefObject<TvlString> visits(L"Session/Visits", L"0");

void RequireOk(Result result, const std::string& what)
{
    Require(result == Result::Ok, what + " failed with result " + std::to_string(static_cast<int>(result)));
}

void RequireCurrent(const Session& session, const wchar_t* name)
{
    const TvlString current = session.application->Manager().GetCurrentWorkspaceName();
    Require(current == name, Quoted(current) + " is current");
}

const WorkspaceFile* Find(WorkspaceManager& manager, const wchar_t* name)
{
    const auto& files = manager.GetWorkspaces();
    const auto found =
        std::find_if(files.cbegin(), files.cend(), [&](const WorkspaceFile& file) { return file.GetName() == name; });
    return found == files.cend() ? nullptr : &*found;
}

/// Makes a workspace from the default one, unless an earlier session has.
void Create(WorkspaceManager& manager, const wchar_t* name, const wchar_t* description, StepLog& log)
{
    if (Find(manager, name)) {
        log.Did(Quoted(name) + " is there from an earlier session");
        return;
    }
    MultiLanguageString title, text;
    title.SetDefaultLangString(name);
    text.SetDefaultLangString(description);
    RequireOk(manager.CreateNewWorkspace(name, kDefault, title, text), "making " + Quoted(name));
    const WorkspaceFile* const made = Find(manager, name);
    Require(made != nullptr, Quoted(name) + " is not among the workspaces");
    log.Did(Quoted(name) + " is made from " + Quoted(kDefault));
}

/// Changes the workspace, and sees to it that it has changed.
void SwitchTo(Session& session, const wchar_t* name)
{
    session.application->RefreshPreferences();   // where nobody is told of the change they are saved as they are
    RequireOk(session.application->Switch(name), "the change to " + Quoted(name));
    RequireCurrent(session, name);
}
}   // namespace

void ComeUpWithWorkspace(Session& session, StepLog& log)
{
    session.application = std::make_unique<SessionApplication>(session.document);
    WorkspaceManager& manager = session.application->Manager();
    const WorkspaceFile* const current = manager.GetCurrentWorkspace();
    Require(current, "there is no workspace");
    log.Did(
        "comes up with " + Quoted(current->GetName()) + ", " + Quoted(current->GetTitleInUILang()) + " to its user");
    log.Did(Count(manager.GetNamedWorkspaces().size(), "workspace") + " to choose from");
}

void CreateWorkspaces(Session& session, StepLog& log)
{
    WorkspaceManager& manager = session.application->Manager();
    Create(manager, kSession, L"Keeps what the sessions have in common.", log);
    Create(manager, kDraft, L"Goes with its session.", log);
    SwitchTo(session, kSession);
    log.Left(Find(manager, kSession)->GetFilename());
}

void RefuseSwitch(Session& session, StepLog& log)
{
    SessionApplication& application = *session.application;
    if (!application.IsTold()) {
        log.Did("left out: without windows the application is not asked");
        return;
    }
    application.RefuseChanges(true);
    const Result result = application.Switch(kDraft);
    application.RefuseChanges(false);
    Require(result == Result::ChangeFailed, "the refusal counted for nothing");
    RequireCurrent(session, kSession);
    // The manager leaves the other workspace's settings in force.
    WorkspaceManager& manager = application.Manager();
    manager.ExtractSettingsFromWorkspace(*manager.GetCurrentWorkspace());
    application.RefreshPreferences();
    log.Did("the application refused to change to " + Quoted(kDraft) + "; " + Quoted(kSession) + " stays");
}

void SwitchWorkspaces(Session& session, StepLog& log)
{
    const long now = std::wcstol(visits.GetValue().c_str(), nullptr, 10) + 1;
    const TvlString text = std::to_wstring(now);
    Require(visits.SetValue(text), "the preference can't be stored");
    SwitchTo(session, kDraft);
    const TvlString there = visits.GetValue();
    Require(there != text, "the preferences did not change with the workspace");
    SwitchTo(session, kSession);
    Require(visits.GetValue() == text, "the preferences did not come back with the workspace");
    log.Did("to " + Quoted(kDraft) + " and back, " + Count(session.application->CountChanges(), "change") + " so far");
    log.Did("the preference " + Quoted(visits.GetName()) + " was " + Shown(there) + " there and is " + Shown(text)
        + " here");
}

void UseAsTablet(Session& session, StepLog& log)
{
    SessionApplication& application = *session.application;
    WorkspaceManager& manager = application.Manager();
    const bool toggles = manager.GetTabletModeWorkspaceToggling();
    manager.SetTabletModeWorkspaceToggling(true);
    application.Save();
    const bool changed = manager.ProcessInteractionUpdate(kTabletInteraction);
    const TvlString name = manager.GetCurrentWorkspaceName();
    manager.ProcessInteractionUpdate(kDesktopInteraction);
    manager.SetTabletModeWorkspaceToggling(toggles);
    application.RefreshPreferences();
    Require(changed, "nothing changed with the mode");
    RequireCurrent(session, kSession);
    log.Did("as a tablet: " + Quoted(name) + ", and back at the desk: " + Quoted(kSession));
}

void ExportWorkspace(Session& session, StepLog& log)
{
    WorkspaceManager& manager = session.application->Manager();
    const TvlString target = session.folder.File(L"Exported.tvws");
    WorkspaceFileExportSettings exported;
    exported.Name = kSession;
    exported.Framework = L"tvl";
    exported.Version = L"1.0";
    exported.ExportApplicationData = true;
    RequireOk(manager.ExportWorkspace(target, exported), "the export");
    WorkspaceFileExportSettings read;
    RequireOk(manager.ReadExportWorkspaceSettings(target, read), "reading the exported workspace");
    Require(read.Name == exported.Name && read.ExportApplicationData, "the exported workspace tells something else");
    log.Did(Quoted(read.Name) + " is exported with its settings");
    log.Left(target);
}

void DeleteWorkspace(Session& session, StepLog& log)
{
    WorkspaceManager& manager = session.application->Manager();
    Require(manager.DeleteWorkspace(kDefault) == Result::DefaultProtected, "a default workspace can be deleted");
    const TvlString path = Find(manager, kDraft)->GetFilename();
    RequireOk(manager.DeleteWorkspace(kDraft), "deleting " + Quoted(kDraft));
    Require(!SystemIO::File::Exists(path), log.Name(path) + " is still there");
    RequireCurrent(session, kSession);
    log.Did(Quoted(kDraft) + " is deleted; " + Quoted(kDefault) + " can't be");
}
