#include "UnitTestProcess.h"

#include "windows/Modules.h"

bool IsUnitTestProcess()
{
    static const bool marked = Ports::Modules::Get().Loaded(L"UnitTestMarker.dll") != nullptr;
    return marked;
}
