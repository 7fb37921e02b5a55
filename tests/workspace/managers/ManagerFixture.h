// A user with a workspace folder, a suite, and an application, all of the test's own.
#pragma once

#include "FakeWindowing.h"
#include "UserWorld.h"
#include "WUTLRegistry.h"
#include "WorkspaceManager.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

/// Lets tests look at what derived classes see.
class OpenManager : public WorkspaceManager {
public:
    using WorkspaceManagerCore::AcquireWSMutex;
    using WorkspaceManagerCore::GetCurrentWorkspaceIndex;
    using WorkspaceManagerCore::GetDefaultWorkspacePath;
    using WorkspaceManagerCore::GetWorkspaceIndex;
    using WorkspaceManagerCore::SaveSettingsToWorkspace;
};

/// Writes down what it is told.
class RecordingApp : public ITovelCmn_App, public IFrameApplication, public IWorkspaceManagedApp {
public:
    void ShowMessage(const wchar_t*) override { }
    HWND GetMainWindow() const override { return window; }
    void NameWorkspace(const wchar_t* label) override { Note(label); }
    void BeginWorkspaceChange() override { Note(L"begin"); }
    void EndWorkspaceChange() override { Note(L"end"); }
    void UpdateFrame(int what) override { Note(L"frame " + std::to_wstring(what)); }
    void OnWorkspaceChanging(bool a, bool b) override
    {
        Note(L"changing " + std::to_wstring(a) + std::to_wstring(b));
        if (duringChange)
            duringChange();
    }
    void OnWorkspaceChanged(bool a, bool b) override { Note(L"changed " + std::to_wstring(a) + std::to_wstring(b)); }
    void SaveWorkspaceState() override { Note(L"save"); }
    bool CanNotify() override { return canNotify; }
    void OnInteractionModeChanged() override { Note(L"mode"); }

    void Note(const std::wstring& what) { windowing.calls.push_back(what); }
    /// What happened since the last call.
    std::vector<std::wstring> Calls() { return std::exchange(windowing.calls, {}); }

    FakeWindowing windowing;
    HWND window = reinterpret_cast<HWND>(this);
    bool canNotify = true;
    std::function<void()> duringChange;
};

class Managers : public testing::Test {
protected:
    static constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel";
    static constexpr const wchar_t* kPreferences =
        L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel\\Application Preferences";

    Managers()
    {
        world.environment.variables[L"TVL_SUITE_DIR"] = world.Path("suite").Std();
        TvlComponent::SetAppInterface(&app);
    }
    ~Managers() override { TvlComponent::SetAppInterface(nullptr); }

    static WSM_INIT Init(UserInteractionMode_t mode = kDesktopInteraction)
    {
        WSM_INIT init;
        init.Product = L"Suite";
        init.Application = L"Tovel";
        init.InteractionMode = mode;
        return init;
    }

    /// A manager that has come up with the application.
    std::unique_ptr<OpenManager> Started(UserInteractionMode_t mode = kDesktopInteraction)
    {
        auto manager = std::make_unique<OpenManager>();
        WSM_INIT init = Init(mode);
        EXPECT_EQ(manager->Initialize(init), WorkspaceManagerTypes::Result::Ok);
        manager->InitializeAfterAppCreation(&app);
        app.Calls();
        return manager;
    }

    TvlString WorkspacePath(const std::string& name) const { return world.Path("user/Workspaces/" + name + ".tvws"); }

    /// A workspace of the user's with settings of its own: the value "Name" of the section "Test".
    WorkspaceFile Make(const std::string& name) const { return MakeAt(WorkspacePath(name), name); }
    WorkspaceFile MakeStock(const std::string& name) const
    {
        return MakeAt(world.Path("suite/Workspaces/" + name + ".tvws"), "stock " + name);
    }
    WorkspaceFile MakeAt(const TvlString& path, const std::string& marker) const
    {
        std::filesystem::create_directories(TvlUtils::SystemIO::ToFilePath(path).parent_path());
        WorkspaceFile file = WorkspaceFile::CreateDefault(path);
        const TvlString settings = world.MakeFile("made.ini", Settings(marker));
        EXPECT_TRUE(file.SaveSettings(settings, {}));
        return WorkspaceFile(path);
    }
    static std::string Settings(const std::string& marker) { return "[Test]\r\nName=" + marker + "\r\n"; }

    std::string SettingsOnDisk() const { return world.Bytes("user/Workspaces/settings.ini"); }
    /// The settings that a workspace holds.
    std::string SettingsOf(const std::string& name) const { return SettingsIn(WorkspacePath(name)); }
    std::string SettingsIn(const TvlString& path) const
    {
        world.Remove("extracted.ini");
        WorkspaceFile(path).LoadSettings(world.Path("extracted.ini"), {});
        return world.Bytes("extracted.ini");
    }

    static std::optional<std::wstring> Value(const TvlString& key, const wchar_t* name)
    {
        TvlString value;
        const WUTLRegistry opened(key.c_str(), WUTLRegistry::kReadAccess);
        return opened.GetValue(name, value) == 0 ? std::optional(value.Std()) : std::nullopt;
    }
    static std::optional<std::wstring> StoredName() { return Value(TvlString(kPreferences) + L"\\Test", L"Name"); }
    /// Stores what a manager keeps in the registry.
    static void Store(const wchar_t* name, const TvlString& value)
    {
        HKEY key = nullptr;
        auto& registry = PREFUTILS::IRegistry::GetInstance();
        registry.RegCreateKeyExW(PREFUTILS::RegistryRoot(0x80000001), L"SOFTWARE\\Tovel\\Suite\\Tovel", 0, nullptr, 0,
            PREFUTILS::kRegistryReadWrite, nullptr, &key, nullptr);
        registry.RegSetValueExW(key, name, 0, PREFUTILS::kRegistryText, reinterpret_cast<const BYTE*>(value.c_str()),
            static_cast<DWORD>((static_cast<std::size_t>(value.GetLength()) + 1) * sizeof(wchar_t)));
        registry.RegCloseKey(key);
    }

    UserWorld world;
    RecordingApp app;
};
