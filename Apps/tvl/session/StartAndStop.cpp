// Hooks, language, processor, and what comes at the end.
#include "CpuID.h"
#include "PaperTypes.h"
#include "Session.h"
#include "UILanguage.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlUtils/Singleton.h"

#include <algorithm>

namespace {
/// An object that exists once, of the application's own.
class GlyphCache : public TvlUtils::Singleton<GlyphCache, 0> { };

std::string Joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

/// An object of each priority, in an order that is not that of the priorities.
constexpr std::pair<const char*, DelayInitRegistrar::EPriority> kPanels[] = {
    {"palettes", DelayInitRegistrar::eDefault},
    {"dockers", DelayInitRegistrar::eDefault},
    {"event log", DelayInitRegistrar::eEarly},
};

/// The step of the choice that found a language; empty when none did.
std::string ReasonFor(CGlbLang language)
{
    const TvlString beginning = language.GetIO_StrFmt() + TvlString(L":");
    for (const auto& [step, finding] : TvlUtl::GetUILanguageSteps())
        if (finding.Find(beginning.c_str()) == 0)
            return Shown(step);
    return {};
}
}   // namespace

void RunStartHooks(Session& session, StepLog& log)
{
    for (const auto& [name, priority] : kPanels)
        session.panels.push_back(std::make_unique<Panel>(name, priority, session.started, session.stopped));
    DelayInitRegistrar& hooks = DelayInitRegistrar::GetInst();
    hooks.RunStartupHooks(true);
    hooks.RunStartupHooks(false);
    GlyphCache::GetInstance();
    log.Did("started " + Joined(session.started));
    Require(session.started == Panel::Diary{"event log", "palettes", "dockers"}, "that is not the order of the hooks");
}

void ChooseLanguage(Session&, StepLog& log)
{
    const auto silent = IGLB_UILanguage::CreateSilentEvent();   // nobody is there to answer the dialog
    Require(silent != nullptr, "the dialog can't be kept away");
    silent->set();
    IGLB_UILanguage& ui = IGLB_UILanguage::GetInst();
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    Require(ui.GetLanguages(languages) != 0, "no language is installed");
    const CGlbLang language = ui.GetLanguage();
    const auto chosen = std::find_if(
        languages.begin(), languages.end(), [&](const auto& installed) { return installed.first == language; });
    Require(chosen != languages.end(), "the language " + Shown(language.GetIO_StrFmt()) + " is not installed");
    TvlString folder;
    Require(ui.GetLanguageDataPath(folder) != 0, "the language has no folder");
    log.Did(Count(languages.size(), "language") + " installed");
    log.Did(Shown(language.GetIO_StrFmt()) + " (" + Shown(chosen->second) + ") is in use");
    if (const std::string reason = ReasonFor(language); !reason.empty())
        log.Did("because of the " + reason);
}

void CheckProcessor(Session&, StepLog& log)
{
    const CpuID& processor = CpuID::GetInstance();
    const TvlString missing = CpuID::GetMissingInstructionsStr();
    Require(processor.HasSufficientHardwareSupport() == missing.IsEmpty(), "the check contradicts itself");
    // Applications that can't do without would end here.
    log.Did(missing.IsEmpty() ? "has SSSE3, AVX, AVX2 and POPCNT" : "lacks " + Shown(missing));
}

void SaveWorkspaceAtEnd(Session& session, StepLog& log)
{
    if (!session.application) {
        log.Did("no workspace to save");
        return;
    }
    session.application->RefreshPreferences();
    session.application->ShutDown();
    WorkspaceManager& manager = session.application->Manager();
    const WorkspaceFile* const current = manager.GetCurrentWorkspace();
    Require(current, "there is no current workspace");
    log.Did("the preferences are saved in " + Quoted(current->GetName()));
    log.Left(current->GetFilename());
    log.Left(manager.GetProfileSettingsFile());
}

void RunStopHooks(Session& session, StepLog& log)
{
    DelayInitRegistrar& hooks = DelayInitRegistrar::GetInst();
    hooks.RunShutdownHooks(false);
    hooks.RunShutdownHooks(true);
    session.panels.clear();
    log.Did("stopped " + Joined(session.stopped));
    Panel::Diary backwards = session.started;
    std::reverse(backwards.begin(), backwards.end());
    Require(session.stopped == backwards, "that is not the order of the start backwards");
}

void RunFinalizers(Session& session, StepLog& log)
{
    session.application.reset();
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(true);
    const bool was = GlyphCache::HasInstance();
    GlyphCache::StaticFinalizer();   // as when the module goes away
    Require(!GlyphCache::HasInstance(), "an object is left");
    log.Did(was ? "the objects that exist once are gone" : "there was no object to end");
}
