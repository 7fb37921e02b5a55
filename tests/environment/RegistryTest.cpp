// The registry by textual paths, over the target's own registry and over memory.
#include "WUTLRegistry.h"

#include "MemoryRegistry.h"
#include "MockRegistry.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/IRegistry.h"

#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using PREFUTILS::IRegistry;
using testing::ElementsAre;

enum class Side { System, Memory };

TEST(RegistryRoots, AreRefusedForDeletionWithoutACall)
{
    const testing::StrictMock<MockRegistry> untouched;
    for (const wchar_t* path : {L"HKEY_CURRENT_USER", L"HKEY_USERS\\", L"HKEY_CURRENT_USER\\\\"})
        EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(path), 5) << path;
}

TEST(RegistryRoots, AreWantedForDeletion)
{
    const testing::StrictMock<MockRegistry> untouched;
    for (const wchar_t* path :
        {static_cast<const wchar_t*>(nullptr), L"", L"HKEY_NOWHERE\\Key", L"hkey_current_user\\Key"})
        EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(path), 110) << (path ? path : L"null");
}

/// Every test runs below one key of its own, which goes at the end.
class RegistryTest : public testing::TestWithParam<Side> {
protected:
    void SetUp() override
    {
        if (GetParam() == Side::Memory)
            m_memory = std::make_unique<MemoryRegistry>();
        WUTLRegistry::DeleteRegistryKey(kBase);
        ASSERT_EQ(WUTLRegistry::CreateKey(kBase, WUTLRegistry::kReadWriteAccess, 0), 0);
    }
    void TearDown() override
    {
        WUTLRegistry::DeleteRegistryKey(kBase);
        if (m_memory) {
            EXPECT_EQ(m_memory->OpenKeys(), 0u);
        }
    }

    static TvlString Path(const wchar_t* below) { return TvlString(kBase) + below; }
    static LONG Write(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes)
    {
        HKEY key = nullptr;
        IRegistry& registry = IRegistry::GetInstance();
        registry.RegOpenKeyExW(
            PREFUTILS::RegistryRoot(0x80000001), L"TvlUtlTest", 0, WUTLRegistry::kReadWriteAccess, &key);
        // A zero character follows, as every caller's text has one.
        std::vector<BYTE> padded = bytes;
        padded.resize(bytes.size() + sizeof(wchar_t));
        const LONG status =
            registry.RegSetValueExW(key, name, 0, type, padded.data(), static_cast<DWORD>(bytes.size()));
        registry.RegCloseKey(key);
        return status;
    }

    static constexpr const wchar_t* kBase = L"HKEY_CURRENT_USER\\TvlUtlTest";

private:
    std::unique_ptr<MemoryRegistry> m_memory;
};

INSTANTIATE_TEST_SUITE_P(Sides, RegistryTest, testing::Values(Side::System, Side::Memory),
    [](const auto& side) { return side.param == Side::System ? "System" : "Memory"; });

TEST_P(RegistryTest, RefusesUnknownRoots)
{
    EXPECT_EQ(WUTLRegistry::IsValid(nullptr), 0);
    for (const wchar_t* path : {L"hkey_current_user\\a", L"HKCU\\a", L"", L"HKEY_CURRENT_USER2", L"\\a"})
        EXPECT_EQ(WUTLRegistry::IsValid(path), 110) << path;
    EXPECT_EQ(WUTLRegistry::IsValid(L"HKEY_CURRENT_USER"), 0);
    EXPECT_EQ(WUTLRegistry::IsValid(L"HKEY_CURRENT_USER\\"), 0);
    EXPECT_EQ(WUTLRegistry::CreateKey(L"HKCU\\a", WUTLRegistry::kReadWriteAccess, 0), -1);
    EXPECT_EQ(WUTLRegistry::CreateKey(nullptr, WUTLRegistry::kReadWriteAccess, 0), -1);
    EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(L"HKEY_CURRENT_USER"), 5);
    EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(L"HKEY_CURRENT_USER\\"), 5);
    EXPECT_EQ(WUTLRegistry::DeleteRegistryKey(Path(L"\\absent").c_str()), 2);
}

TEST(MemoryRegistry, RefusesValuesThatItsStoresCannotCount)
{
    MemoryRegistry registry;
    HKEY key = nullptr;
    ASSERT_EQ(IRegistry::GetInstance().RegOpenKeyExW(
                  PREFUTILS::RegistryRoot(0x80000001), L"", 0, WUTLRegistry::kReadWriteAccess, &key),
        0);
    const BYTE byte = 1;   // the others are never looked at
    for (const DWORD size : {(256u << 20) + 1, 0x80000000u, 0x80000001u, 0xFFFFFFFFu})
        for (const DWORD type : {PREFUTILS::kRegistryBinary, PREFUTILS::kRegistryText})
            EXPECT_EQ(IRegistry::GetInstance().RegSetValueExW(key, L"n", 0, type, &byte, size),
                PREFUTILS::kRegistryInvalidParameter);
    IRegistry::GetInstance().RegCloseKey(key);
}

TEST_P(RegistryTest, KeepsTheHeldKeyWhenAnotherCannotBeOpened)
{
    WUTLRegistry key(kBase);
    EXPECT_EQ(key.OpenKey(Path(L"\\absent").c_str()), 2);
    EXPECT_EQ(key.OpenKey(nullptr), 2);
    TvlString location;
    EXPECT_EQ(key.GetCurrentKeyLocation(location), 1);
    EXPECT_EQ(location, kBase);
    EXPECT_EQ(key.SetValue(L"n", 7u), 0);
    EXPECT_EQ(key.IsValid(), 0);
    ASSERT_EQ(WUTLRegistry::DeleteRegistryKey(kBase), 0);
    EXPECT_EQ(key.IsValid(), 110);
}

TEST_P(RegistryTest, CreatesThroughAnEmptyObjectOnly)
{
    WUTLRegistry fresh(Path(L"\\A\\B").c_str(), WUTLRegistry::kReadAccess, 1);
    EXPECT_EQ(fresh.SetValue(L"v", L"written"), 0);   // opened anew for writing as well

    WUTLRegistry holding(kBase);
    EXPECT_EQ(holding.OpenKey(Path(L"\\C").c_str(), 1), 0);
    EXPECT_EQ(WUTLRegistry::IsValid(Path(L"\\C").c_str()), 0);
    // The key was made, and no key is held any more.
    ULONG value = 0;
    EXPECT_EQ(holding.GetValue(L"v", value), 6);
}

TEST_P(RegistryTest, RoundTripsValuesOfBothTypes)
{
    WUTLRegistry key(kBase);
    EXPECT_EQ(key.SetValue(L"Zahl", 0xFFFFFFFFu), 0);
    EXPECT_EQ(key.SetValue(L"Text", L"grün \U0001F58C"), 0);
    EXPECT_EQ(key.SetValue(L"leer", L""), 0);

    ULONG number = 0;
    EXPECT_EQ(key.GetValue(L"zAHL", number), 0);
    EXPECT_EQ(number, 0xFFFFFFFFu);
    TvlString text = L"before";
    EXPECT_EQ(key.GetValue(L"text", text), 0);
    EXPECT_EQ(text, L"grün \U0001F58C");
    EXPECT_EQ(key.GetValue(L"leer", text), 0);
    EXPECT_EQ(text, L"");
    EXPECT_EQ(key.GetValue(L"fehlt", text), 2);
    EXPECT_EQ(key.GetValue(L"Text", number), 234);

    EXPECT_EQ(key.DeleteRegistryValue(L"fehlt"), 2);
    EXPECT_EQ(key.DeleteRegistryValue(L"Text"), -1);   // deletion closed the key, though it failed
}

TEST_P(RegistryTest, EnumeratesUntilNoMoreItems)
{
    for (const wchar_t* name : {L"\\beta", L"\\Alpha", L"\\gamma"})
        ASSERT_EQ(WUTLRegistry::CreateKey(Path(name).c_str(), WUTLRegistry::kReadWriteAccess, 0), 0);
    WUTLRegistry key(kBase);
    key.SetValue(L"one", L"1");
    key.SetValue(L"two", 2u);

    std::set<std::wstring> names;
    TvlString name;
    ULONG index = 0;
    while (key.GetNextSubkey(name, index) == 0) {
        names.insert(name.Std());
        ++index;
    }
    EXPECT_EQ(key.GetNextSubkey(name, index), 259);
    EXPECT_THAT(names, ElementsAre(L"Alpha", L"beta", L"gamma"));

    ULONG number = 0;
    EXPECT_EQ(key.GetNextValue(name, number, 2), 259);
    for (index = 0; index < 2; ++index) {
        const LONG status = key.GetNextValue(name, number, index);
        if (name == L"two") {
            EXPECT_EQ(status, 0);
            EXPECT_EQ(number, 2u);
        }
    }

    TvlString data;
    std::set<std::wstring> values;
    for (index = 0; key.GetNextValue(name, index) == 0; ++index)
        values.insert(name.Std());
    EXPECT_THAT(values, ElementsAre(L"one", L"two"));
    EXPECT_EQ(key.GetNextValue(name, data, index), 259);
}

TEST_P(RegistryTest, ListsNamesAndCutsThemAtTheBuffersEnd)
{
    WUTLRegistry key(kBase);
    key.SetValue(L"abc", L"1");
    key.SetValue(L"defg", L"2");
    const std::wstring full(L"abc\0defg\0\0", 10);
    wchar_t buffer[16];

    for (ULONG size = 0; size <= 14; ++size) {
        std::fill(std::begin(buffer), std::end(buffer), L'#');
        key.GetValueNameList(buffer, size);
        EXPECT_EQ(buffer[size], L'#') << size;
        if (size >= 11) {
            EXPECT_EQ(std::wstring(buffer, 10), full) << size;
        } else if (size >= 2) {
            EXPECT_EQ(std::wstring(buffer + size - 2, 2), std::wstring(2, L'\0')) << size;
        }
    }
}

TEST_P(RegistryTest, WritesMissingDefaultsBack)
{
    const TvlString base = TvlString(kBase) + L"\\";
    EXPECT_EQ(WUTLRegistry::RegReadInt(L"S", L"n", -42, base.c_str()), -42);
    EXPECT_EQ(WUTLRegistry::RegReadInt(L"S", L"n", 5, base.c_str()), -42);
    ASSERT_EQ(WUTLRegistry::RegWriteString(L"S", L"n", L" 12abc", base.c_str()), 1);
    EXPECT_EQ(WUTLRegistry::RegReadInt(L"S", L"n", 5, base.c_str()), 12);
    ASSERT_EQ(WUTLRegistry::RegWriteString(L"S", L"n", L"none", base.c_str()), 1);
    EXPECT_EQ(WUTLRegistry::RegReadInt(L"S", L"n", 5, base.c_str()), 0);

    wchar_t buffer[8] = {};
    EXPECT_EQ(WUTLRegistry::RegReadString(L"S", L"t", L"abc", buffer, 7, base.c_str()), 3);
    EXPECT_STREQ(buffer, L"abc");
    EXPECT_EQ(WUTLRegistry::RegReadString(L"S", L"t", L"other", buffer, 7, base.c_str()), 3);
}

TEST_P(RegistryTest, ListsForANullSectionOrEntryAndWritesNothingForAnAbsentKey)
{
    ASSERT_EQ(WUTLRegistry::RegWriteString(L"\\Sub", L"v", L"x", kBase), 1);
    wchar_t buffer[12] = L"kept";
    EXPECT_EQ(WUTLRegistry::RegReadString(nullptr, L"v", L"d", buffer, 11, Path(L"\\absent").c_str()), 4);
    EXPECT_STREQ(buffer, L"kept");
    EXPECT_EQ(WUTLRegistry::RegReadString(nullptr, L"v", L"d", buffer, 11, kBase), 3);
    EXPECT_EQ(std::wstring(buffer, 5), std::wstring(L"Sub\0\0", 5));
    EXPECT_EQ(WUTLRegistry::RegReadString(L"\\Sub", nullptr, L"d", buffer, 11, kBase), 1);
    EXPECT_EQ(std::wstring(buffer, 3), std::wstring(L"v\0\0", 3));
}

TEST_P(RegistryTest, PutsTheEndMarkOfALongTextOnePlaceBehindTheSize)
{
    ASSERT_EQ(WUTLRegistry::RegWriteString(L"", L"t", L"abcd", kBase), 1);
    wchar_t buffer[6] = {L'#', L'#', L'#', L'#', L'#', L'#'};
    EXPECT_EQ(WUTLRegistry::RegReadString(L"", L"t", L"", buffer, 4, kBase), 4);
    EXPECT_EQ(std::wstring(buffer, 6), std::wstring(L"abc#\0#", 6));
}

TEST_P(RegistryTest, KeepsWhatABatchHasCommitted)
{
    PREFUTILS::RegistryBatch batch;
    WUTLRegistry(kBase).SetValue(L"outer", 1);
    {
        PREFUTILS::RegistryBatch inner;
        WUTLRegistry::CreateKey(Path(L"\\made\\below").c_str(), WUTLRegistry::kReadWriteAccess, 0);
        EXPECT_EQ(inner.Commit(), 0);
    }
    ULONG value = 0;
    EXPECT_EQ(WUTLRegistry(kBase).GetValue(L"outer", value), 0) << "a batch sees its own changes";
    EXPECT_EQ(batch.Commit(), 0);
    EXPECT_EQ(WUTLRegistry(kBase).GetValue(L"outer", value), 0);
    EXPECT_EQ(WUTLRegistry::IsValid(Path(L"\\made\\below").c_str()), 0);
}

TEST_P(RegistryTest, DeletesByNullAndReadsBinary)
{
    unsigned char data[] = {1, 2, 3};
    EXPECT_EQ(WUTLRegistry::RegWriteBinary(L"\\B", L"b", data, 3, kBase), 1);
    unsigned char read[4] = {};
    EXPECT_EQ(WUTLRegistry::RegReadBinary(L"\\B", L"b", read, 4, kBase), 3);
    EXPECT_EQ(read[2], 3);
    EXPECT_EQ(WUTLRegistry::RegReadBinary(L"\\B", L"b", read, 2, kBase), -1);
    EXPECT_EQ(WUTLRegistry::RegReadBinary(L"\\B", nullptr, read, 4, kBase), -1);
    EXPECT_EQ(WUTLRegistry::RegWriteBinary(L"\\B", L"b", nullptr, 0, kBase), 1);
    EXPECT_EQ(WUTLRegistry::RegReadBinary(L"\\B", L"b", read, 4, kBase), -1);

    EXPECT_EQ(WUTLRegistry::RegWriteString(L"\\B\\C\\D", L"x", L"y", kBase), 1);
    EXPECT_EQ(WUTLRegistry::RegWriteString(L"\\B", nullptr, nullptr, kBase), 1);
    EXPECT_EQ(WUTLRegistry::IsValid(Path(L"\\B").c_str()), 2);   // with all that lay below
    EXPECT_EQ(WUTLRegistry::RegWriteString(L"\\B", nullptr, nullptr, kBase), 0);
}

TEST_P(RegistryTest, LeavesAnOddByteAtTheEndAwayInEveryTextReader)
{
    std::vector<BYTE> bytes(2 * sizeof(wchar_t) + 1);
    for (const std::size_t at : {std::size_t{0}, sizeof(wchar_t), 2 * sizeof(wchar_t)})
        bytes[at] = 'A';
    ASSERT_EQ(Write(L"v", PREFUTILS::kRegistryBinary, bytes), 0);
    WUTLRegistry key(kBase);
    TvlString name;
    TvlString text;
    EXPECT_EQ(key.GetValue(L"v", text), 0);
    EXPECT_EQ(text, L"AA");
    EXPECT_EQ(key.GetNextValue(name, text, 0), 0);
    EXPECT_EQ(name, L"v");
    EXPECT_EQ(text, L"AA");
}

// Type, bytes of the value, and the text that a reader without a type check makes of it; -1 stands for any text.
TEST_P(RegistryTest, ReadsValuesOfEveryTypeAndOddSizesWithinTheBuffer)
{
    constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 5, 518, 519, 520, 521, 1040, 4000};
    constexpr ULONG kBuffers[] = {0, 1, 4, 259, 260, 261};
    for (const DWORD type : {0u, 1u, 2u, 3u, 4u, 7u, 11u, 99u}) {
        for (const std::size_t size : kSizes) {
            ASSERT_EQ(Write(L"v", type, std::vector<BYTE>(size, 'A')), 0) << type << " " << size;
            ULONG number = 0;
            TvlString text;
            WUTLRegistry key(kBase);
            key.GetValue(L"v", number);
            key.GetValue(L"v", text);
            EXPECT_LE(text.GetLength(), 260);
            for (const ULONG places : kBuffers) {
                std::vector<wchar_t> guarded(places + 3, L'#');
                guarded.push_back(L'\0');   // no place at all leaves the buffer as it is
                WUTLRegistry::RegReadString(L"", L"v", L"", guarded.data() + 1, places, kBase);
                EXPECT_EQ(guarded.front(), L'#');
                EXPECT_EQ(guarded[places + 2], L'#') << type << " " << size << " " << places;
            }
        }
    }
}

/// A row of registry-values.tsv: the type, bytes in hexadecimal or "x" and how many letters, and what is odd about them.
struct StoredValue {
    DWORD type = 0;
    std::vector<BYTE> bytes;
    std::optional<std::wstring> text;   // what readers of text make of it, where that is alike on every target
};

StoredValue ReadRow(const std::string& line)
{
    std::istringstream words(line);
    std::string number;
    std::string hex;
    std::getline(words, number, '\t');
    std::getline(words, hex, '\t');
    if (hex.starts_with('x')) {
        const std::size_t letters = std::stoul(hex.substr(1)) / 2;
        hex.clear();
        for (std::size_t i = 0; i < letters; ++i)
            hex += "4100";
    }
    StoredValue value{static_cast<DWORD>(std::stoul(number)), {}, {}};
    std::vector<BYTE> stored;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        stored.push_back(static_cast<BYTE>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    // Callers' text counts in this target's characters; numbers are bytes everywhere.
    const bool isText = value.type == 1 || value.type == 2 || value.type == 3 || value.type == 7;
    const std::wstring text = TvlPlatform::FromUtf16Le(stored.data(), stored.size());
    if (!isText) {
        value.bytes = stored;
        return value;
    }
    const auto* const begin = reinterpret_cast<const BYTE*>(text.data());
    value.bytes.assign(begin, begin + text.size() * sizeof(wchar_t));
    value.bytes.insert(value.bytes.end(), stored.end() - static_cast<std::ptrdiff_t>(stored.size() % 2), stored.end());
    if (text.size() < 260)
        value.text = text.substr(0, text.find(L'\0'));
    return value;
}

TEST_P(RegistryTest, ReadsOddValuesAsTextWithinTheBuffer)
{
    std::ifstream rows(REGISTRY_VALUES);
    std::string line;
    std::getline(rows, line);   // the heading
    int count = 0;
    for (; std::getline(rows, line); ++count) {
        const StoredValue value = ReadRow(line);
        ASSERT_EQ(Write(L"v", value.type, value.bytes), 0) << line;
        TvlString text;
        const bool isRead = WUTLRegistry(kBase).GetValue(L"v", text) == 0;
        EXPECT_TRUE(!isRead || !value.text || text == *value.text) << line << " is " << TvlPlatform::ToUtf8(text);
        WUTLRegistry::RegReadInt(L"", L"v", 7, kBase);
        for (const ULONG places : {0, 1, 4, 259, 260, 261}) {
            std::vector<wchar_t> guarded(places + 4, L'#');
            guarded.back() = L'\0';
            WUTLRegistry::RegReadString(L"", L"v", L"", guarded.data() + 1, places, kBase);
            EXPECT_EQ(guarded.front(), L'#') << line;
            EXPECT_EQ(guarded[places + 2], L'#') << line << " into " << places;
        }
    }
    EXPECT_EQ(count, 20);
}

TEST_P(RegistryTest, TellsADeletedKeyAndRightsThatAreMissing)
{
    WUTLRegistry reader(kBase, WUTLRegistry::kReadAccess);
    EXPECT_EQ(reader.SetValue(L"v", 1u), 5);
    WUTLRegistry doomed(Path(L"\\doomed").c_str(), WUTLRegistry::kReadWriteAccess, 1);
    ASSERT_EQ(WUTLRegistry::DeleteRegistryKey(Path(L"\\doomed").c_str()), 0);
    TvlString text;
    EXPECT_EQ(doomed.GetValue(L"v", text), 1018);
    EXPECT_EQ(doomed.SetValue(L"v", 1u), 1018);
}

}   // namespace
