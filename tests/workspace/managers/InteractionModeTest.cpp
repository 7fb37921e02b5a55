// Desktop or tablet: what the system says of a window, or has stored.
#include "ManagerFixture.h"
#include "windows/Modules.h"

namespace {

/// A program folder that may have the system's library for tablet mode.
class InteropModules : public Ports::Modules {
public:
    InteropModules() { SetForTests(this); }
    InteropModules(const InteropModules&) = delete;
    InteropModules& operator=(const InteropModules&) = delete;
    ~InteropModules() override { SetForTests(nullptr); }

    HMODULE Loaded(const std::wstring&) const override { return nullptr; }
    HMODULE Load(const std::wstring&) override { return nullptr; }
    HMODULE LoadFromSystem(const std::wstring&) override { return nullptr; }
    HMODULE LoadFromProgramFolder(const std::wstring& name) override
    {
        if (name != L"Win10Interop.dll")
            return nullptr;
        ++tries;
        HMODULE const module = isThere ? reinterpret_cast<HMODULE>(this) : nullptr;
        loads += module != nullptr;
        return module;
    }
    void Unload(HMODULE module) override { loads -= module == reinterpret_cast<HMODULE>(this); }
    void* Address(HMODULE module, const std::string& name) const override
    {
        const bool isKnown = module && hasFunction && name == "GetTabletMode";
        return isKnown ? reinterpret_cast<void*>(&GetTabletMode) : nullptr;
    }
    std::wstring ProgramPath() const override { return {}; }
    std::wstring PathOf(const void*) const override { return {}; }
    std::vector<std::wstring> Arguments() const override { return {}; }

    static bool GetTabletMode(HWND window, bool* isTablet)
    {
        asked = window;
        *isTablet = answer;
        return succeeds;
    }

    bool isThere = true;
    bool hasFunction = true;
    int tries = 0;
    int loads = 0;
    static inline bool succeeds = true;
    static inline bool answer = false;
    static inline HWND asked = nullptr;
};

class InteractionModes : public Managers {
protected:
    static constexpr const wchar_t* kInterfaces[] = {
        L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Interface\\{3694DBF9-8F68-44BE-8FF5-195C98EDE8A6}",
        L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Interface\\{C63657F6-8850-470D-88F8-455E16EA2C26}",
    };
    static constexpr const wchar_t* kShell =
        L"HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ImmersiveShell";

    static void MakeKey(const wchar_t* key)
    {
        ASSERT_EQ(WUTLRegistry::CreateKey(key, WUTLRegistry::kReadWriteAccess, 0), 0);
    }
    static void StoreMode(ULONG value)
    {
        MakeKey(kShell);
        WUTLRegistry(kShell).SetValue(L"TabletMode", value);
    }

    InteropModules modules;
};

TEST_F(InteractionModes, AreReadFromTheRegistry)
{
    EXPECT_EQ(CurrentUserInteractionMode(nullptr), kDesktopInteraction);
    for (const ULONG value : {1u, 0u, 7u}) {
        StoreMode(value);
        EXPECT_EQ(CurrentUserInteractionMode(app.window), value ? kTabletInteraction : kDesktopInteraction);
    }
    EXPECT_EQ(modules.tries, 0) << "without its interfaces the system has no library to ask";
}

TEST_F(InteractionModes, NeedBothInterfacesForTheLibrary)
{
    MakeKey(kInterfaces[0]);
    CurrentUserInteractionMode(app.window);
    EXPECT_EQ(modules.tries, 0);
    MakeKey(kInterfaces[1]);
    CurrentUserInteractionMode(app.window);
    EXPECT_EQ(modules.tries, 1);
}

struct Question {
    const char* what;
    bool isThere, hasWindow, hasFunction, succeeds, answer;
    ULONG stored;
    UserInteractionMode_t mode;
};

constexpr Question kQuestions[] = {
    {"a tablet, whatever is stored", true, true, true, true, true, 0, kTabletInteraction},
    {"a desktop, whatever is stored", true, true, true, true, false, 1, kDesktopInteraction},
    {"no answer", true, true, true, false, false, 1, kTabletInteraction},
    {"an answer that does not count", true, true, true, false, true, 0, kDesktopInteraction},
    {"no function", true, true, false, true, true, 0, kDesktopInteraction},
    {"no window", true, false, true, true, true, 0, kDesktopInteraction},
    {"no window, a tablet stored", true, false, true, true, false, 1, kTabletInteraction},
    {"no library", false, true, true, true, true, 0, kDesktopInteraction},
};

TEST_F(InteractionModes, AreAskedOfTheSystemsLibraryForAWindow)
{
    for (const wchar_t* key : kInterfaces)
        MakeKey(key);
    for (const auto& [what, isThere, hasWindow, hasFunction, succeeds, answer, stored, mode] : kQuestions) {
        SCOPED_TRACE(what);
        StoreMode(stored);
        modules.isThere = isThere;
        modules.hasFunction = hasFunction;
        InteropModules::succeeds = succeeds;
        InteropModules::answer = answer;
        InteropModules::asked = nullptr;
        EXPECT_EQ(CurrentUserInteractionMode(hasWindow ? app.window : nullptr), mode);
        EXPECT_EQ(InteropModules::asked, isThere && hasWindow && hasFunction ? app.window : nullptr);
        EXPECT_EQ(modules.loads, 0) << "each load wants an unload";
    }
}
}   // namespace
