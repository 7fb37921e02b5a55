// A suite with languages of a test's choice, a user's registry, and a process that has not chosen its language yet.
#pragma once

#include "FakeDialogs.h"
#include "FakeLocale.h"
#include "FakeWindowing.h"
#include "GLB_UILanguage.h"
#include "InjectedServices.h"
#include "UserWorld.h"
#include "siblings/Tvl2D/SkiaUtility.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlResources/Resources.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>

class LanguageWorld : public testing::Test {
protected:
    LanguageWorld()
    {
        ExposeDynamicEntryPointsToOtherLibraries();
        world.environment.variables[L"TVL_SUITE_DIR"] = world.Path("suite").Std();
        Forget();
    }
    ~LanguageWorld() override
    {
        Forget();
        ApplicationInfo::Settings().SetResourceFileName(L"");
        Framework::Resources::SetLanguageFolder(L"EN");
    }

    /// The next question finds a process that has just started.
    static void Forget()
    {
        GLB_UILanguage::ReleaseInstance(false);
        INIClearLangRelProgDirCache();
        SkiaUtility::ResetTextRendering();
    }
    void InstallText(const std::string& folder, const std::string& text) const
    {
        world.MakeFile("suite/Languages/" + folder + "/Data/info.json", text);
    }
    /// Languages by code, such as "ENU DEU", in folders of their codes and under their codes as names.
    void Install(const std::string& codes) const
    {
        std::istringstream list(codes);
        for (std::string code; list >> code;)
            InstallText(code, nlohmann::json{{"langCode", code}, {"dirName", code}, {"uiName", "Name " + code}}.dump());
    }

    static constexpr DWORD kUser = 0x80000001;
    static constexpr DWORD kMachine = 0x80000002;
    static void Store(const wchar_t* name, DWORD type, const void* bytes, std::size_t size, DWORD root = kUser)
    {
        using namespace PREFUTILS;
        HKEY key = nullptr;
        ASSERT_EQ(IRegistry::GetInstance().RegCreateKeyExW(RegistryRoot(root), L"SOFTWARE\\Tovel\\Suite", 0, nullptr, 0,
                      kRegistryReadWrite, nullptr, &key, nullptr),
            0);
        IRegistry::GetInstance().RegSetValueExW(
            key, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size));
        IRegistry::GetInstance().RegCloseKey(key);
    }
    static void StoreText(const std::wstring& text)
    {
        Store(L"UILang", PREFUTILS::kRegistryText, text.data(), text.size() * sizeof(wchar_t));
    }
    static void StoreNumber(const wchar_t* name, DWORD number, DWORD root = kUser)
    {
        Store(name, PREFUTILS::kRegistryDword, &number, sizeof number, root);
    }
    /// Bytes of a value of the user; empty when there is none.
    static std::optional<std::vector<BYTE>> Stored(const wchar_t* name)
    {
        using namespace PREFUTILS;
        HKEY key = nullptr;
        if (IRegistry::GetInstance().RegOpenKeyExW(
                RegistryRoot(kUser), L"SOFTWARE\\Tovel\\Suite", 0, kRegistryRead, &key)
            != 0)
            return std::nullopt;
        std::vector<BYTE> bytes(100);
        DWORD size = static_cast<DWORD>(bytes.size());
        const LONG status = IRegistry::GetInstance().RegQueryValueExW(key, name, nullptr, nullptr, bytes.data(), &size);
        IRegistry::GetInstance().RegCloseKey(key);
        bytes.resize(size);
        return status == 0 ? std::optional(bytes) : std::nullopt;
    }
    static std::wstring StoredLanguage()
    {
        const auto bytes = Stored(L"UILang");
        if (!bytes)
            return L"";
        std::wstring text(bytes->size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes->data(), text.size() * sizeof(wchar_t));
        return text;
    }
    static std::wstring Chosen() { return IGLB_UILanguage::GetInst().GetLanguage().GetIO_StrFmt().Std(); }
    /// What a warning begins with, one line each.
    std::wstring Warnings() const
    {
        std::wstring all;
        for (const auto& box : windowing.boxes)
            all += box.text + L"\n";
        return all;
    }

    UserWorld world;
    FakeLocale locale;
    FakeWindowing windowing;
    FakeDialogs dialogs;
};
