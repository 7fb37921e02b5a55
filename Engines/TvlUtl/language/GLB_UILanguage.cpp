#include "GLB_UILanguage.h"

#include "InjectedServices.h"
#include "SharedNames.h"
#include "StoredLanguage.h"
#include "UILanguageDS.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

#include <stdexcept>

namespace Path = TvlUtils::SystemIO::Path;
using TvlUtils::InterProcessEvent;

namespace {
// Install programs, which register the suite's modules while resource libraries may be missing.
constexpr const wchar_t* kRegisteringPrograms[] = {L"regsvr32.exe", L"IsRegSpy.exe"};
// The desktop loads the suite's previews: no dialog may come from there.
constexpr const wchar_t* kDesktop = L"explorer.exe";

int LanguageCode() { return static_cast<int>(IGLB_UILanguage::GetInst().GetLanguage().GetCode()); }
int LanguagePath(TvlString& path) { return IGLB_UILanguage::GetInst().GetLanguagePath(path); }
int LanguageDirName(TvlString& name) { return IGLB_UILanguage::GetInst().GetLanguageDirName(name); }

/// Gives the frame its answers when the library is loaded.
[[maybe_unused]] const bool injected = [] {
    InjectedServices& services = TheInjectedServices();
    services.getLanguage = LanguageCode;
    services.getLanguagePath = LanguagePath;
    services.getLanguageDirName = LanguageDirName;
    return true;
}();

/// The folder, asked for until it is known.
template <class Ask>
TvlString Folder(CachedFolder& cached, Ask ask)
{
    const std::lock_guard hold(cached.lock);
    if (cached.path.IsEmpty())
        cached.path = ask();
    return cached.path;
}
}   // namespace

IGLB_UILanguage& IGLB_UILanguage::GetInst() { return GLB_UILanguage::GetInstance(); }

std::unique_ptr<InterProcessEvent> IGLB_UILanguage::CreateSilentEvent()
{
    const TvlString name = TvlString().Format(L"TovelAppSilent_%u", Ports::Modules::Get().ProcessId());
    return InterProcessEvent::createEvent(name, 1, 0);
}

GLB_UILanguage::GLB_UILanguage() : m_dataSource(UILanguageDS::GetSource())
{
    const TvlString program = Path::GetFileName(Path::GetProcessFileName(nullptr));
    if (program.IsEmpty())
        return;
    for (const wchar_t* const name : kRegisteringPrograms)
        if (program.CompareNoCase(name) == 0)
            m_commonModule = Ports::Modules::Get().Loaded(program.Std());
    if (program.CompareNoCase(kDesktop) == 0) {
        m_silentEvent = CreateSilentEvent();
        if (m_silentEvent)
            m_silentEvent->set();
    }
}

GLB_UILanguage::~GLB_UILanguage()
{
    m_silentEvent.reset();
    m_running.reset();
    m_languages.clear();
    m_otherLanguages.clear();
}

CGlbLang GLB_UILanguage::GetLanguage()
{
    SelectLanguage();
    return m_language;
}

int GLB_UILanguage::ReadStoredLanguage(CGlbLang& language)
{
    language = StoredLanguage::Read();
    return language ? 1 : 0;
}

int GLB_UILanguage::WriteStoredLanguage(CGlbLang language) { return StoredLanguage::Write(language); }

int GLB_UILanguage::GetLanguages(std::vector<std::pair<CGlbLang, TvlString>>& languages)
{
    if (m_languages.empty())
        ReadInstalled();
    languages.clear();
    for (const auto& [code, entry] : m_languages)
        languages.emplace_back(CGlbLang(code), entry->UIName);
    return !languages.empty();
}

int GLB_UILanguage::ReadQueryStartupLang() { return StoredLanguage::ReadQueryStartup(); }
void GLB_UILanguage::WriteQueryStartupLang(int on) { StoredLanguage::WriteQueryStartup(on != 0); }

void GLB_UILanguage::CreateRunningEvent()
{
    m_running = InterProcessEvent::createEvent(SharedName(L"AnAppIsRunning"), 1, 0);
    if (!m_running)
        throw std::runtime_error("the event of a running application can't be made");
}

void GLB_UILanguage::SignalRunningEvent()
{
    if (m_running)
        throw std::runtime_error("this process is the running application");
    if (const auto event = InterProcessEvent::openEvent(SharedName(L"AnAppIsRunning")))
        event->set();
}

int GLB_UILanguage::IsRunningEventSignalled()
{
    if (!m_running)
        throw std::runtime_error("no event of a running application");
    return m_running->isSignalled();
}

void GLB_UILanguage::CloseRunningEvent()
{
    if (!m_running)
        throw std::runtime_error("no event of a running application");
    m_running.reset();
}

const UILanguageEntry* GLB_UILanguage::CurrentEntry() const
{
    const auto found = m_languages.find(m_language.GetCode());
    return found == m_languages.end() ? nullptr : found->second.get();
}

int GLB_UILanguage::GetLanguageDirName(TvlString& name)
{
    const UILanguageEntry* const entry = CurrentEntry();
    if (entry)
        name = entry->DirName;
    return entry != nullptr;
}

int GLB_UILanguage::GetLanguageDataPath(TvlString& path)
{
    const int known = GetLanguagePath(path);
    if (known)
        path = Path::Combine(path, L"Data");
    return known;
}

int GLB_UILanguage::GetLanguagePath(TvlString& path)
{
    const UILanguageEntry* const entry = CurrentEntry();
    TvlString root;
    if (!entry || !GetLanguageRoot(root))
        return 0;
    path = Path::Combine(root, entry->DirName);
    return 1;
}

int GLB_UILanguage::GetLanguageRoot(TvlString& path)
{
    path = Folder(m_languageRoot, INIGetLanguageDir);
    return !path.IsEmpty();
}

int GLB_UILanguage::GetRelativeLanguageRoot(TvlString& path)
{
    path = Folder(m_relativeRoot, INIGetLangRelProgDir);
    return !path.IsEmpty();
}

int GLB_UILanguage::ToDirNamePath(const TvlString& path, TvlString& out)
{
    out = path;
    TvlString root;
    if (!GetLanguageRoot(root))
        throw std::runtime_error("no language folder");
    const wchar_t separator = Path::AddBackslash(L"x")[1];
    const int begin = root.GetLength() + 1;   // of the language's folder
    const bool isBelow =
        path.Left(root.GetLength()) == root && path.GetLength() >= begin && path[root.GetLength()] == separator;
    const int end = isBelow ? path.Find(separator, begin) : TvlString::npos;
    if (end >= 0)
        out = path.Left(begin) + L"DirName" + path.Mid(end);
    return !out.IsEmpty();
}
