// Sounds, the desktop, the user, the keys and the folders of the program.
#include "CFileLocations.h"
#include "ChildProcess.h"
#include "CurrentUser.h"
#include "DotNet.h"
#include "FakeEnvironment.h"
#include "KeyContext.h"
#include "MemoryRegistry.h"
#include "PathExports.h"
#include "ShellActions.h"
#include "SoundEvents.h"
#include "WUTLRegistry.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"
#include "windows/Keyboard.h"
#include "windows/Modules.h"
#include "windows/Shell.h"
#include "windows/Sound.h"
#include "windows/Users.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace {
namespace fs = std::filesystem;
namespace SystemIO = TvlUtils::SystemIO;

/// In the port's place while it lives.
template <class Port>
struct Standing : Port {
    Standing() { Port::SetForTests(this); }
    Standing(const Standing&) = delete;
    Standing& operator=(const Standing&) = delete;
    ~Standing() override { Port::SetForTests(nullptr); }
};

struct FakeSound : Standing<Ports::Sound> {
    bool Load() override { return loads; }
    std::optional<bool> Play(const wchar_t* name, DWORD flags) override
    {
        played.push_back(std::wstring(name) + L" " + std::to_wstring(flags));
        return answer;
    }

    bool loads = true;
    std::optional<bool> answer = true;
    std::vector<std::wstring> played;
};

TvlString UnnamedValue(const TvlString& path)
{
    TvlString text = L"no key";
    WUTLRegistry(path.c_str(), WUTLRegistry::kReadAccess).GetValue(L"", text);
    return text;
}

TEST(SoundEvents, PlayWhileTheyAreOn)
{
    FakeSound sound;
    EXPECT_EQ(CMNUIPlaySound(L"early"), 0);
    sound.loads = false;
    EXPECT_EQ(CMNUIEnableSoundEvents(1), 0);
    EXPECT_EQ(CMNUIPlaySound(L"not loaded"), 0);
    sound.loads = true;
    EXPECT_EQ(CMNUIEnableSoundEvents(5), 1);
    EXPECT_EQ(CMNUIPlaySound(L"on"), 1);
    sound.answer = false;
    EXPECT_EQ(CMNUIPlaySound(L"silent"), 0);
    EXPECT_EQ(CMNUIEnableSoundEvents(0), 1);
    EXPECT_EQ(CMNUIPlaySound(L"off"), 0);
    EXPECT_EQ(CMNUIEnableSoundEvents(1), 1);
    sound.loads = false;
    EXPECT_EQ(CMNUIEnableSoundEvents(1), 0);   // leaves them on
    sound.answer = std::nullopt;
    EXPECT_EQ(CMNUIPlaySound(L"no function"), 0);
    EXPECT_EQ(CMNUIPlaySound(L"off again"), 0);
    EXPECT_THAT(sound.played, testing::ElementsAre(L"on 131", L"silent 131", L"no function 131"));
}

TEST(SoundEvents, RegisterUnderTheProgramsName)
{
    const MemoryRegistry registry;
    FakeSound sound;
    const TvlString key = L"088e1d27-8136-4ca1-961e-f49e699e656b";   // any text
    const TvlString program = SystemIO::FromFilePath(SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath()).stem());
    const TvlString apps = L"HKEY_CURRENT_USER\\AppEvents\\Schemes\\Apps\\";
    CMNUIEnableSoundEvents(0);
    CMNUIRegisterSoundEvent(L"Done", key);
    EXPECT_EQ(UnnamedValue(L"HKEY_CURRENT_USER\\AppEvents\\EventLabels\\Done"), L"no key");
    CMNUIEnableSoundEvents(1);
    CMNUIRegisterSoundEvent(nullptr, key);
    CMNUIRegisterSoundEvent(L"", key);
    CMNUIRegisterSoundEvent(L"Done", key);
    CMNUIEnableSoundEvents(0);
    EXPECT_EQ(UnnamedValue(L"HKEY_CURRENT_USER\\AppEvents\\EventLabels\\Done"), Framework::Resources::GetString(key));
    EXPECT_EQ(UnnamedValue(apps + program), GetAppSkinSettingData().GetAppUIName());
    EXPECT_EQ(UnnamedValue(apps + program + L"\\Done"), Framework::Resources::GetString(key));
    EXPECT_EQ(registry.OpenKeys(), 0u);
}

TEST(SoundEvents, PlayNothingWhereTheyCannotBeEnabled)
{
    const int enabled = CMNUIEnableSoundEvents(1);
    EXPECT_LE(CMNUIPlaySound(L"an event that nobody knows"), enabled);
    CMNUIEnableSoundEvents(0);
}

struct FakeShell : Standing<Ports::Shell> {
    bool Execute(HWND owner, const wchar_t* verb, const wchar_t* target, const wchar_t* parameters,
        const wchar_t* folder, int show) override
    {
        EXPECT_EQ(parameters, nullptr);
        EXPECT_EQ(folder, nullptr);
        EXPECT_EQ(show, 1);
        lastOwner = owner;
        requests.push_back(std::wstring(verb) + L" " + target);
        return true;
    }
    bool SelectInFolder(const std::wstring& path) override
    {
        requests.push_back(L"select " + path);
        return true;
    }
    std::wstring WindowsFolder() const override { return windows; }

    std::wstring windows;
    HWND lastOwner = nullptr;
    std::vector<std::wstring> requests;
};

struct FakeApplication : ITovelCmn_App {
    void ShowMessage(const wchar_t*) override { }
    HWND GetMainWindow() const override { return window; }

    int place = 0;
    HWND window = reinterpret_cast<HWND>(&place);
};

TEST(ShellActions, OpenAddressesForTheMainWindow)
{
    FakeShell shell;
    FakeApplication application;
    WEBLaunchWebNewTab(L"http://a/");
    EXPECT_EQ(shell.lastOwner, nullptr);
    TvlComponent::SetAppInterface(&application);
    WEBLaunchWebBrowser(L"http://b/");
    TvlComponent::SetAppInterface(nullptr);
    EXPECT_EQ(shell.lastOwner, application.window);
    EXPECT_THAT(shell.requests, testing::ElementsAre(L"open http://a/", L"open http://b/"));
}

TEST(ShellActions, SelectFilesButOpenFoldersOfTheSystem)
{
    const ScratchFolder folder;
    const auto text = [](const fs::path& path) { return SystemIO::FromFilePath(path).Std(); };
    const fs::path own = folder.Path() / "own.txt";
    const fs::path systems = folder.Path() / "WinDir" / "file.txt";
    fs::create_directories(systems.parent_path());
    std::ofstream(own) << "x";
    std::ofstream(systems) << "x";
    FakeShell shell;
    shell.windows = text(folder.Path() / "windir");
    OpenFolderWithFile(text(folder.Path() / "none.txt"));
    OpenFolderWithFile(text(folder.Path()));
    OpenFolderWithFile(text(own));
    OpenFolderWithFile(text(systems));
    EXPECT_THAT(shell.requests, testing::ElementsAre(L"select " + text(own), L"open " + text(systems.parent_path())));
}

TEST(ShellActions, AskForABrowserAnew)
{
    const MemoryRegistry registry;
    EXPECT_FALSE(WEBIsBrowserAvailable());
    WUTLRegistry::CreateKey(
        L"HKEY_LOCAL_MACHINE\\SOFTWARE\\classes\\http\\shell\\open\\command", WUTLRegistry::kWriteAccess, 0);
    EXPECT_TRUE(WEBIsBrowserAvailable());
}

struct FakeUsers : Standing<Ports::Users> {
    std::wstring DisplayName() const override { return display; }
    std::wstring AccountName() const override { return account; }

    std::wstring display = L"Ada Lovelace";
    std::wstring account = L"ada";
};

TEST(CurrentUser, HasADisplayNameOrAnAccount)
{
    FakeUsers users;
    EXPECT_EQ(TvlUtl::GetCurrentUserName(), L"Ada Lovelace");
    users.display.clear();
    EXPECT_EQ(TvlUtl::GetCurrentUserName(), L"ada");
    users.account.clear();
    EXPECT_EQ(TvlUtl::GetCurrentUserName(), L"");
    Ports::Users::SetForTests(nullptr);
    EXPECT_NE(TvlUtl::GetCurrentUserName(), L"");
}

struct FakeKeyboard : Standing<Ports::Keyboard> {
    bool IsDown(int virtualKey) const override { return virtualKey == down; }

    int down = 0;
};

TEST(KeyContext, IsOneForTheProcess)
{
    FakeKeyboard keyboard;
    const Framework::UI::IKeyContext& keys = GetKeyContext();
    EXPECT_EQ(&keys, &GetKeyContext());
    struct Row {
        int key;
        bool shift, control, alt;
    };
    for (const auto& [key, shift, control, alt] : {Row{0, false, false, false}, Row{0x10, true, false, false},
             Row{0x11, false, true, false}, Row{0x12, false, false, true}}) {
        keyboard.down = key;
        EXPECT_EQ(keys.IsShiftDown(), shift) << key;
        EXPECT_EQ(keys.IsControlDown(), control) << key;
        EXPECT_EQ(keys.IsAltDown(), alt) << key;
        EXPECT_TRUE(keys.IsKeyDown(key));
    }
    EXPECT_TRUE(HasTabletModeToggling());
}

TEST(PathExports, CopyTheirTexts)
{
    wchar_t buffer[1024];
    GetAppDir(buffer);
    EXPECT_TRUE(fs::exists(SystemIO::ToFilePath(buffer) / "Suite"));
    GetAppUIName(buffer);
    EXPECT_EQ(buffer, GetAppSkinSettingData().GetAppUIName().Std());

    const ScratchFolder folder;
    const FakeEnvironment environment({{L"TVL_USER_DIR", SystemIO::FromFilePath(folder.Path()).Std()}});
    const MemoryRegistry registry;
    const std::pair<void (*)(wchar_t*), TvlString (*)()> kFolders[] = {
        {GetColorPalettesDir, CFileLocations::GetFileLocationsColorPalettesDir},
        {GetFillsDir, CFileLocations::GetFileLocationsFillsDir},
        {GetFontsDir, CFileLocations::GetFileLocationsFontsDir},
        {GetImageListsDir, CFileLocations::GetFileLocationsImageListsDir},
        {GetPhotoFramesDir, CFileLocations::GetFileLocationsPhotoFramesDir},
        {GetTemplatesDir, CFileLocations::GetFileLocationsTemplatesDir},
    };
    std::set<std::wstring> folders;
    for (const auto& [copy, give] : kFolders) {
        copy(buffer);
        EXPECT_EQ(buffer, give().Std());
        folders.insert(buffer);
    }
    EXPECT_EQ(folders.size(), std::size(kFolders));
}

TEST(DotNet, AnswersTheSameUnderBothNames) { EXPECT_EQ(TvlUtl::IsDotNetInstalled(), TvlUtl::IsNewDotNetInstalled()); }

/// A module's file under a name of its own in the program's folder, while it lives.
class CopiedModule {
public:
    CopiedModule()
    {
        const fs::path program = SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath());
        isWindows = program.extension() == ".exe";
        m_path = program.parent_path() / (isWindows ? "tvl-copied-module.dll" : "tvl-copied-module.so");
        fs::copy_file(program.parent_path() / (isWindows ? "TvlSiblings.dll" : "libTvlSiblings.so"), m_path,
            fs::copy_options::overwrite_existing);
    }
    CopiedModule(const CopiedModule&) = delete;
    CopiedModule& operator=(const CopiedModule&) = delete;
    ~CopiedModule()
    {
        std::error_code ignored;
        fs::remove(m_path, ignored);
    }
    std::wstring Name() const { return m_path.filename().wstring(); }
    std::wstring FullName() const { return m_path.wstring(); }

    bool isWindows = false;

private:
    fs::path m_path;
};

TEST(Modules, LoadFromOneFolderAndNoOther)
{
    Ports::Modules& modules = Ports::Modules::Get();
    const CopiedModule copied;
    const std::wstring systems = copied.isWindows ? L"version.dll" : L"libm.so.6";
    EXPECT_EQ(modules.LoadFromSystem(copied.Name()), nullptr);
    EXPECT_EQ(modules.LoadFromProgramFolder(systems), nullptr);
    for (const std::wstring& name : {std::wstring(), copied.FullName(), L"./" + copied.Name(), L"../bin/" + systems}) {
        EXPECT_EQ(modules.LoadFromSystem(name), nullptr) << name;
        EXPECT_EQ(modules.LoadFromProgramFolder(name), nullptr) << name;
    }
    const HMODULE system = modules.LoadFromSystem(systems);
    ASSERT_NE(system, nullptr);
    modules.Unload(system);
    const HMODULE own = modules.LoadFromProgramFolder(copied.Name());
    ASSERT_NE(own, nullptr);
    modules.Unload(own);
}

}   // namespace
