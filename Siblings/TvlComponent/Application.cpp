#include "siblings/TvlComponent/Application.h"

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

}   // namespace MessageMgr

}   // namespace TvlComponent

AppSkinSettingData& GetAppSkinSettingData()
{
    static AppSkinSettingData data;
    return data;
}
