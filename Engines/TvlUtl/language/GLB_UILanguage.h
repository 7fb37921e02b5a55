// The language of the user interface.
#pragma once

#include "InstalledLanguages.h"
#include "UILanguage.h"
#include "siblings/DataBinding/IDataSource.h"
#include "siblings/TvlUtils/Singleton.h"

#include <mutex>

/// A folder that is kept once it is known.
struct CachedFolder {
    TvlString path;   // empty until it is known
    std::recursive_mutex lock;
};

class GLB_UILanguage final : public IGLB_UILanguage, public TvlUtils::Singleton<GLB_UILanguage, 1> {
public:
    /// Choosing programs that must not ask, or that must load no libraries, are known by their names.
    GLB_UILanguage();
    ~GLB_UILanguage();

    CGlbLang GetLanguage() override;
    int ReadStoredLanguage(CGlbLang& language) override;
    int WriteStoredLanguage(CGlbLang language) override;
    int GetLanguages(std::vector<std::pair<CGlbLang, TvlString>>& languages) override;
    int ReadQueryStartupLang() override;
    void WriteQueryStartupLang(int on) override;
    void CreateRunningEvent() override;
    void SignalRunningEvent() override;
    int IsRunningEventSignalled() override;
    void CloseRunningEvent() override;
    int GetLanguageDirName(TvlString& name) override;
    int GetLanguageDataPath(TvlString& path) override;
    int GetLanguagePath(TvlString& path) override;
    int GetLanguageRoot(TvlString& path) override;
    int GetRelativeLanguageRoot(TvlString& path) override;
    int ToDirNamePath(const TvlString& path, TvlString& out) override;
    HMODULE LoadResourceDll(const wchar_t* name) override;
    HMODULE LoadResourceDll(const wchar_t* name, const wchar_t* folder) override;
    int FreeResourceDll(HMODULE module) override;
    HMODULE GetResourceModule() override;
    HMODULE SwapResourceModule(HMODULE module) override;
    HMODULE GetCommonModule() override;
    HMODULE SwapCommonModule(HMODULE module) override;
    HMODULE BeginCommonResources() override;
    void EndCommonResources(HMODULE before) override;
    void RegisterResourceModule(HMODULE module) override;
    void InitResourceModules() override;
    int GetDefaultId(ULONG number, TvlString& text) override;
    int GetResourceStringById(ULONG id, const TvlString& text, TvlString& out) override;
    int GetCommonStringById(ULONG id, const TvlString& text, TvlString& out) override;
    bool IsDefaultIdText(const TvlString& text) override;
    ULONG ParseDefaultId(const TvlString& text) override;

private:
    friend struct UILanguageLayout;   // tests look at the order of the fields

    // The selection.
    bool SelectLanguage();
    bool SelectFrom(bool& stale, bool& laterTry, bool& fellBack);
    bool TryStored(bool& stale);
    bool TrySystem(const wchar_t* step, LANGID id, bool keep);
    bool Try(CGlbLang language, bool keep);
    CGlbLang Usable(CGlbLang language) const;
    void TakeFirstByName();
    bool Apply(CGlbLang language);
    void SetCurrent(CGlbLang language);
    void SwitchTextRendering() const;
    bool ReadInstalled();
    void NoteInstalled() const;
    void ForgetFolders();

    // The dialog step.
    bool AskUser(bool stale, bool offer);
    bool AskAlone();
    void TakeAnswer(CGlbLang chosen);
    void TakeOthersAnswer();

    const UILanguageEntry* CurrentEntry() const;

    CGlbLang m_language;
    HMODULE m_commonModule = nullptr;   // stands in for every resource library; null for none
    CachedFolder m_languageRoot;
    CachedFolder m_relativeRoot;
    std::unique_ptr<TvlUtils::InterProcessEvent> m_silentEvent;   // made on first need
    std::unique_ptr<TvlUtils::InterProcessEvent> m_running;       // null unless this application says that it runs
    std::vector<HMODULE> m_pendingModules;                        // that InitResourceModules has not told yet
    UILanguageMap m_languages;                                    // that this application can use
    UILanguageMap m_otherLanguages;                               // that other applications of the suite can use
    std::shared_ptr<IDataSourceBase> m_dataSource;                // a UILanguageDS
};
