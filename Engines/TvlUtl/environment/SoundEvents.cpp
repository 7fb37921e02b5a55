#include "SoundEvents.h"

#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"
#include "windows/Modules.h"
#include "windows/Sound.h"

#include <atomic>

namespace {
constexpr DWORD kPlayFlags = 131;            // SND_ASYNC | SND_NODEFAULT | SND_APPLICATION
constexpr DWORD kCurrentUser = 0x80000001;   // HKEY_CURRENT_USER
constexpr const wchar_t* kLabels = L"AppEvents\\EventLabels";
constexpr const wchar_t* kApplications = L"AppEvents\\Schemes\\Apps";

std::atomic<bool> soundsEnabled = false;

/// The program's file name without its extension: the system finds the events of a program under it.
const TvlString& ProgramName()
{
    static const TvlString name =
        TvlUtils::SystemIO::FromFilePath(TvlUtils::SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath()).stem());
    return name;
}

/// Makes a key of the user with `text` as its unnamed value.
void WriteKey(const TvlString& path, const TvlString& text)
{
    PREFUTILS::IRegistry& registry = PREFUTILS::IRegistry::GetInstance();
    HKEY key = nullptr;
    if (registry.RegCreateKeyExW(PREFUTILS::RegistryRoot(kCurrentUser), path.c_str(), 0, nullptr, 0,
            PREFUTILS::kRegistryWrite, nullptr, &key, nullptr)
        != PREFUTILS::kRegistryOk)
        return;
    const auto size = static_cast<DWORD>((text.Std().size() + 1) * sizeof(wchar_t));
    registry.RegSetValueExW(key, L"", 0, PREFUTILS::kRegistryText, reinterpret_cast<const BYTE*>(text.c_str()), size);
    registry.RegCloseKey(key);
}
}   // namespace

int CMNUIEnableSoundEvents(int enable)
{
    if (enable && !Ports::Sound::Get().Load())
        return 0;
    soundsEnabled = enable != 0;
    return 1;
}

int CMNUIPlaySound(const wchar_t* name)
{
    if (!soundsEnabled)
        return 0;
    const auto started = Ports::Sound::Get().Play(name, kPlayFlags);
    if (!started)
        soundsEnabled = false;
    return started.value_or(false) ? 1 : 0;
}

void CMNUIRegisterSoundEvent(const wchar_t* name, TvlString labelKey)
{
    if (!soundsEnabled || !name || !*name)
        return;
    const TvlString label = Framework::Resources::GetString(labelKey);
    TvlString path;
    WriteKey(path.Format(L"%s\\%s", kLabels, name), label);
    WriteKey(path.Format(L"%s\\%s", kApplications, ProgramName()), GetAppSkinSettingData().GetAppUIName());
    WriteKey(path.Format(L"%s\\%s\\%s", kApplications, ProgramName(), name), label);
}
