// How the language is chosen.
#include "GLB_UILanguage.h"

#include "SelectionSteps.h"
#include "StoredLanguage.h"
#include "UILanguageDS.h"
#include "UnitTestProcess.h"
#include "siblings/Tvl2D/SkiaUtility.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlResources/Resources.h"
#include "windows/Locale.h"

#include <algorithm>

using SelectionSteps::Note;

namespace {
constexpr CGlbLang kEnglish(5590597);              // "ENU"
constexpr CGlbLang kSimplifiedChinese(5457987);    // "CHS"
constexpr CGlbLang kTraditionalChinese(5523523);   // "CHT"

/// Warns, but not where nobody reads it.
void Warn(const wchar_t* text)
{
    if (!IsUnitTestProcess())
        TvlComponent::MessageMgr::ShowWarning(text);
}

/// The main language of a language's group, as Windows numbers them: German for Austrian German.
CGlbLang MainLanguage(CGlbLang language)
{
    constexpr LANGID kGroup = 1023;
    constexpr LANGID kMain = 1024;
    CGlbLang main;
    if (const LANGID id = language.GetWinLangID())
        main.SetFromWinLangID((id & kGroup) | kMain);
    return main;
}

TvlString Named(CGlbLang language) { return language ? language.GetIO_StrFmt() : TvlString(L"none"); }
}   // namespace

bool GLB_UILanguage::SelectLanguage()
{
    if (m_language)
        return true;
    SelectionSteps::Begin();
    const bool hasLanguages = ReadInstalled();
    NoteInstalled();
    if (!hasLanguages) {
        Warn(m_languageRoot.path.IsEmpty() ? L"The base UI Language directory is invalid"
                                           : L"The UI Language registration list is invalid.");
        return false;
    }
    bool stale = false;
    bool laterTry = false;
    bool fellBack = false;
    if (SelectFrom(stale, laterTry, fellBack)) {
        const bool offer = StoredLanguage::ReadShowSelection() || fellBack;
        if (AskUser(stale && laterTry, offer))
            ForgetFolders();
    }
    SwitchTextRendering();
    Note(L"language", Named(m_language));
    return static_cast<bool>(m_language);
}

bool GLB_UILanguage::ReadInstalled()
{
    TvlString root;
    if (!GetLanguageRoot(root))
        return false;
    ReadInstalledLanguages(root, ApplicationInfo::Settings().GetResourceFileName(), m_languages, m_otherLanguages);
    return !m_languages.empty();
}

void GLB_UILanguage::NoteInstalled() const
{
    Note(L"language folder", m_languageRoot.path.IsEmpty() ? TvlString(L"none") : m_languageRoot.path);
    TvlString codes;
    for (const auto& [code, entry] : m_languages)
        codes += (codes.IsEmpty() ? L"" : L" ") + CGlbLang(code).GetIO_StrFmt();
    Note(L"installed languages", m_languages.empty() ? TvlString(L"none") : codes);
}

/// The folders lie elsewhere once the user has chosen.
void GLB_UILanguage::ForgetFolders()
{
    for (CachedFolder* const folder : {&m_languageRoot, &m_relativeRoot}) {
        const std::lock_guard hold(folder->lock);
        folder->path.Empty();
    }
    TvlString root;
    GetLanguageRoot(root);
    INIClearLangRelProgDirCache();
}

bool GLB_UILanguage::SelectFrom(bool& stale, bool& laterTry, bool& fellBack)
{
    if (TryStored(stale))
        return true;
    Ports::Locale& system = Ports::Locale::Get();
    // A system that does not tell, or tells of none, has one.
    const int count = std::max(system.UILanguageCount().value_or(1), 1);
    Note(L"languages of the system", TvlString().Format(L"%d", count));
    laterTry = TrySystem(L"language of the system", system.UserUILanguage(), stale)
        || TrySystem(L"language of the region", static_cast<LANGID>(system.UserLocaleId()), stale);
    if (laterTry)
        return true;
    fellBack = true;
    laterTry = Try(kEnglish, stale);
    Note(L"English", laterTry ? L"taken" : L"not installed");
    if (!m_language)
        TakeFirstByName();
    return static_cast<bool>(m_language);
}

bool GLB_UILanguage::TryStored(bool& stale)
{
    const CGlbLang stored = StoredLanguage::Read();
    if (stored && Try(stored, false)) {
        Note(L"stored language", Named(stored) + L": taken as " + Named(m_language));
        return true;
    }
    // One that another application of the suite can use is left to it.
    stale = !m_otherLanguages.contains(stored.GetCode());
    Note(L"stored language",
        Named(stored)
            + (!stored      ? L""
                    : stale ? L": not installed"
                            : L": for other applications alone"));
    return false;
}

bool GLB_UILanguage::TrySystem(const wchar_t* step, LANGID id, bool keep)
{
    CGlbLang language;
    language.SetFromWinLangID(id);
    const bool taken = Try(language, keep);
    Note(step, Named(language) + (taken ? L": taken as " + Named(m_language) : TvlString(L": not installed")));
    return taken;
}

bool GLB_UILanguage::Try(CGlbLang language, bool keep)
{
    const CGlbLang usable = Usable(language);
    if (!usable)
        return false;
    if (!keep)
        SetCurrent(usable);
    // Writes "UILang" when the language is not set yet, which is how one that is gone gets replaced.
    Apply(usable);
    return true;
}

CGlbLang GLB_UILanguage::Usable(CGlbLang language) const
{
    const auto isInstalled = [this](CGlbLang code) { return m_languages.contains(code.GetCode()); };
    if (!language || isInstalled(language))
        return language;
    if (language.IsCS() && isInstalled(kSimplifiedChinese))
        return kSimplifiedChinese;
    if (language.IsCT() && isInstalled(kTraditionalChinese))
        return kTraditionalChinese;
    const CGlbLang main = MainLanguage(language);
    return isInstalled(main) ? main : CGlbLang();
}

void GLB_UILanguage::TakeFirstByName()
{
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    if (!GetLanguages(languages))
        return;
    const auto first = std::min_element(
        languages.begin(), languages.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    SetCurrent(first->first);
    Note(L"first by name", Named(m_language));
}

bool GLB_UILanguage::Apply(CGlbLang language)
{
    if (!m_languages.contains(language.GetCode()))
        return false;
    if (m_language != language)
        StoredLanguage::Write(language);
    SetCurrent(language);
    return true;
}

void GLB_UILanguage::SetCurrent(CGlbLang language)
{
    if (m_language == language)
        return;
    m_language = language;
    if (const UILanguageEntry* const entry = CurrentEntry())
        Framework::Resources::SetLanguageFolder(entry->DirName);
    m_dataSource->NotifyPropertyChanged(UILanguageDS::kLangDirCode);
}

void GLB_UILanguage::SwitchTextRendering() const
{
    if (!m_language.IsFarEast())
        return;
    if (m_language.IsCS())
        SkiaUtility::SetChineseTextRendering();
    else
        SkiaUtility::SetFarEastTextRendering();
}
