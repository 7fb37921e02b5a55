// The registry and what is kept in it: values are the old ones or the new ones, and no key stays open.
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "IniUpdateRegistry.h"
#include "Privacy.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPref/CPrefObject.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace {
constexpr const wchar_t* kParent = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel";
constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Faults";
constexpr const wchar_t* kBeside = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Faults2";
constexpr const wchar_t* kOther = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Other";
constexpr const wchar_t* kBelowOther = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Other\\Below\\It";
constexpr const wchar_t* kOld = L"the value that was there before";
constexpr const wchar_t* kNew = L"the value that takes its place";

constexpr ULONG kBytes = 8;
using Bytes = std::array<unsigned char, kBytes>;
using Names = std::vector<std::wstring>;
constexpr Bytes kOldBytes = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr Bytes kNewBytes = {8, 7, 6, 5, 4, 3, 2, 1};

struct Registry {
    Registry()
    {
        EXPECT_TRUE(Write(kOldBytes));
        EXPECT_EQ(WUTLRegistry::CreateKey(kBeside, WUTLRegistry::kReadWriteAccess, 0), 0);
        WUTLRegistry key(kKey, WUTLRegistry::kReadWriteAccess, 1);
        EXPECT_EQ(key.SetValue(L"text", kOld), 0);
        EXPECT_EQ(key.SetValue(L"number", ULONG{7}), 0);
        EXPECT_EQ(key.SetValue(L"digits", L"12"), 0);
    }
    static TvlString Text()
    {
        TvlString value;
        const WUTLRegistry key(kKey, WUTLRegistry::kReadAccess);
        return key.GetValue(L"text", value) == 0 ? value : TvlString(L"none");
    }
    void Check(const wchar_t* wanted, const HeapRun& outcome)
    {
        EXPECT_EQ(world.registry.OpenKeys(), 0u);
        const TvlString found = Text();
        EXPECT_TRUE(found == wanted || (found == kOld && outcome.hasFailed)) << found.c_str();
    }
    static bool Write(Bytes bytes)
    {
        return WUTLRegistry::RegWriteBinary(L"", L"bytes", bytes.data(), kBytes, kKey) == 1;
    }
    static Bytes StoredBytes()
    {
        Bytes bytes{};
        EXPECT_EQ(WUTLRegistry::RegReadBinary(L"", L"bytes", bytes.data(), kBytes, kKey), static_cast<int>(kBytes));
        return bytes;
    }
    /// The buffer has the names, or those before one that could not be read.
    void CheckNames(const Names& wanted, const HeapRun& outcome) const
    {
        Names names;
        for (const wchar_t* name = buffer; *name; name += std::wcslen(name) + 1)
            names.emplace_back(name);
        EXPECT_TRUE(names.size() == wanted.size() || outcome.hasFailed) << names.size();
        ASSERT_LE(names.size(), wanted.size());
        EXPECT_TRUE(std::equal(names.begin(), names.end(), wanted.begin()));
    }
    /// So that no part of an earlier list is taken for one of a later one.
    void Clear() { std::fill(std::begin(buffer), std::end(buffer), L'\0'); }
    static bool HasFailed(Registry& registry) { return registry.result != 0; }
    static bool IsNotDone(Registry& registry) { return !registry.isDone; }

    FaultWorld world;
    LONG result = 0;
    bool isDone = false;
    TvlString text;
    wchar_t buffer[300] = {};
};

CAppPrefObject<std::vector<TvlString>>& List()
{
    static CAppPrefObject<std::vector<TvlString>> list(L"Faults/List of texts", {L"default"});
    return list;
}

struct Preferences {
    const std::vector<TvlString> old = {L"an old text of some length", L"and one more of the kind"};
    const std::vector<TvlString> next = {L"a new text of some length"};
    Preferences() { EXPECT_TRUE(List().SetValue(old)); }

    static bool HasFailed(Preferences& preferences) { return !preferences.isDone; }

    FaultWorld world;
    bool isDone = false;
};

struct Settings {
    Settings()
    {
        world.Put("user/before.ini", "[Tools/Line]\r\nWidth=before\r\nColor=2\r\n[Other]\r\nx=1\r\n");
        IniUpdateRegistry(FaultWorld::Path("user/before.ini").c_str());
        world.Put("user/settings.ini", "[Tools/Line]\r\nWidth=a value of some length\r\nColor=2\r\n[Other]\r\nx=1\r\n");
    }
    static TvlString Preference(const wchar_t* name)
    {
        const auto value = CAppPrefManager::GetInstance().GetStore()->Read(name);
        return value ? TvlPref::ValueAs<TvlString>(*value).value_or(L"") : TvlString(L"none");
    }

    FaultWorld world;
};
}   // namespace

HeapOperations RegistryOperations()
{
    return {
        Row<Registry>(
            "SetValue",
            [](Registry& registry) {
                WUTLRegistry key(kKey);
                registry.result = key.SetValue(L"text", kNew);
            },
            [](Registry& registry, const HeapRun& outcome) { registry.Check(kNew, outcome); }, Registry::HasFailed),
        Row<Registry>(
            "GetValue",
            [](Registry& registry) {
                const WUTLRegistry key(kKey);
                registry.result = key.GetValue(L"text", registry.text);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                EXPECT_TRUE(registry.text == kOld || outcome.hasFailed);
                registry.text = L"";
            },
            Registry::HasFailed),
        Row<Registry>(
            "RegWriteString",
            [](Registry& registry) { registry.isDone = WUTLRegistry::RegWriteString(L"", L"text", kNew, kKey) == 1; },
            [](Registry& registry, const HeapRun& outcome) { registry.Check(kNew, outcome); }, Registry::IsNotDone),
        Row<Registry>(
            "RegReadString",
            [](Registry& registry) {
                registry.Clear();
                WUTLRegistry::RegReadString(L"", L"missing", L"default", registry.buffer, 299, kKey);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                EXPECT_TRUE(outcome.hasFailed || TvlString(registry.buffer) == L"default");
            }),
        // Without memory they give the default, which does not take the value's place.
        SilentRow<Registry>(
            "RegReadString_of_a_value",
            [](Registry& registry) {
                registry.Clear();
                WUTLRegistry::RegReadString(L"", L"text", L"default", registry.buffer, 299, kKey);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                EXPECT_TRUE(outcome.hasFailed || TvlString(registry.buffer) == kOld);
            }),
        SilentRow<Registry>(
            "RegReadInt",
            [](Registry& registry) { registry.result = WUTLRegistry::RegReadInt(L"", L"digits", 1, kKey); },
            [](Registry& registry, const HeapRun& outcome) {
                EXPECT_TRUE(outcome.hasFailed || registry.result == 12);
                EXPECT_EQ(WUTLRegistry::RegReadInt(L"", L"digits", 2, kKey), 12);
            }),
        Row<Registry>(
            "RegWriteBinary", [](Registry& registry) { registry.isDone = Registry::Write(kNewBytes); },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                const auto bytes = Registry::StoredBytes();
                EXPECT_TRUE(bytes == kNewBytes || (bytes == kOldBytes && outcome.hasFailed));
            },
            Registry::IsNotDone),
        // A list ends where a name can't be read, and nobody is told.
        SilentRow<Registry>(
            "GetSubkeyList",
            [](Registry& registry) {
                registry.Clear();
                WUTLRegistry(kParent).GetSubkeyList(registry.buffer, 299);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                registry.CheckNames({L"Faults", L"Faults2"}, outcome);
            }),
        SilentRow<Registry>(
            "GetValueNameList",
            [](Registry& registry) {
                registry.Clear();
                WUTLRegistry(kKey).GetValueNameList(registry.buffer, 299);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                registry.CheckNames({L"bytes", L"digits", L"number", L"text"}, outcome);
            }),
        Row<Registry>(
            "DeleteRegistryKey",
            [](Registry& registry) {
                registry.result = WUTLRegistry::CreateKey(kBelowOther, WUTLRegistry::kReadWriteAccess, 0);
                if (registry.result == 0)
                    registry.result = WUTLRegistry::DeleteRegistryKey(kOther);
            },
            [](Registry& registry, const HeapRun& outcome) {
                registry.Check(kOld, outcome);
                EXPECT_TRUE(WUTLRegistry::IsValid(kOther) != 0 || outcome.hasFailed) << "it is there still";
            },
            Registry::HasFailed),
        Row<Preferences>(
            "SetValue_of_a_preference",
            [](Preferences& preferences) { preferences.isDone = List().SetValue(preferences.next); },
            [](Preferences& preferences, const HeapRun& outcome) {
                const auto now = List().GetValue();
                EXPECT_TRUE(now == preferences.next || (now == preferences.old && outcome.hasFailed));
                EXPECT_EQ(preferences.world.registry.OpenKeys(), 0u);
                preferences.isDone = false;
            },
            Preferences::HasFailed),
        Row<Preferences>(
            "Change_of_a_preference",
            [](Preferences& preferences) {
                struct Listening {
                    ~Listening() { CAppPrefManager::GetInstance().RemoveListener(number); }
                    int number;
                } const listening{CAppPrefManager::GetInstance().AddListener([](const CPrefObjectBase&) {})};
                preferences.isDone = List().Change(preferences.next);
            },
            [](Preferences& preferences, const HeapRun& outcome) {
                const auto now = List().GetValue();
                EXPECT_TRUE(now == preferences.next || (now == preferences.old && outcome.hasFailed));
                preferences.isDone = false;
            },
            Preferences::HasFailed),
        // A choice that can't be stored stays as it was, which nobody is told.
        SilentRow<Preferences>(
            "Privacy",
            [](Preferences&) {
                TvlUtl::Privacy::SetShareSearchTerms(0);
                TvlUtl::Privacy::GetShareFeatureUsage();
            },
            [](Preferences&, const HeapRun& outcome) {
                EXPECT_TRUE(TvlUtl::Privacy::GetShareSearchTerms() == 0 || outcome.hasFailed);
                TvlUtl::Privacy::SetShareSearchTerms(1);
            }),
        // It tells the log alone.
        SilentRow<Settings>(
            "IniUpdateRegistry", [](Settings&) { IniUpdateRegistry(FaultWorld::Path("user/settings.ini").c_str()); },
            [](Settings& settings, const HeapRun& outcome) {
                EXPECT_EQ(settings.world.registry.OpenKeys(), 0u);
                const TvlString width = Settings::Preference(L"Tools/Line/Width");
                const bool isWhole =
                    Settings::Preference(L"Tools/Line/Color") == L"2" && Settings::Preference(L"Other/x") == L"1";
                const bool isApplying = settings.world.Get("user/settings.ini.applying").has_value();
                const bool isApplied = isWhole && width == L"a value of some length";
                const bool isUntouched = isWhole && width == L"before" && outcome.hasFailed;
                EXPECT_TRUE(isApplied || isApplying || isUntouched) << "what is half done is marked";
                EXPECT_FALSE(isApplying && outcome.IsSound());
            }),
    };
}
