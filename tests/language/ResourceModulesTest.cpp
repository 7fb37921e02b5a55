// Resource libraries, folders, events of running applications, and texts by number.
#include "LanguageWorld.h"

#include "LoadedModules.h"

#include <stdexcept>

namespace {

/// Modules that a test chooses, by path or name; loading counts.
class FakeModules : public Ports::Modules {
public:
    FakeModules() : m_system(Get()) { SetForTests(this); }
    FakeModules(const FakeModules&) = delete;
    FakeModules& operator=(const FakeModules&) = delete;
    ~FakeModules() override { SetForTests(nullptr); }

    HMODULE Loaded(const std::wstring& name) const override { return name == Program() ? Module(1) : nullptr; }
    HMODULE Load(const std::wstring&) override { return nullptr; }
    HMODULE LoadFromSystem(const std::wstring&) override { return nullptr; }
    HMODULE LoadFromProgramFolder(const std::wstring&) override { return nullptr; }
    HMODULE LoadAsData(const std::wstring& path) override
    {
        loaded.push_back(path);
        return damaged ? nullptr : Module(2);
    }
    void Unload(HMODULE) override { ++unloaded; }
    void* Address(HMODULE module, const std::string& name) const override
    {
        return module == Module(2) && name == "DllInitLangRes" ? reinterpret_cast<void*>(&Init) : nullptr;
    }
    std::wstring ProgramPath() const override { return program; }
    DWORD ProcessId() const override { return m_system.ProcessId(); }
    std::vector<std::wstring> Arguments() const override { return {}; }
    std::wstring PathOf(const void* address) const override { return m_system.PathOf(address); }

    static HMODULE Module(std::uintptr_t number) { return reinterpret_cast<HMODULE>(number * 16); }
    static void Init() { ++inits; }

    std::wstring program;
    bool damaged = false;
    std::vector<std::wstring> loaded;
    int unloaded = 0;
    static inline int inits = 0;

private:
    std::wstring Program() const { return program.substr(program.find_last_of(L"/\\") + 1); }

    Ports::Modules& m_system;
};

class ResourceModules : public LanguageWorld {
protected:
    ResourceModules()
    {
        Install("ENU DEU");
        StoreText(L"DEU");
        modules.program = world.Path("program/tool.exe").Std();
    }
    IGLB_UILanguage& Language() { return IGLB_UILanguage::GetInst(); }

    FakeModules modules;
};

TEST_F(ResourceModules, AreLookedForInThreePlaces)
{
    const TvlString other = world.MakeFolder("other");
    const char* const kPlaces[] = {"program/Languages/DEU/a.dll", "other/a.dll", "other/DEU/a.dll"};
    EXPECT_EQ(Language().LoadResourceDll(L"a.dll", other.c_str()), nullptr);
    EXPECT_EQ(Warnings(), L"Unable to load resource DLL:\n" + other.Std() + L"\n");
    EXPECT_EQ(StoredLanguage(), L"DEU") << "nothing is wrong with the language";
    for (const char* const place : kPlaces) {
        world.MakeFile(place);
        EXPECT_EQ(Language().LoadResourceDll(L"a.dll", other.c_str()), FakeModules::Module(2));
        EXPECT_EQ(modules.loaded.back(), world.Path(place).Std());
    }
    world.MakeFile("suite/Languages/DEU/a.dll");
    EXPECT_EQ(Language().LoadResourceDll(L"a.dll"), FakeModules::Module(2));
    EXPECT_EQ(modules.loaded.back(), world.Path("suite/Languages/DEU/a.dll").Std());
    EXPECT_EQ(Language().FreeResourceDll(FakeModules::Module(2)), 1);
    EXPECT_EQ(Language().FreeResourceDll(nullptr), 0);
    EXPECT_EQ(modules.unloaded, 1);
    for (const wchar_t* const missing : {L"", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(Language().LoadResourceDll(missing, L"x"), nullptr);
        EXPECT_EQ(Language().LoadResourceDll(L"x", missing), nullptr);
    }
}

TEST_F(ResourceModules, ADamagedOneDropsTheStoredChoice)
{
    const TvlString file = world.MakeFile("suite/Languages/DEU/a.dll", "no library");
    world.MakeFile("suite/Languages/a.dll");
    StoreNumber(L"QueryStartupLang", 0);
    modules.damaged = true;
    EXPECT_EQ(Language().LoadResourceDll(L"a.dll"), nullptr);
    EXPECT_EQ(modules.loaded.size(), 1u) << "nothing more is tried";
    EXPECT_EQ(Warnings(), L"Unable to load resource DLL:\n" + file.Std() + L"\n");
    EXPECT_FALSE(Stored(L"UILang"));
    EXPECT_FALSE(Stored(L"QueryStartupLang"));
    // The system's own loader refuses it too.
    Ports::Modules::SetForTests(nullptr);
    EXPECT_EQ(Ports::Modules::Get().LoadAsData(file.Std()), nullptr);
}

TEST_F(ResourceModules, OneModuleStandsInForAll)
{
    const HMODULE common = FakeModules::Module(3);
    const HMODULE before = FakeModules::Module(4);
    Language().SwapResourceModule(before);
    EXPECT_EQ(Language().BeginCommonResources(), before);
    EXPECT_EQ(Language().GetResourceModule(), before) << "there is none";
    EXPECT_EQ(Language().SwapCommonModule(common), nullptr);
    EXPECT_EQ(Language().LoadResourceDll(L"a.dll", L"nowhere"), common);
    world.Remove("suite");
    EXPECT_EQ(Language().LoadResourceDll(L"a.dll"), common) << "also without a folder of languages";
    EXPECT_EQ(Language().LoadResourceDll(L""), nullptr);
    EXPECT_EQ(Language().FreeResourceDll(common), 1);
    EXPECT_EQ(modules.unloaded, 0);
    EXPECT_EQ(Language().BeginCommonResources(), before);
    EXPECT_EQ(Language().GetResourceModule(), common);
    Language().EndCommonResources(before);
    EXPECT_EQ(Language().SwapResourceModule(nullptr), before);
    EXPECT_EQ(Language().GetCommonModule(), common);
}

TEST_F(ResourceModules, ProgramsAreKnownByTheirNames)
{
    for (const char* const name : {"regsvr32.exe", "REGSVR32.EXE", "isregspy.exe"}) {
        Forget();
        modules.program = world.Path(name).Std();
        EXPECT_EQ(Language().GetCommonModule(), FakeModules::Module(1)) << name;
    }
    Forget();
    modules.program = world.Path("Explorer.EXE").Std();
    StoreNumber(L"QueryStartupLang", 1);
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(dialogs.shown, 0);
    EXPECT_EQ(Language().GetCommonModule(), nullptr);
    Forget();
    modules.program.clear();
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(dialogs.shown, 1);
}

TEST_F(ResourceModules, AreToldOnce)
{
    FakeModules::inits = 0;
    Language().RegisterResourceModule(FakeModules::Module(2));
    Language().RegisterResourceModule(FakeModules::Module(5));   // has no such function
    Language().InitResourceModules();
    Language().InitResourceModules();
    EXPECT_EQ(FakeModules::inits, 1);
}

TEST_F(ResourceModules, FoldersAreKnownOnceALanguageIs)
{
    TvlString text = L"unchanged";
    EXPECT_EQ(Language().GetLanguageDirName(text), 0);
    EXPECT_EQ(Language().GetLanguagePath(text), 0);
    EXPECT_EQ(Language().GetLanguageDataPath(text), 0);
    EXPECT_EQ(text, L"unchanged");
    EXPECT_EQ(Language().GetRelativeLanguageRoot(text), 0);
    Chosen();
    EXPECT_EQ(Language().GetLanguageDirName(text), 1);
    EXPECT_EQ(text, L"DEU");
    EXPECT_EQ(Language().GetLanguageDataPath(text), 1);
    EXPECT_EQ(text, world.Path("suite/Languages/DEU/Data"));
    EXPECT_EQ(Language().GetRelativeLanguageRoot(text), 1);
    EXPECT_EQ(text, world.Path("program/Languages/DEU"));
}

TEST_F(ResourceModules, PathsServeInEveryLanguage)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"suite/Languages/DEU/Data/x", "suite/Languages/DirName/Data/x"},
        {"suite/Languages/any/x/y", "suite/Languages/DirName/x/y"},
        {"suite/Languages/DEU", "suite/Languages/DEU"},
        {"suite/LanguagesX/DEU/x", "suite/LanguagesX/DEU/x"},
        {"suite/Languages", "suite/Languages"},
        {"elsewhere/x/y", "elsewhere/x/y"},
    };
    TvlString out;
    for (const auto& [path, same] : kRows) {
        EXPECT_EQ(Language().ToDirNamePath(world.Path(path), out), 1);
        EXPECT_EQ(out, world.Path(same));
    }
    EXPECT_EQ(Language().ToDirNamePath(L"", out), 0);
    Forget();
    world.Remove("suite");
    EXPECT_THROW(Language().ToDirNamePath(L"x", out), std::runtime_error);
}

TEST_F(ResourceModules, ARunningApplicationIsSignalled)
{
    EXPECT_THROW(Language().IsRunningEventSignalled(), std::runtime_error);
    EXPECT_THROW(Language().CloseRunningEvent(), std::runtime_error);
    Language().SignalRunningEvent();   // nobody is there
    Language().CreateRunningEvent();
    EXPECT_THROW(Language().SignalRunningEvent(), std::runtime_error);
    EXPECT_EQ(Language().IsRunningEventSignalled(), 0);
    const auto other = TvlUtils::InterProcessEvent::openEvent(L"SOFTWARE-Tovel-Suite-AnAppIsRunning");
    ASSERT_TRUE(other);
    other->set();
    EXPECT_EQ(Language().IsRunningEventSignalled(), 1);
    EXPECT_EQ(Language().IsRunningEventSignalled(), 0);
    Language().CloseRunningEvent();
    Language().SignalRunningEvent();
    EXPECT_EQ(other->isSignalled(), 1);
}

struct DefaultId {
    const wchar_t* text;
    bool isId;
    ULONG number;
};

TEST_F(ResourceModules, DefaultIdsAreReadAsTheSystemReadsNumbers)
{
    constexpr DefaultId kRows[] = {
        {L"TovelDefaultID_0", true, 0},
        {L"TovelDefaultID_42", true, 42},
        {L"TovelDefaultID_ \t+7x", true, 7},
        {L"TovelDefaultID_4294967294", true, 4294967294u},
        {L"TovelDefaultID_4294967295", false, 0},
        {L"TovelDefaultID_99999999999999999999999", false, 0},
        {L"TovelDefaultID_-5", true, 4294967291u},
        {L"TovelDefaultID_-1", false, 0},
        {L"TovelDefaultID_-4294967297", false, 0},
        {L"TovelDefaultID_", false, 0},
        {L"TovelDefaultID_x", false, 0},
        {L"tovelDefaultID_1", false, 0},
        {L"TovelDefaultID", false, 0},
        {L"", false, 0},
    };
    for (const auto& [text, isId, number] : kRows) {
        EXPECT_EQ(Language().IsDefaultIdText(text), isId) << text;
        EXPECT_EQ(Language().ParseDefaultId(text), number) << text;
    }
    TvlString text;
    EXPECT_EQ(Language().GetDefaultId(4294967294u, text), 1);
    EXPECT_EQ(text, L"TovelDefaultID_4294967294");
}

TEST_F(ResourceModules, TextsOfOldNumbersAreInTheChosenLanguage)
{
    world.MakeFile(
        "suite/Languages/DEU/Data/Texts/a.json", R"({"version": 1, "texts": {"key": "Text", "other": "Anderer"},
        "legacy": {"TvlUtl": {"101": "key"}, "TvlCmnRes": {"101": "other"}}})");
    Chosen();
    TvlString out;
    EXPECT_EQ(Language().GetResourceStringById(101, L"a name", out), 1);
    EXPECT_EQ(out, L"Text");
    EXPECT_EQ(Language().GetCommonStringById(101, L"a name", out), 1);
    EXPECT_EQ(out, L"Anderer");
    EXPECT_EQ(Language().GetResourceStringById(101, L"TovelDefaultID_9", out), 1);
    EXPECT_EQ(out, L"TovelDefaultID_9");
    EXPECT_EQ(Language().GetResourceStringById(102, L"a name", out), 0);
}

TEST_F(ResourceModules, TheRegistryKeepsSixBytesOnWindows)
{
    CGlbLang code(5590597);
    EXPECT_EQ(Language().WriteStoredLanguage(code), 1);
    EXPECT_EQ(Stored(L"UILang")->size(), 3 * sizeof(wchar_t)) << "without an end mark";
    Language().WriteQueryStartupLang(7);
    EXPECT_EQ(*Stored(L"QueryStartupLang"), (std::vector<BYTE>{1, 0, 0, 0}));
    EXPECT_EQ(Language().ReadQueryStartupLang(), 1);
    EXPECT_EQ(Language().WriteStoredLanguage(CGlbLang()), 0);
    EXPECT_EQ(StoredLanguage(), L"ENU");
    // Values of another kind count as missing, but for the question whether they are there.
    Store(L"UILang", PREFUTILS::kRegistryBinary, L"ENU", 3 * sizeof(wchar_t));
    EXPECT_EQ(Language().ReadStoredLanguage(code), 0);
    EXPECT_EQ(code.GetCode(), 0u);
    Store(L"QueryStartupLang", PREFUTILS::kRegistryText, L"12", 4);
    EXPECT_EQ(Language().ReadQueryStartupLang(), 0);
    Store(L"UILang", PREFUTILS::kRegistryText, L"ENU", 4 * sizeof(wchar_t));
    EXPECT_EQ(Language().ReadStoredLanguage(code), 1) << "with an end mark, as other programs write";
}

}   // namespace
