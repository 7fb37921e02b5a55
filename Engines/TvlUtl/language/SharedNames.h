// Names of what the processes of the suite share.
#pragma once

#include "siblings/TvlConfig/ProductKey.h"

/// The product's key and `role` as the name of a mutex or an event.
inline TvlString SharedName(const wchar_t* role)
{
    TvlString name = INIGetRegistryProductKey() + L"-" + role;
    name.Replace(L"\\", L"-");
    return name;
}
