// The registry's database is opened once in a process: one that finds no memory for it then is not without it for ever.
#include "FailingHeap.h"
#include "SystemRegistryWorld.h"
#include "siblings/TvlPref/IRegistry.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <new>

namespace {
/// Opens the registry while an allocation fails; whether that succeeded.
bool OpensWithout(int point, FailingHeap::Extent extent)
{
    const FailingHeap heap(point, extent);
    try {
        PREFUTILS::IRegistry::GetInstance();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

[[noreturn]] void OpenAtLast(FailingHeap::Extent extent)
{
    SystemRegistryWorld::Enter();
    int point = 0;
    while (!OpensWithout(point, extent))
        ++point;
    std::cerr << "failed at " << point << " allocations\n";
    HKEY key = nullptr;
    const LONG created = PREFUTILS::IRegistry::GetInstance().RegCreateKeyExW(PREFUTILS::RegistryRoot(0x80000001),
        L"Opened", 0, nullptr, 0, PREFUTILS::kRegistryReadWrite, nullptr, &key, nullptr);
    std::exit(created == PREFUTILS::kRegistryOk && SystemRegistryWorld::IsFreeForOthers() ? 0 : 1);
}

TEST(RegistryOpening, SucceedsAsSoonAsThereIsMemory)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");   // a process that has not opened it yet
    const char* const wanted = "failed at [0-9]+ allocations";
    EXPECT_EXIT(OpenAtLast(FailingHeap::Extent::Once), testing::ExitedWithCode(0), wanted);
    EXPECT_EXIT(OpenAtLast(FailingHeap::Extent::Onward), testing::ExitedWithCode(0), wanted);
}
}   // namespace
