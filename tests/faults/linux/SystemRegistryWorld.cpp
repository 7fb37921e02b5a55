#include "SystemRegistryWorld.h"

#include "ChildProcess.h"
#include "FakeEnvironment.h"
#include "WUTLRegistry.h"

#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

namespace {
std::filesystem::path Database()
{
    static const ScratchFolder folder;
    return folder.Path() / "registry.db";
}
}   // namespace

SystemRegistryWorld::SystemRegistryWorld()
{
    Enter();
    EXPECT_EQ(WUTLRegistry(kKey, WUTLRegistry::kReadWriteAccess, 1).SetValue(L"text", kOld), 0);
}

SystemRegistryWorld::~SystemRegistryWorld() { WUTLRegistry::DeleteRegistryKey(kKey); }

void SystemRegistryWorld::Enter()
{
    static const FakeEnvironment environment{{{L"TVL_REGISTRY", Database().wstring()}}};
}

bool SystemRegistryWorld::IsFreeForOthers()
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open(Database().c_str(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> other(opened, sqlite3_close);
    return code == SQLITE_OK
        && sqlite3_exec(opened, "BEGIN IMMEDIATE; ROLLBACK", nullptr, nullptr, nullptr) == SQLITE_OK;
}
