// An application's life in steps.
#pragma once

#include "Flyer.h"
#include "Panel.h"
#include "SessionApplication.h"
#include "SessionFolder.h"
#include "StepLog.h"

#include <filesystem>
#include <memory>
#include <span>

/// What the steps share.
struct Session {
    Session(const SessionFolder& place, std::filesystem::path given) : folder(place), photo(std::move(given)) { }

    const SessionFolder& folder;
    std::filesystem::path photo;   // the user's, which is only read; empty for one that the session makes

    Panel::Diary started, stopped;   // what the hooks wrote
    std::vector<std::unique_ptr<Panel>> panels;
    Flyer document;
    std::unique_ptr<SessionApplication> application;   // null until it has come up
};

/// One step. A failure is a StepFailure, or any other exception.
struct Step {
    const char* name;
    void (*run)(Session& session, StepLog& log);
};

/// The application's start and its work. When a step fails those behind it are left out.
std::span<const Step> LifeSteps();
/// The application's end, of which every step happens.
std::span<const Step> ClosingSteps();

// The steps of each family.

void RunStartHooks(Session& session, StepLog& log);
void ChooseLanguage(Session& session, StepLog& log);
void CheckProcessor(Session& session, StepLog& log);
void FindLocations(Session& session, StepLog& log);

void ChoosePaper(Session& session, StepLog& log);
void FillFields(Session& session, StepLog& log);

void ComeUpWithWorkspace(Session& session, StepLog& log);
void CreateWorkspaces(Session& session, StepLog& log);
void RefuseSwitch(Session& session, StepLog& log);
void SwitchWorkspaces(Session& session, StepLog& log);
void UseAsTablet(Session& session, StepLog& log);
void ExportWorkspace(Session& session, StepLog& log);
void DeleteWorkspace(Session& session, StepLog& log);

void RenderPreview(Session& session, StepLog& log);
void AskForConsent(Session& session, StepLog& log);
void SaveAndOpenDocument(Session& session, StepLog& log);
void PlacePhoto(Session& session, StepLog& log);
void DuplicatePage(Session& session, StepLog& log);

void SaveWorkspaceAtEnd(Session& session, StepLog& log);
void RunStopHooks(Session& session, StepLog& log);
void RunFinalizers(Session& session, StepLog& log);
