// The registry that processes share: what fails in it is told, changes nothing, and locks nobody out.
#include "HeapOperation.h"
#include "SystemRegistryWorld.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPref/IRegistry.h"

#include <gtest/gtest.h>
#include <utility>

namespace {
using PREFUTILS::IRegistry;

constexpr const wchar_t* kNew = L"the value that takes its place";
const std::wstring kBelow = std::wstring(SystemRegistryWorld::kKey) + L"\\Below\\It";

struct Registry {
    TvlString Text(const wchar_t* name) const
    {
        TvlString value;
        const WUTLRegistry key(SystemRegistryWorld::kKey, WUTLRegistry::kReadAccess);
        return key.GetValue(name, value) == 0 ? value : TvlString(L"none");
    }
    /// Whatever failed is as it was; what was done is there.
    void Check(const HeapRun& outcome, const wchar_t* wanted) const
    {
        const TvlString text = Text(L"text");
        EXPECT_TRUE(text == wanted || (text == SystemRegistryWorld::kOld && outcome.hasFailed)) << text.c_str();
        EXPECT_TRUE(SystemRegistryWorld::IsFreeForOthers());
    }
    static bool HasFailed(Registry& registry) { return registry.result != 0; }

    SystemRegistryWorld world;
    LONG result = 0;
    TvlString found;
};

/// A batch of which nothing is done when it can't begin, unlike RegistryBatch.
class Batch {
public:
    ~Batch()
    {
        if (m_isOpen)
            IRegistry::GetInstance().EndBatch(false);
    }
    bool IsOpen() const { return m_isOpen; }
    LONG Commit() { return std::exchange(m_isOpen, false) ? IRegistry::GetInstance().EndBatch(true) : 1; }

private:
    bool m_isOpen = IRegistry::GetInstance().BeginBatch() == PREFUTILS::kRegistryOk;
};

LONG WriteBelow()
{
    Batch part;
    return part.IsOpen() && WUTLRegistry(kBelow.c_str(), WUTLRegistry::kReadWriteAccess, 1).SetValue(L"text", kNew) == 0
        ? part.Commit()
        : 1;
}

/// Changes within each other: all of them are kept, or none.
LONG WriteInOneStep()
{
    Batch batch;
    return batch.IsOpen() && WUTLRegistry(SystemRegistryWorld::kKey).SetValue(L"text", kNew) == 0 && WriteBelow() == 0
        ? batch.Commit()
        : 1;
}
}   // namespace

HeapOperations SystemRegistryOperations()
{
    return {
        Row<Registry>(
            "SetValue",
            [](Registry& registry) {
                registry.result = WUTLRegistry(SystemRegistryWorld::kKey).SetValue(L"text", kNew);
            },
            [](Registry& registry, const HeapRun& outcome) { registry.Check(outcome, kNew); }, Registry::HasFailed),
        Row<Registry>(
            "GetValue",
            [](Registry& registry) {
                registry.found = L"";
                registry.result = WUTLRegistry(SystemRegistryWorld::kKey).GetValue(L"text", registry.found);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(outcome, SystemRegistryWorld::kOld);
                EXPECT_TRUE(registry.found == SystemRegistryWorld::kOld || outcome.hasFailed);
            },
            Registry::HasFailed),
        Row<Registry>(
            "DeleteRegistryKey",
            [](Registry& registry) {
                registry.result = WUTLRegistry::CreateKey(kBelow.c_str(), WUTLRegistry::kReadWriteAccess, 0);
                if (registry.result == 0)
                    registry.result = WUTLRegistry::DeleteRegistryKey(kBelow.c_str());
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(outcome, SystemRegistryWorld::kOld);
                EXPECT_TRUE(WUTLRegistry::IsValid(kBelow.c_str()) != 0 || outcome.hasFailed) << "it is there still";
            },
            Registry::HasFailed),
        Row<Registry>(
            "BeginBatch", [](Registry& registry) { registry.result = WriteInOneStep(); },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(outcome, kNew);
                const bool isBelow = WUTLRegistry::IsValid(kBelow.c_str()) == 0;
                EXPECT_EQ(isBelow, registry.Text(L"text") == kNew) << "half of a batch";
            },
            Registry::HasFailed),
    };
}
