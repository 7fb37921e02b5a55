// What the processor has, on processors that tests describe.
#include "CpuID.h"

#include "Counters.h"
#include "FakeProcessor.h"
#include "LoadedModules.h"
#include "siblings/TvlPref/PrefManager.h"

#include <climits>
#include <gtest/gtest.h>

namespace {

constexpr ULONG kSSSE3 = 1u << 9;
constexpr ULONG kPOPCNT = 1u << 23;
constexpr ULONG kOSXSAVE = 1u << 27;
constexpr ULONG kAVX = 1u << 28;
constexpr ULONG kAll = kSSSE3 | kPOPCNT | kOSXSAVE | kAVX;
constexpr ULONG kAVX2 = 1u << 5;

/// A processor of given features, seen by the library as if it had been loaded on it.
class ProcessorOf : public FakeProcessor {
public:
    ProcessorOf(ULONG highest, ULONG leaf1Ecx, ULONG leaf7Ebx)
    {
        SetHighest(highest, "GenuineIntel");
        leaves[{1, 0}] = {0, 0, leaf1Ecx, 0};
        leaves[{7, 0}] = {0, leaf7Ebx, 0, 0};
        leaves[{7, 1}] = {0, ~leaf7Ebx, 0, 0};
        leaves[{0x80000000, 0}] = {0x80000000, 0, 0, 0};
        Load();
    }
    ~ProcessorOf() override
    {
        SetForTests(nullptr);
        Load();
    }
    static void Load()
    {
        CpuID::ReadProcessorForTests();
        CpuID::ReleaseInstance(false);
    }
};

/// The store that preferences have in the meantime.
class Preferences {
public:
    ~Preferences() { CBoxPrefManager::GetInstance().AttachStore(m_before); }
    void Set(const wchar_t* feature, bool value) { m_store.Write(TvlString(L"SimulateHardware/Has") + feature, value); }

private:
    MemoryPrefStore m_store;
    IPrefStore* const m_before = CBoxPrefManager::GetInstance().AttachStore(&m_store);
};

struct Machine {
    const char* name;
    ULONG highest, leaf1Ecx, leaf7Ebx;
    bool ssse3, avx, avx2, popcnt;
    const wchar_t* missing;
};

constexpr Machine kMachines[] = {
    {"all", 13, kAll, kAVX2, true, true, true, true, L""},
    {"every bit", 13, ~0u, ~0u, true, true, true, true, L""},
    {"all but those", 13, ~kAll, ~kAVX2, false, false, false, false, L"AVX, AVX2, SSSE3, POPCNT"},
    {"no OSXSAVE", 13, kAll & ~kOSXSAVE, kAVX2, true, false, true, true, L"AVX"},
    {"OSXSAVE alone", 13, kAll & ~kAVX, kAVX2, true, false, true, true, L"AVX"},
    {"AVX2 and POPCNT missing", 13, kAll & ~kPOPCNT, 0, true, true, false, false, L"AVX2, POPCNT"},
    {"SSSE3 and POPCNT missing", 13, kAll & ~kPOPCNT & ~kSSSE3, kAVX2, false, true, true, false, L"SSSE3, POPCNT"},
    {"leaf 7 is the highest", 7, kAll, kAVX2, true, true, true, true, L""},
    {"leaf 7 is beyond the highest", 6, kAll, kAVX2, true, true, false, true, L"AVX2"},
};

TEST(CpuID, TellsWhatMachinesHave)
{
    for (const Machine& machine : kMachines) {
        const ProcessorOf processor(machine.highest, machine.leaf1Ecx, machine.leaf7Ebx);
        const CpuID& cpu = CpuID::GetInstance();
        EXPECT_EQ(cpu.CheckSSSE3Support(), machine.ssse3) << machine.name;
        EXPECT_EQ(cpu.CheckAVXSupport(), machine.avx) << machine.name;
        EXPECT_EQ(cpu.CheckAVX2Support(), machine.avx2) << machine.name;
        EXPECT_EQ(cpu.CheckPOPCNTSupport(), machine.popcnt) << machine.name;
        EXPECT_EQ(cpu.HasSSSE3(), machine.ssse3) << machine.name;
        EXPECT_EQ(cpu.HasAVX(), machine.avx) << machine.name;
        EXPECT_EQ(cpu.HasAVX2(), machine.avx2) << machine.name;
        EXPECT_EQ(cpu.HasPOPCNT(), machine.popcnt) << machine.name;
        EXPECT_EQ(CpuID::GetMissingInstructionsStr(), machine.missing) << machine.name;
        EXPECT_EQ(cpu.HasSufficientHardwareSupport(), !*machine.missing) << machine.name;
    }
}

TEST(CpuID, HasNothingWithoutTheInstruction)
{
    ProcessorOf processor(13, kAll, kAVX2);
    processor.hasInstruction = false;
    ProcessorOf::Load();
    const CpuID& cpu = CpuID::GetInstance();
    EXPECT_FALSE(
        cpu.CheckSSSE3Support() || cpu.CheckAVXSupport() || cpu.CheckAVX2Support() || cpu.CheckPOPCNTSupport());
    EXPECT_EQ(CpuID::GetMissingInstructionsStr(), L"AVX, AVX2, SSSE3, POPCNT");
}

TEST(CpuID, HidesFeaturesByPreferenceAtOnce)
{
    const ProcessorOf processor(13, kAll, kAVX2);
    const CpuID& cpu = CpuID::GetInstance();
    Preferences preferences;
    EXPECT_TRUE(cpu.HasSufficientHardwareSupport());
    preferences.Set(L"AVX", false);
    EXPECT_FALSE(cpu.HasAVX());
    EXPECT_TRUE(cpu.CheckAVXSupport());
    EXPECT_FALSE(cpu.HasSufficientHardwareSupport());
    EXPECT_EQ(CpuID::GetMissingInstructionsStr(), L"AVX");
    for (const wchar_t* const feature : {L"POPCNT", L"SSSE3", L"AVX2"})
        preferences.Set(feature, false);
    EXPECT_EQ(CpuID::GetMissingInstructionsStr(), L"AVX, AVX2, SSSE3, POPCNT");
    for (const wchar_t* const feature : {L"AVX", L"POPCNT", L"SSSE3", L"AVX2"})
        preferences.Set(feature, true);
    EXPECT_TRUE(cpu.HasSufficientHardwareSupport());
}

TEST(CpuID, ShowsNoFeatureThatIsNotThere)
{
    const ProcessorOf processor(13, 0, 0);
    Preferences preferences;
    for (const wchar_t* const feature : {L"AVX", L"POPCNT", L"SSSE3", L"AVX2"})
        preferences.Set(feature, true);
    EXPECT_EQ(CpuID::GetMissingInstructionsStr(), L"AVX, AVX2, SSSE3, POPCNT");
}

/// SSSE3 and POPCNT come from what was read at the start, AVX and AVX2 from the processor; an object keeps all four.
TEST(CpuID, AsksAnewForTheWideRegistersAlone)
{
    ProcessorOf processor(13, kAll, kAVX2);
    const CpuID& before = CpuID::GetInstance();
    processor.leaves[{1, 0}] = {};
    processor.leaves[{7, 0}] = {};
    EXPECT_TRUE(before.HasSufficientHardwareSupport());
    const CpuID after;
    for (const CpuID* const cpu : {&before, &after}) {
        EXPECT_TRUE(cpu->CheckSSSE3Support());
        EXPECT_TRUE(cpu->CheckPOPCNTSupport());
        EXPECT_FALSE(cpu->CheckAVXSupport());
        EXPECT_FALSE(cpu->CheckAVX2Support());
    }
    EXPECT_FALSE(after.HasAVX() || after.HasAVX2());
    EXPECT_TRUE(after.HasSufficientHardwareSupport());   // that of the one object
}

TEST(CpuID, NamesItsFeatures)
{
    struct Row {
        int feature;
        const wchar_t* name;
    };
    constexpr Row kRows[] = {
        {1, L"SSSE3"}, {2, L"AVX"}, {3, L"AVX2"}, {0, L"None"}, {4, L"None"}, {-1, L"None"}, {INT_MAX, L"None"}};
    for (const auto& [feature, name] : kRows)
        EXPECT_EQ(CpuID::GetFeatureName(static_cast<CpuID::EFeature>(feature)), name) << feature;
    EXPECT_EQ(sizeof(CpuID), 4u);
}

TEST(CpuID, IsOneAcrossModules)
{
    EXPECT_EQ(ProcessorOfTheOtherModule(), &CpuID::GetInstance());
    CpuID::ReleaseInstance(false);
    EXPECT_FALSE(CpuID::HasInstance());
    EXPECT_EQ(ProcessorOfTheOtherModule(), &CpuID::GetInstance());
    EXPECT_NE(ExportOf(LIBRARY_FILE, "_ZN8TvlUtils9SingletonI5CpuIDLi0EE11GetInstanceEv"), nullptr);
    EXPECT_NE(ExportOf(LIBRARY_FILE, "_ZZN8TvlUtils9SingletonI5CpuIDLi0EE16GetSingletonDataEbE8g_pEntry"), nullptr);
}

}   // namespace
