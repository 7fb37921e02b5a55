// Shows the dialog in a language, for those who look at it: language_screen CODE SECONDS. Prints the resolution and the
// rectangles of the controls, and confirms after that time. Touches nobody's registry.
#include "UILanguage.h"
#include "siblings/TvlPref/StoredRegistry.h"
#include "windows/Modules.h"

#include <iostream>
#include <string>
#include <thread>
#include <windows.h>

namespace {
HWND dialogFound = nullptr;

BOOL CALLBACK Look(HWND window, LPARAM)
{
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring(name) == L"#32770" && IsWindowVisible(window))
        dialogFound = window;
    return !dialogFound;
}

void Report(HWND dialog)
{
    RECT rect{};
    GetWindowRect(dialog, &rect);
    std::cout << "dpi " << GetDpiForWindow(dialog) << " dialog " << rect.right - rect.left << "x"
              << rect.bottom - rect.top;
    for (const int id : {1002, 1003, 1004, 1005, 1}) {
        GetWindowRect(GetDlgItem(dialog, id), &rect);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
        std::cout << " " << id << " " << rect.left << "," << rect.top << " " << rect.right - rect.left << "x"
                  << rect.bottom - rect.top;
    }
    std::cout << std::endl;
}
}   // namespace

int main()
{
    SetProcessDPIAware();
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() != 2)
        return 1;
    PREFUTILS::StoredRegistry registry(PREFUTILS::MakeMemoryStore());
    PREFUTILS::IRegistry::SetForTests(&registry);
    CGlbLang language;
    language.SetFromIO_StrFmt(arguments[0]);
    IGLB_UILanguage& instance = IGLB_UILanguage::GetInst();
    instance.WriteStoredLanguage(language);
    instance.WriteQueryStartupLang(1);
    std::thread user([&] {
        while (!dialogFound) {
            Sleep(100);
            EnumWindows(Look, 0);
        }
        Report(dialogFound);
        Sleep(static_cast<DWORD>(std::stoul(arguments[1])) * 1000);
        PostMessageW(dialogFound, WM_COMMAND, IDOK, 0);
    });
    instance.GetLanguage();
    user.join();
    PREFUTILS::IRegistry::SetForTests(nullptr);
    return 0;
}
