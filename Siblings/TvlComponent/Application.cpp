#include "siblings/TvlComponent/Application.h"

#include "windows/Windowing.h"

#include <atomic>

namespace TvlComponent {

namespace {
std::atomic<IApplication*> current = nullptr;
}

IApplication* GetAppInterface() { return current.load(std::memory_order_acquire); }
void SetAppInterface(IApplication* application) { current.store(application, std::memory_order_release); }

namespace MessageMgr {

void ShowMessage(const wchar_t* text)
{
    if (IApplication* const application = GetAppInterface())
        application->ShowMessage(text);
}

void ShowWarning(const wchar_t* text)
{
    constexpr UINT kWarningSign = 0x30;   // MB_ICONWARNING
    if (IApplication* const application = GetAppInterface())
        application->ShowWarning(text);
    else
        Ports::Windowing::Get().ShowBox(nullptr, text, GetAppSkinSettingData().GetAppUIName().Std(), kWarningSign);
}

int ShowConfirmation(unsigned flags, const wchar_t* text)
{
    return Ports::Windowing::Get().ShowBox(nullptr, text, GetAppSkinSettingData().GetAppUIName().Std(), flags);
}

}   // namespace MessageMgr

}   // namespace TvlComponent

AppSkinSettingData& GetAppSkinSettingData()
{
    static AppSkinSettingData data;
    return data;
}
