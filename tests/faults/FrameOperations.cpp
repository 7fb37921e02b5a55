// Handle memory, hooks, boxes: what everything else stands on.
#include "CpuID.h"
#include "DelayInit.h"
#include "FakeWindowing.h"
#include "FatalError.h"
#include "HandleMemory.h"
#include "HeapOperation.h"
#include "TopMostOwnerWnd.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {
constexpr int kSize = 100;   // bytes of the handle that is there before

struct Handles {
    Handles() { std::memset(MEMMANLock(first), 7, kSize); }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
    ~Handles()
    {
        MEMMANFree(first);
        MEMMANFree(second);
    }
    /// The first handle has its bytes, and the second is what the last run has left.
    void Check(const HeapRun& outcome, int size)
    {
        ASSERT_EQ(MEMMANGetSize(first), kSize);
        EXPECT_EQ(static_cast<char*>(MEMMANLock(first))[kSize - 1], 7);
        EXPECT_EQ(second == nullptr, outcome.hasFailed);
        EXPECT_TRUE(!second || MEMMANGetSize(second) == size);
        MEMMANFree(second);
        second = nullptr;
    }

    static bool HasNone(Handles& handles) { return !handles.second; }

    HMEM__* first = MEMMANAlloc(kSize);
    HMEM__* second = nullptr;
    void* pointer = nullptr;
};

bool Hook() { return true; }

/// A priority that no hook has had makes room of its own.
struct Hooks {
    ~Hooks()
    {
        while (DelayInitRegistrar::GetInst().RemoveHook(eHookStageShutdown, hook))
            continue;
    }
    const DelayInitRegistrar::Delegate hook = DelayInitRegistrar::Delegate::To<Hook>();
    static inline int priority = 1000;
};

struct Boxes {
    FakeWindowing windowing;
};

/// Windows that need no memory to be taken away.
struct QuietWindowing : FakeWindowing {
    HWND CreateStatic(DWORD, const std::wstring&, DWORD, int, int) override
    {
        ++alive;
        return reinterpret_cast<HWND>(this);
    }
    HWND Activate(HWND) override { return nullptr; }
    void Enable(HWND) override { }
    void BringToForeground(HWND) override { }
    void PumpMessages(HWND) override { }
    void Destroy(HWND) override { --alive; }

    int alive = 0;
    HWND owner = nullptr;
};
}   // namespace

HeapOperations FrameOperations()
{
    return {
        Row<Handles>(
            "MEMMANAlloc", [](Handles& handles) { handles.second = MEMMANAlloc(4096); },
            [](Handles& handles, const HeapRun& outcome) { handles.Check(outcome, 4096); }, Handles::HasNone),
        Row<Handles>(
            "MEMMANAllocLock", [](Handles& handles) { MEMMANAllocLock(&handles.second, &handles.pointer, 64); },
            [](Handles& handles, const HeapRun& outcome) { handles.Check(outcome, 64); }, Handles::HasNone),
        Row<Handles>(
            "MEMMANDuplicate", [](Handles& handles) { handles.second = MEMMANDuplicate(handles.first); },
            [](Handles& handles, const HeapRun& outcome) { handles.Check(outcome, kSize); }, Handles::HasNone),
        Row<Handles>(
            "MEMMANReAlloc",
            [](Handles& handles) {
                if (MEMMANReAlloc(handles.first, 1 << 20))
                    handles.second = MEMMANReAlloc(handles.first, kSize);
            },
            [](Handles& handles, const HeapRun& outcome) {
                EXPECT_EQ(static_cast<char*>(MEMMANLock(handles.first))[kSize - 1], 7);
                const int size = MEMMANGetSize(handles.first);
                EXPECT_TRUE(size == kSize || (size == 1 << 20 && outcome.hasFailed)) << size;
                handles.second = nullptr;   // the first one itself
            },
            Handles::HasNone),
        Row<Hooks>(
            "AddHook",
            [](Hooks& hooks) {
                const auto priority = static_cast<DelayInitRegistrar::EPriority>(++Hooks::priority);
                DelayInitRegistrar::GetInst().AddHook(eHookStageShutdown, hooks.hook, priority);
            },
            [](Hooks& hooks, const HeapRun& outcome) {
                auto& registrar = DelayInitRegistrar::GetInst();
                EXPECT_TRUE(registrar.RunHooks(eHookStageShutdown, true, false));
                EXPECT_EQ(registrar.RemoveHook(eHookStageShutdown, hooks.hook), !outcome.hasFailed);
            }),
        SilentRow<Boxes>(
            "UIMSG_FatalError", [](Boxes&) { UIMSG_FatalError(7, "lists.cpp", 12, L"an application's long name", 1); },
            [](Boxes& boxes, const HeapRun& outcome) {
                // The last resort has none of its own: a box that can't be shown is lost without a word.
                EXPECT_EQ(boxes.windowing.boxes.size(), outcome.hasFailed ? boxes.windowing.boxes.size() : 1u);
                EXPECT_LE(boxes.windowing.boxes.size(), 1u);
                boxes.windowing.boxes.clear();
            }),
        Row<QuietWindowing>(
            "TopMostOwnerWnd",
            [](QuietWindowing& windowing) {
                windowing.owner = nullptr;
                TvlUtl::TopMostOwnerWnd owner(nullptr);
                windowing.owner = owner.GetOwnerWnd(L"a title that needs an allocation of its own");
            },
            [](QuietWindowing& windowing, const HeapRun& outcome) {
                EXPECT_EQ(windowing.alive, 0);
                EXPECT_EQ(windowing.owner == nullptr, outcome.hasFailed);
            }),
        Row<TvlString>(
            "GetMissingInstructionsStr",
            [](TvlString& text) {
                text =
                    CpuID::GetFeatureName(CpuID::eAVX2) + CpuID::GetMissingInstructionsStr() + L" and more than that";
            },
            [](TvlString& text, const HeapRun& outcome) { EXPECT_TRUE(outcome.hasFailed || text.Find(L"AVX2") == 0); }),
    };
}
