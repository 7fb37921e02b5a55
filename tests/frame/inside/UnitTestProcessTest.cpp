// How the library knows a unit test host.
#include "UnitTestProcess.h"

#include "LoadedModules.h"

#include <gtest/gtest.h>

namespace {

TEST(UnitTestProcess, IsMarkedByAModuleAndAskedOnce)
{
    Ports::Modules& modules = Ports::Modules::Get();
    const std::wstring name = L"UnitTestMarker.dll";
    EXPECT_EQ(modules.Loaded(name), nullptr);
    HMODULE const marker = modules.Load(BesideTheProgram("UnitTestMarker.dll"));
    ASSERT_NE(marker, nullptr);
    EXPECT_EQ(modules.Loaded(name), marker);
    EXPECT_NE(modules.Address(marker, "unitTestMarker"), nullptr);
    EXPECT_EQ(modules.Address(marker, "unitTestMarke"), nullptr);
    EXPECT_TRUE(IsUnitTestProcess());

    modules.Unload(marker);
    EXPECT_EQ(modules.Loaded(name), nullptr);
    EXPECT_TRUE(IsUnitTestProcess());
    EXPECT_EQ(modules.Load(BesideTheProgram("NoSuchModule.dll")), nullptr);
}

}   // namespace
