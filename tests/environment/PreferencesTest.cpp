// Preferences in the registry.
#include "FaultWalk.h"
#include "MemoryRegistry.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPref/CPrefObject.h"

#include <gtest/gtest.h>

namespace {
using TextList = std::vector<TvlString>;

constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel\\Application Preferences\\Tests";

TvlString StoredText(const wchar_t* name)
{
    TvlString text = L"(none)";
    WUTLRegistry key(kKey);
    key.GetValue(name, text);
    return text;
}

void StoreText(const wchar_t* name, const wchar_t* text)
{
    ASSERT_EQ(WUTLRegistry::CreateKey(kKey, WUTLRegistry::kReadWriteAccess, 0), 0);
    WUTLRegistry key(kKey);
    ASSERT_EQ(key.SetValue(name, text), 0);
}

struct EncodedText {
    TvlString text;
    TvlString encoded;
};

const EncodedText kTexts[] = {
    {L"", L""},
    {L"C:\\Users\\a b\\Fills\\", L"C:\\Users\\a b\\Fills\\"},
    {L"-_ .:<>\\/()[]!$", L"-_ .:<>\\/()[]!$"},
    {L" leading", L">0020006c0065006100640069006e0067"},
    {L"end ", L">0065006e00640020"},
    {L"a,b", L">0061002c0062"},
    {L">41", L">003e00340031"},
    {L"\x0f\u00ff\u0fff\u4e2d", L">000f00ff0fff4e2d"},
    {L"\U0001F600", L">d83dde00"},
    {L"two\nlines", L">00740077006f000a006c0069006e00650073"},
};

TEST(Preferences, KeepTextsInTheFormOfSettingsFiles)
{
    const MemoryRegistry registry;
    CAppPrefObject<TvlString> preference(L"Tests/Text", L"default");
    EXPECT_EQ(preference.GetValue(), L"default");
    for (const auto& [text, encoded] : kTexts) {
        EXPECT_TRUE(preference.SetValue(text));
        EXPECT_EQ(StoredText(L"Text"), encoded);
        EXPECT_EQ(preference.GetValue(), text) << encoded.c_str();
    }
    EXPECT_EQ(registry.OpenKeys(), 0u);
}

TEST(Preferences, BringListsAndSwitchesBack)
{
    const MemoryRegistry registry;
    CAppPrefObject<TextList> list(L"Tests/Deep/List", {L"default"});
    for (const TextList& value : {TextList{}, TextList{L""}, TextList{L"", L""}, TextList{L"one"},
             TextList{L"<plugins>, 1", L"D:\\n\\"}, TextList{L"two\nlines\\", L"\\n"}}) {
        EXPECT_TRUE(list.SetValue(value));
        EXPECT_EQ(list.GetValue(), value);
    }
    CPrefObject<bool, CBoxPrefManager> flag(L"Tests/Flag", true);
    for (const bool value : {false, true}) {
        EXPECT_TRUE(flag.SetValue(value));
        EXPECT_EQ(flag.GetValue(), value);
    }
}

TEST(Preferences, HaveTheirDefaultWhereTheRegistryHoldsNothingOfTheirs)
{
    const MemoryRegistry registry;
    CAppPrefObject<bool> flag(L"Tests/Flag", true);
    CAppPrefObject<TextList> list(L"Tests/List", {L"default"});
    for (const wchar_t* const text : {L"", L"2", L"yes", L">0", L">zzzz"}) {
        StoreText(L"Flag", text);
        EXPECT_TRUE(flag.GetValue()) << text;
    }
    StoreText(L"Flag", L"FALSE");
    EXPECT_FALSE(flag.GetValue());
    StoreText(L"List", L"no end mark");
    EXPECT_EQ(list.GetValue(), TextList{L"default"});
    WUTLRegistry key(kKey);
    ASSERT_EQ(key.SetValue(L"Flag", ULONG{0}), 0);   // a number is none of ours
    EXPECT_TRUE(flag.GetValue());
}

TEST(Preferences, TellOfChangesAlone)
{
    const MemoryRegistry registry;
    CAppPrefManager& manager = CAppPrefManager::GetInstance();
    CAppPrefObject<TvlString> preference(L"Tests/Changing", L"one");
    std::vector<TvlString> heard;
    const int number = manager.AddListener([&](const CPrefObjectBase& changed) {
        heard.push_back(changed.GetName() + L"=" + preference.GetValue());   // sees the new value
    });
    EXPECT_TRUE(preference.Change(L"one"));
    EXPECT_EQ(StoredText(L"Changing"), L"(none)");
    EXPECT_TRUE(preference.Change(L"two"));
    EXPECT_TRUE(preference.Change(L"two"));
    manager.RemoveListener(number);
    EXPECT_TRUE(preference.Change(L"three"));
    EXPECT_EQ(heard, TextList{L"Tests/Changing=two"});
    IPrefStore* const before = manager.AttachStore(nullptr);
    EXPECT_FALSE(preference.Change(L"four"));
    manager.AttachStore(before);
    EXPECT_EQ(preference.GetValue(), L"three");
}

/// A store in memory, one of whose operations fails.
class FaultyStore final : public PREFUTILS::RegistryStore {
public:
    KeyId FindKey(std::wstring_view path) override { return Sound().FindKey(path); }
    KeyId CreateKey(std::wstring_view path, bool& created) override { return Sound().CreateKey(path, created); }
    bool KeyLives(KeyId key) override { return Sound().KeyLives(key); }
    void DeleteTree(std::wstring_view path) override { Sound().DeleteTree(path); }
    std::optional<std::wstring> SubkeyName(KeyId key, DWORD index) override { return Sound().SubkeyName(key, index); }
    std::optional<std::pair<std::wstring, PREFUTILS::RegistryValue>> ValueAt(KeyId key, DWORD index) override
    {
        return Sound().ValueAt(key, index);
    }
    std::optional<PREFUTILS::RegistryValue> Value(KeyId key, std::wstring_view name) override
    {
        return Sound().Value(key, name);
    }
    bool SetValue(KeyId key, std::wstring_view name, const PREFUTILS::RegistryValue& value) override
    {
        return Sound().SetValue(key, name, value);
    }
    bool DeleteValue(KeyId key, std::wstring_view name) override { return Sound().DeleteValue(key, name); }

    std::size_t operations = 0;
    std::size_t failAt = 0;   // 0 for never

private:
    RegistryStore& Sound()
    {
        if (++operations == failAt)
            throw StoreFailure{PREFUTILS::kRegistryDiskFull};
        return *m_store;
    }

    std::unique_ptr<RegistryStore> m_store = PREFUTILS::MakeMemoryStore();
};

TEST(Preferences, HaveTheOldOrTheNewValueAfterEveryFault)
{
    CAppPrefObject<TvlString> preference(L"Tests/Faulty", L"default");
    WalkFaultPoints(2, [&](std::size_t point) {
        auto owned = std::make_unique<FaultyStore>();
        FaultyStore& store = *owned;
        PREFUTILS::StoredRegistry registry(std::move(owned));
        PREFUTILS::IRegistry::SetForTests(&registry);
        EXPECT_TRUE(preference.SetValue(L"old"));
        store.failAt = store.operations + point;
        const bool stored = preference.SetValue(L"the new one");
        const bool reached = store.operations >= store.failAt;
        store.failAt = 0;
        EXPECT_EQ(preference.GetValue(), stored ? L"the new one" : L"old");
        EXPECT_EQ(registry.OpenKeys(), 0u);
        PREFUTILS::IRegistry::SetForTests(nullptr);
        return reached;
    });
}

TEST(Preferences, HoldLongTexts)
{
    const MemoryRegistry registry;
    CAppPrefObject<TvlString> preference(L"Tests/Long");
    const TvlString text(L'\u4e2d', 100'000);
    EXPECT_TRUE(preference.SetValue(text));
    EXPECT_EQ(preference.GetValue(), text);
}

}   // namespace
