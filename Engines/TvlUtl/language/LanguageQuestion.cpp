// When the user is asked for the language.
#include "GLB_UILanguage.h"

#include "LanguageSelectionDialog.h"
#include "SelectionSteps.h"
#include "SharedNames.h"
#include "StoredLanguage.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "windows/Windowing.h"

#include <stdexcept>

using SelectionSteps::Note;

namespace {
constexpr const wchar_t* kStep = L"question";

/// Takes the screen of the application's start out of the dialog's way where windows can't be moved with a mouse.
void ClearStartupScreen()
{
    constexpr int kTabletComputer = 86;   // SM_TABLETPC
    const IAppStartup& startup = ApplicationInfo::AppStartup();
    if (startup.IsScreenUp() && Ports::Windowing::Get().SystemMetric(kTabletComputer) != 0)
        startup.GiveWay();
}
}   // namespace

bool GLB_UILanguage::AskUser(bool stale, bool offer)
{
    if (!m_language)
        return false;
    if (!m_silentEvent)
        m_silentEvent = CreateSilentEvent();
    if (!m_silentEvent)
        throw std::runtime_error("the event of a silent process can't be made");
    if (m_silentEvent->isSignalled()) {
        Note(kStep, L"not asked: the process is silent");
        return false;
    }
    const bool hasQuery = StoredLanguage::HasQueryStartup();
    if (m_languages.size() >= 2 && (hasQuery || offer)) {
        if (hasQuery && !StoredLanguage::ReadQueryStartup() && !stale) {
            Note(kStep, L"not asked: \"QueryStartupLang\" is off");
            return false;
        }
        return AskAlone();
    }
    Note(kStep, m_languages.size() < 2 ? L"not asked: there is one language" : L"not asked: nobody wants it");
    if (stale)
        TvlComponent::MessageMgr::ShowWarning(L"The stored User Language was not available.");
    return false;
}

bool GLB_UILanguage::AskAlone()
{
    TvlUtils::InterProcessMutex mutex(SharedName(L"UILangDlgLock"));
    // Stays set for every process that waits meanwhile.
    const auto shown = TvlUtils::InterProcessEvent::createEvent(SharedName(L"UILangDlgShown"), 0, 0);
    if (!mutex || !shown)
        throw std::runtime_error("the language dialog's lock can't be made");
    const TvlUtils::InterProcessLock hold(mutex);
    if (!hold)
        throw std::runtime_error("the language dialog's lock can't be taken");
    if (shown->isSignalled()) {
        TakeOthersAnswer();
        Note(kStep, L"asked by another process, which left " + m_language.GetIO_StrFmt());
        return false;
    }
    ClearStartupScreen();
    const auto [chosen, answered] = RunLanguageSelectionDialog(*this);
    if (answered && chosen)
        TakeAnswer(chosen);
    Note(kStep, chosen ? L"answered with " + chosen.GetIO_StrFmt() : TvlString(L"not answered"));
    shown->set();
    return true;
}

void GLB_UILanguage::TakeAnswer(CGlbLang chosen)
{
    SelectLanguage();
    if (chosen == m_language) {
        if (StoredLanguage::Read() != chosen) {
            Apply(chosen);
            StoredLanguage::Write(chosen);
        }
        return;
    }
    Apply(chosen);
    if (m_language != chosen)
        StoredLanguage::Write(chosen);
    SetCurrent(chosen);
}

/// The process that asked has stored the answer: all that were started together agree on it.
void GLB_UILanguage::TakeOthersAnswer()
{
    const CGlbLang usable = Usable(StoredLanguage::Read());
    if (!usable || usable == m_language)
        return;
    SetCurrent(usable);
    ForgetFolders();
}
