#include "WUTLRegistry.h"
#include "WorkspaceManagerTypes.h"
#include "windows/Modules.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {
// The system's interfaces for tablet mode, which it has where these are registered.
constexpr const wchar_t* kInterfaces[] = {
    L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Interface\\{3694DBF9-8F68-44BE-8FF5-195C98EDE8A6}",
    L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Interface\\{C63657F6-8850-470D-88F8-455E16EA2C26}",
};
constexpr const wchar_t* kShellKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ImmersiveShell";

using GetTabletMode = bool (*)(HWND, bool*);

bool HasInterfaces()
{
    return std::all_of(std::begin(kInterfaces), std::end(kInterfaces),
        [](const wchar_t* key) { return WUTLRegistry::IsValid(key) == 0; });
}

/// What the system says of a window; empty when it can't be asked.
std::optional<bool> AskForTabletMode(HWND window)
{
    Ports::Modules& modules = Ports::Modules::Get();
    const HMODULE module = HasInterfaces() ? modules.LoadFromProgramFolder(L"Win10Interop.dll") : nullptr;
    if (!module)
        return std::nullopt;
    std::optional<bool> answer;
    bool isTablet = false;
    const auto ask =
        window ? reinterpret_cast<GetTabletMode>(modules.Address(module, "GetTabletMode")) : GetTabletMode();
    if (ask && ask(window, &isTablet))
        answer = isTablet;
    modules.Unload(module);
    return answer;
}

bool ReadTabletMode()
{
    ULONG value = 0;
    return WUTLRegistry(kShellKey, WUTLRegistry::kReadAccess).GetValue(L"TabletMode", value) == 0 && value != 0;
}
}   // namespace

UserInteractionMode_t CurrentUserInteractionMode(HWND window)
{
    const std::optional<bool> answer = AskForTabletMode(window);
    return (answer ? *answer : ReadTabletMode()) ? kTabletInteraction : kDesktopInteraction;
}
