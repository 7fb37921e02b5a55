// Orders that callers outside depend on.
#include "GLB_UILanguage.h"

#include "VirtualSlot.h"

#include <gtest/gtest.h>

struct UILanguageLayout {
    static void Expect()
    {
        auto& language = GLB_UILanguage::GetInstance();
        const void* const fields[] = {&language.m_language, &language.m_commonModule, &language.m_languageRoot,
            &language.m_relativeRoot, &language.m_silentEvent, &language.m_running, &language.m_pendingModules,
            &language.m_languages, &language.m_otherLanguages, &language.m_dataSource};
        EXPECT_EQ(fields[0], reinterpret_cast<const char*>(&language) + sizeof(void*));
        EXPECT_TRUE(std::is_sorted(std::begin(fields), std::end(fields)));
        EXPECT_EQ(static_cast<const void*>(&language.m_languageRoot.path), fields[2]);
    }
};

TEST(UILanguageLayout, FieldsStandInTheirOrder) { UILanguageLayout::Expect(); }

TEST(UILanguageLayout, SlotsStandInTheirOrder)
{
    using I = IGLB_UILanguage;
    using Named = HMODULE (I::*)(const wchar_t*);
    using InFolder = HMODULE (I::*)(const wchar_t*, const wchar_t*);
    const std::size_t slots[] = {Slot(&I::GetLanguage), Slot(&I::ReadStoredLanguage), Slot(&I::WriteStoredLanguage),
        Slot(&I::GetLanguages), Slot(&I::ReadQueryStartupLang), Slot(&I::WriteQueryStartupLang),
        Slot(&I::CreateRunningEvent), Slot(&I::SignalRunningEvent), Slot(&I::IsRunningEventSignalled),
        Slot(&I::CloseRunningEvent), Slot(&I::GetLanguageDirName), Slot(&I::GetLanguageDataPath),
        Slot(&I::GetLanguagePath), Slot(&I::GetLanguageRoot), Slot(&I::GetRelativeLanguageRoot),
        Slot(&I::ToDirNamePath), Slot(static_cast<Named>(&I::LoadResourceDll)),
        Slot(static_cast<InFolder>(&I::LoadResourceDll)), Slot(&I::FreeResourceDll), Slot(&I::GetResourceModule),
        Slot(&I::SwapResourceModule), Slot(&I::GetCommonModule), Slot(&I::SwapCommonModule),
        Slot(&I::BeginCommonResources), Slot(&I::EndCommonResources), Slot(&I::RegisterResourceModule),
        Slot(&I::InitResourceModules), Slot(&I::GetDefaultId), Slot(&I::GetResourceStringById),
        Slot(&I::GetCommonStringById), Slot(&I::IsDefaultIdText), Slot(&I::ParseDefaultId)};
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i);
}
