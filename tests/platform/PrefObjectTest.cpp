// Preferences: their defaults, their store, and who is registered.
#include "siblings/TvlPref/CPrefObject.h"

#include <gtest/gtest.h>

namespace {

using TextList = std::vector<TvlString>;

/// Another store in the meantime.
struct Attached {
    explicit Attached(IPrefStore* store) : before(CAppPrefManager::GetInstance().AttachStore(store)) { }
    ~Attached() { CAppPrefManager::GetInstance().AttachStore(before); }
    IPrefStore* const before;
};

template <class T>
class PrefObject : public testing::Test {
public:
    static T Value(bool other)
    {
        if constexpr (std::is_same_v<T, bool>)
            return other;
        else if constexpr (std::is_same_v<T, TvlString>)
            return other ? L"other" : L"";
        else
            return other ? TextList{L"one", L"", L"three"} : TextList();
    }
};

using Types = testing::Types<bool, TvlString, TextList>;
TYPED_TEST_SUITE(PrefObject, Types);

TYPED_TEST(PrefObject, HasItsDefaultUntilAValueIsStored)
{
    const TypeParam first = TestFixture::Value(false), other = TestFixture::Value(true);
    MemoryPrefStore store;
    const Attached attached(&store);
    CPrefObject<TypeParam, CBoxPrefManager> plain(L"Tests/Plain", other);
    CAppPrefObject<TypeParam> computed(L"Tests/Computed", first, [] { return TestFixture::Value(true); });
    EXPECT_EQ(plain.GetValue(), other);
    EXPECT_EQ(computed.GetValue(), other);
    EXPECT_TRUE(plain.SetValue(first));
    EXPECT_TRUE(computed.SetValue(first));
    EXPECT_EQ(plain.GetValue(), first);
    EXPECT_EQ(computed.GetValue(), first);
    EXPECT_TRUE(store.Remove(L"Tests/Plain"));
    EXPECT_EQ(plain.GetValue(), other);
    store.Write(L"Tests/Plain", PrefValue());   // a bool, which one of the types is
    EXPECT_EQ(plain.GetValue(), (std::is_same_v<TypeParam, bool>) ? first : other);
}

TEST(PrefManager, AttachesStoresToAllPreferences)
{
    MemoryPrefStore one, two;
    const Attached attached(&one);
    CAppPrefManager& manager = CBoxPrefManager::GetInstance();
    EXPECT_EQ(&manager, &CAppPrefManager::GetInstance());
    CAppPrefObject<bool> early(L"Tests/Shared", true);
    early.SetValue(false);
    EXPECT_EQ(manager.AttachStore(&two), &one);
    CAppPrefObject<bool> late(L"Tests/Shared", true);
    EXPECT_TRUE(early.GetValue());
    early.SetValue(false);
    EXPECT_FALSE(late.GetValue());   // one value for all preferences of a name
    manager.AttachStore(nullptr);
    EXPECT_TRUE(early.GetValue());
    EXPECT_FALSE(early.SetValue(false));
    EXPECT_EQ(manager.GetStore(), nullptr);
}

TEST(PrefManager, KnowsWhoIsRegistered)
{
    CAppPrefManager& manager = CAppPrefManager::GetInstance();
    {
        CAppPrefObject<bool> object(L"Tests/Registered");
        EXPECT_EQ(manager.Find(L"Tests/Registered"), &object);
    }
    EXPECT_EQ(manager.Find(L"Tests/Registered"), nullptr);
}

}   // namespace
