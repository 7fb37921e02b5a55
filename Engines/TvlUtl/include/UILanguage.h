// The language of the user interface: which one it is, where its files lie, and its resource libraries.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlCharacter/CGlbLang.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/InterProcess.h"

#include <memory>
#include <utility>
#include <vector>

/// What the applications of the suite ask for the language of their user interface. Languages are what the installation
/// carries: one folder each below the suite's "Languages", with a file "Data/info.json" that tells the language's code,
/// folder and name.
///
/// The language is decided on first need, on the thread that starts the application: the one stored for the user, else
/// that of the system's user interface, else that of the user's region, else English, else the first by name. The user is
/// asked in a dialog when the administrator or the user wants that, or when nothing but English or the first was left;
/// one process of the user at a time asks. The choice is kept in the registry and does not change as long as the process
/// runs. Results of type int are 1 or 0.
///
/// Registry values, below the product's key of HKEY_CURRENT_USER unless another root is named:
///   "UILang"             text, the language's code in three characters
///   "QueryStartupLang"   number, other than 0 when the user wants to be asked at each start
///   "ShowLangSelection"  number, below HKEY_LOCAL_MACHINE: other than 0 when users are to be asked who were not yet
class TVLUTL_API IGLB_UILanguage {
public:
    /// The object of the process. What it reads and writes goes through the ports, which tests replace.
    static IGLB_UILanguage& GetInst();
    /// The event of this process that keeps it from showing the dialog, once it is set. Null when it can't be made.
    /// Showing no dialog resets the event.
    static std::unique_ptr<TvlUtils::InterProcessEvent> CreateSilentEvent();

    /// The language, chosen now if it was not yet; no language when the installation has none.
    virtual CGlbLang GetLanguage() = 0;
    /// The language in "UILang"; 0 when there is none.
    virtual int ReadStoredLanguage(CGlbLang& language) = 0;
    /// Puts a language into "UILang"; 0 when it can't be written. The language of this process stays.
    virtual int WriteStoredLanguage(CGlbLang language) = 0;
    /// Code and name of the languages that this application can use, in the order of the codes. 0 for none.
    virtual int GetLanguages(std::vector<std::pair<CGlbLang, TvlString>>& languages) = 0;
    /// "QueryStartupLang"; 0 when it is missing.
    virtual int ReadQueryStartupLang() = 0;
    /// Puts 1 or 0 into "QueryStartupLang".
    virtual void WriteQueryStartupLang(int on) = 0;

    // An application says that it runs, and is told by others.

    /// Makes the event that others find while this application runs. Throws std::runtime_error when it can't be made.
    virtual void CreateRunningEvent() = 0;
    /// Sets the event of an application that runs, if there is one. Throws std::runtime_error in a process that has made
    /// the event itself.
    virtual void SignalRunningEvent() = 0;
    /// Whether the event was set since the last call. Throws std::runtime_error when this process has not made it.
    virtual int IsRunningEventSignalled() = 0;
    /// Ends what CreateRunningEvent began. Throws std::runtime_error when this process has not made the event.
    virtual void CloseRunningEvent() = 0;

    // Folders. None of these chooses a language.

    /// Name of the language's folder; 0 when no language is chosen.
    virtual int GetLanguageDirName(TvlString& name) = 0;
    /// The folder "Data" of the language; 0 when no language is chosen.
    virtual int GetLanguageDataPath(TvlString& path) = 0;
    /// The language's folder; 0 when no language is chosen.
    virtual int GetLanguagePath(TvlString& path) = 0;
    /// The folder that has the languages' folders; 0 when there is none.
    virtual int GetLanguageRoot(TvlString& path) = 0;
    /// The language's folder beside the program; 0 when no language is chosen.
    virtual int GetRelativeLanguageRoot(TvlString& path) = 0;
    /// A path into a language's folder, with "DirName" in the place of that folder's name, so that it serves in every
    /// language; other paths as they are. 0 when the result is empty. Throws std::runtime_error without languages.
    virtual int ToDirNamePath(const TvlString& path, TvlString& out) = 0;

    // Resource libraries: modules with texts and pictures in one language, loaded as data.

    /// The same in the folder of GetLanguageRoot.
    virtual HMODULE LoadResourceDll(const wchar_t* name) = 0;
    /// Loads a library from the language's folder in `folder`, else from `folder` itself, else from the language's folder
    /// beside the program. Chooses a language if need be. Null, with a warning, when it is not there; when it can't be
    /// loaded, the stored choice is dropped too. For FreeResourceDll.
    virtual HMODULE LoadResourceDll(const wchar_t* name, const wchar_t* folder) = 0;
    /// Gives a library back; 0 for null. The module that stands in for all libraries stays.
    virtual int FreeResourceDll(HMODULE module) = 0;

    // The module that the user interface's framework takes resources from: one pointer of the process.

    /// The module that resources are taken from now; null for none.
    virtual HMODULE GetResourceModule() = 0;
    /// Puts another one there, and gives the one before.
    virtual HMODULE SwapResourceModule(HMODULE module) = 0;
    /// The module that stands in for every resource library; null, as usual, for none.
    virtual HMODULE GetCommonModule() = 0;
    /// Puts another one there, and gives the one before.
    virtual HMODULE SwapCommonModule(HMODULE module) = 0;
    /// Takes resources from the module that stands in for all, if there is one. Gives the one before, for the next call.
    virtual HMODULE BeginCommonResources() = 0;
    /// Takes resources from `before` again.
    virtual void EndCommonResources(HMODULE before) = 0;

    /// Has InitResourceModules tell a module.
    virtual void RegisterResourceModule(HMODULE module) = 0;
    /// Calls "DllInitLangRes" of each module that was registered since the last call, where there is one.
    virtual void InitResourceModules() = 0;

    // Texts by number.

    /// "TovelDefaultID_" and the number: a text that stands for another until the user gives one.
    virtual int GetDefaultId(ULONG number, TvlString& text) = 0;
    /// A default id as it is; for any other text the one that the library "TvlUtl" had under the number `id`. 0 when the
    /// result is empty.
    virtual int GetResourceStringById(ULONG id, const TvlString& text, TvlString& out) = 0;
    /// The same for the library "TvlCmnRes".
    virtual int GetCommonStringById(ULONG id, const TvlString& text, TvlString& out) = 0;
    /// Whether a text is a default id.
    virtual bool IsDefaultIdText(const TvlString& text) = 0;
    /// The number of a default id; 0 for any other text.
    virtual ULONG ParseDefaultId(const TvlString& text) = 0;

protected:
    ~IGLB_UILanguage() = default;
};

namespace TvlUtl {

/// One step of choosing the language.
struct UILanguageStep {
    const wchar_t* step;   // what was looked at, such as L"stored language"
    TvlString finding;     // what was seen there, and what came of it
};

/// The steps by which this process chose its language, in their order; empty before it did.
TVLUTL_API std::vector<UILanguageStep> GetUILanguageSteps();

}   // namespace TvlUtl
