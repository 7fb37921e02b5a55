#include "siblings/TvlComponent/Application.h"

#include "windows/Windowing.h"

#include <atomic>

namespace TvlComponent {

namespace {
std::atomic<ITovelCmn_App*> current = nullptr;
}

ITovelCmn_App* GetAppInterface() { return current.load(std::memory_order_acquire); }
void SetAppInterface(ITovelCmn_App* application) { current.store(application, std::memory_order_release); }

namespace MessageMgr {

void ShowMessage(const wchar_t* text)
{
    if (ITovelCmn_App* const application = GetAppInterface())
        application->ShowMessage(text);
}

void ShowError(const wchar_t* text)
{
    if (ITovelCmn_App* const application = GetAppInterface())
        application->ShowError(text);
}

void ShowWarning(const wchar_t* text)
{
    constexpr UINT kWarningSign = 0x30;   // MB_ICONWARNING
    if (ITovelCmn_App* const application = GetAppInterface())
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
