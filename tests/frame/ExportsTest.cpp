// What callers outside find in the loaded library: names, addresses, slots and sizes.
#include "DelayInit.h"
#include "LoadedModules.h"
#include "TopMostOwnerWnd.h"
#include "VirtualSlot.h"
#include "siblings/TvlUtils/Singleton.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace {

// The names of each line are one function; no two lines are.
const std::vector<std::vector<std::string>> kHandleMemory = {
    {"MEMMANUnlock", "MMInitTemp", "MMShutdownTemp", "MMUnlockTemp"},
    {"MEMMANGetFlags", "MEMMANGetLockCount"},
    {"MEMMANLock", "MMLockTemp"},
    {"MEMMANFree", "MMFreeTemp"},
    {"MEMMANReAlloc", "MMReAllocTemp"},
    {"MEMMANUnlockFree", "MMUnlockFreeTemp"},
    {"MEMMANAlloc"},
    {"MMAllocTemp"},
    {"MEMMANDuplicate"},
    {"MEMMANAllocLock"},
    {"MMAllocLockTemp"},
    {"MEMMANReAllocLock"},
    {"MMReAllocLockTemp"},
    {"MEMMANGetSize"},
    {"MEMMANMoveHuge"},
};

TEST(Exports, SeveralNamesOfOneFunctionHaveOneAddress)
{
    std::set<void*> functions;
    for (const auto& names : kHandleMemory) {
        void* const function = ExportOf(LIBRARY_FILE, names[0]);
        EXPECT_NE(function, nullptr) << names[0];
        EXPECT_TRUE(functions.insert(function).second) << names[0];
        for (const std::string& name : names)
            EXPECT_EQ(ExportOf(LIBRARY_FILE, name), function) << name;
    }
    EXPECT_NE(ExportOf(LIBRARY_FILE, "UIMSG_FatalError"), nullptr);
}

TEST(Exports, HooksCarryTheirCopies)
{
    for (const char* name : {"_ZN11StartupHookC1ERKS_", "_ZN11StartupHookaSERKS_", "_ZN12ShutdownHookC1ERKS_",
             "_ZN12ShutdownHookaSERKS_", "_ZN8InitHookC1ERKS_", "_ZN8InitHookC1EOS_", "_ZN8InitHookaSERKS_",
             "_ZN8InitHookaSEOS_", "_ZN13DelayInitBaseC2ERKS_", "_ZN13DelayInitBaseaSERKS_",
             "_ZN6TvlUtl15TopMostOwnerWndC1ERKS0_", "_ZN6TvlUtl15TopMostOwnerWndaSERKS0_"})
        EXPECT_NE(ExportOf(LIBRARY_FILE, name), nullptr) << name;
}

TEST(Exports, InterfacesKeepTheirSlots)
{
    EXPECT_EQ(Slot(&DelayInitRegistrar::AddHook), 0u);
    EXPECT_EQ(Slot(&DelayInitRegistrar::RemoveHook), 1u);
    EXPECT_EQ(Slot(&DelayInitRegistrar::RunStartupHooks), 2u);
    EXPECT_EQ(Slot(&DelayInitRegistrar::RunShutdownHooks), 3u);
    EXPECT_EQ(Slot(&DelayInitRegistrar::RunHooks), 4u);
    EXPECT_EQ(Slot(&DelayInitBase::DelayedStartup), 0u);
    EXPECT_EQ(Slot(&DelayInitBase::DelayedShutdown), 1u);
}

TEST(Exports, ObjectsThatCrossModulesKeepTheirLayout)
{
    using Entry = TvlUtils::SingletonLibrary;
    EXPECT_EQ(offsetof(Entry, deleter), 0u);
    EXPECT_EQ(offsetof(Entry, data), 8u);
    EXPECT_EQ(offsetof(Entry, finalizerKey), 16u);
    EXPECT_EQ(offsetof(Entry, lock), 24u);
    EXPECT_EQ(offsetof(Entry, flag), 32u);
    using Data = TvlUtils::Singleton<int, 0>::SingletonData;
    EXPECT_EQ(offsetof(Data, instance), 0u);
    EXPECT_EQ(offsetof(Data, released), 8u);
    EXPECT_EQ(offsetof(Data, lock), 16u);

    EXPECT_EQ(sizeof(DelayInitRegistrar::Delegate), 16u);
    EXPECT_EQ(sizeof(DelayInitBase), 8u);
    EXPECT_EQ(sizeof(StartupHook), 16u);
    EXPECT_EQ(sizeof(InitHook), 32u);
    EXPECT_EQ(sizeof(TvlUtl::TopMostOwnerWnd), 32u);
}

}   // namespace
