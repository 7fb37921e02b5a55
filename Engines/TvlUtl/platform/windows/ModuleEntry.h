// The entry that the loader calls.
#pragma once

#include "windows/Types.h"

/// Defines the module entry: `attach` is called once, when the module is attached to the process and under the loader's
/// lock. Nothing else happens on any reason, and the entry always succeeds.
#ifdef TVL_LOADER_CALLS_DLLMAIN
#define TVL_MODULE_ENTRY(attach)                                                                                       \
    extern "C" int __stdcall DllMain(HINSTANCE, DWORD reason, void*)                                                   \
    {                                                                                                                  \
        if (reason == 1)                                                                                               \
            attach();                                                                                                  \
        return 1;                                                                                                      \
    }
#else
#define TVL_MODULE_ENTRY(attach)                                                                                       \
    [[gnu::constructor]] static void AttachModule() { attach(); }
#endif
