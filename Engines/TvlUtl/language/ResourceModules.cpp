// Resource libraries of the language.
#include "GLB_UILanguage.h"

#include "StoredLanguage.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

#include <atomic>
#include <utility>

namespace Path = TvlUtils::SystemIO::Path;

namespace {
/// The module that the user interface's framework takes resources from.
std::atomic<HMODULE> frameworkModule = nullptr;

void WarnOfMissing(const TvlString& path)
{
    TvlComponent::MessageMgr::ShowWarning((L"Unable to load resource DLL:\n" + path).c_str());
}
}   // namespace

HMODULE GLB_UILanguage::LoadResourceDll(const wchar_t* name)
{
    if (m_commonModule && name && *name)
        return m_commonModule;   // also where there is no folder of languages
    TvlString root;
    GetLanguageRoot(root);
    return LoadResourceDll(name, root.c_str());
}

HMODULE GLB_UILanguage::LoadResourceDll(const wchar_t* name, const wchar_t* folder)
{
    if (!name || !*name || !folder || !*folder)
        return nullptr;
    if (m_commonModule)
        return m_commonModule;
    if (!SelectLanguage())
        return nullptr;
    TvlString dirName;
    TvlString relative;
    GetLanguageDirName(dirName);
    GetRelativeLanguageRoot(relative);
    for (const TvlString& place : {Path::Combine(folder, dirName), TvlString(folder), relative}) {
        // Nothing is ever looked for in the folder that the process happens to be in.
        if (place.IsEmpty())
            continue;
        const TvlString path = Path::Combine(place, name);
        if (!TvlUtils::SystemIO::File::Exists(path))
            continue;
        const HMODULE module = Ports::Modules::Get().LoadAsData(path.Std());
        if (!module) {
            // The installation of this language is damaged: the next start picks one afresh.
            StoredLanguage::Forget();
            WarnOfMissing(path);
        }
        return module;
    }
    WarnOfMissing(folder);
    return nullptr;
}

int GLB_UILanguage::FreeResourceDll(HMODULE module)
{
    if (!module)
        return 0;
    if (module != m_commonModule)
        Ports::Modules::Get().Unload(module);
    return 1;
}

HMODULE GLB_UILanguage::GetResourceModule() { return frameworkModule; }
HMODULE GLB_UILanguage::SwapResourceModule(HMODULE module) { return frameworkModule.exchange(module); }
HMODULE GLB_UILanguage::GetCommonModule() { return m_commonModule; }
HMODULE GLB_UILanguage::SwapCommonModule(HMODULE module) { return std::exchange(m_commonModule, module); }

HMODULE GLB_UILanguage::BeginCommonResources()
{
    return m_commonModule ? SwapResourceModule(m_commonModule) : GetResourceModule();
}

void GLB_UILanguage::EndCommonResources(HMODULE before) { SwapResourceModule(before); }

void GLB_UILanguage::RegisterResourceModule(HMODULE module)
{
    if (module)
        m_pendingModules.push_back(module);
}

void GLB_UILanguage::InitResourceModules()
{
    // A module that is told may register others, which wait for the next call.
    for (const HMODULE module : std::exchange(m_pendingModules, {}))
        if (void* const address = Ports::Modules::Get().Address(module, "DllInitLangRes"))
            reinterpret_cast<void (*)()>(address)();
}
