#include "KeyContext.h"

Framework::UI::IKeyContext& GetKeyContext()
{
    static const std::unique_ptr<Framework::UI::IKeyContext> context = Framework::UI::Win32Detail::CreateKeyContext();
    return *context;
}

bool HasTabletModeToggling() { return true; }
