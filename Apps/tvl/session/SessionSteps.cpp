// The order of a session.
#include "Session.h"

namespace {
constexpr Step kLife[] = {
    {"hooks", RunStartHooks},
    {"language", ChooseLanguage},
    {"processor", CheckProcessor},
    {"start", ComeUpWithWorkspace},
    {"locations", FindLocations},
    {"paper", ChoosePaper},
    {"workspaces", CreateWorkspaces},
    {"refusal", RefuseSwitch},
    {"switch", SwitchWorkspaces},
    {"tablet", UseAsTablet},
    {"export", ExportWorkspace},
    {"delete", DeleteWorkspace},
    {"fields", FillFields},
    {"tasks", RenderPreview},
    {"consent", AskForConsent},
    {"document", SaveAndOpenDocument},
    {"photo", PlacePhoto},
    {"duplicate", DuplicatePage},
};

constexpr Step kClosing[] = {
    {"shut down", SaveWorkspaceAtEnd},
    {"stop hooks", RunStopHooks},
    {"finalizers", RunFinalizers},
};
}   // namespace

std::span<const Step> LifeSteps() { return kLife; }
std::span<const Step> ClosingSteps() { return kClosing; }
