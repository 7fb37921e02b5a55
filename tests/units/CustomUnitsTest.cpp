// Units that users define: their records, their file, and conversion by way of their bases.
#include "siblings/TvlConfig/CustomUnits.h"
#include "CustomUnitRecord.h"
#include "FakeLocale.h"
#include "TemporaryUserFolder.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr const char* kFile = "CustomUnits.txt";
constexpr const char* kFormat = "TvlCustomUnits 1\n";

class CustomUnits : public testing::Test {
protected:
    void TearDown() override
    {
        while (m_clients > 0)
            End();
    }
    void Begin(const std::string& records)
    {
        folder.Write(kFile, kFormat + records);
        Begin();
    }
    void Begin()
    {
        ASSERT_EQ(UNITCustomInitialize(), 1);
        ++m_clients;
    }
    void End()
    {
        EXPECT_EQ(UNITCustomUnInitialize(), 1);
        --m_clients;
    }
    std::string Records() const
    {
        const std::string bytes = folder.Read(kFile);
        EXPECT_TRUE(bytes.starts_with(kFormat)) << bytes;
        return bytes.substr(std::min(bytes.size(), std::string(kFormat).size()));
    }
    static std::vector<int> CustomIds()
    {
        std::vector<int> ids;
        const int* id = UNITGetUnitArray(kUnitArrayAll);
        for (id += 15; *id != -1; ++id)
            ids.push_back(*id);
        return ids;
    }
    static double ToBase(unsigned unit, double value) { return UNITConvertUnitToBase(unit, 0.0, value); }
    static double FromBase(unsigned unit, double value) { return UNITConvertBaseToUnit(unit, 0.0, value); }

    TemporaryUserFolder folder;

private:
    int m_clients = 0;
};

TEST(CustomUnitRecord, ReadsFieldsAndDefaults)
{
    const auto full = ReadCustomUnitRecord(L"a,b,c,d,2.5,2,0.1,0.5,1,4\n");
    ASSERT_TRUE(full);
    EXPECT_EQ(CustomUnitName(full->secondName), L"b");
    EXPECT_EQ(full->factor, 2.5);
    EXPECT_EQ(full->baseUnit, 2);
    EXPECT_THAT(full->increments, ElementsAre(0.1, 0.5, 1.0));
    EXPECT_EQ(full->decimals, 4);
    EXPECT_EQ(WriteCustomUnitRecord(*full), L"a,b,c,d,2.500000,2,0.100000,0.500000,1.000000,4");

    const auto least = ReadCustomUnitRecord(L"a,b,c,d,2.5");
    ASSERT_TRUE(least);
    EXPECT_EQ(least->baseUnit, 1);
    EXPECT_THAT(least->increments, ElementsAre(0.0, 0.0, 0.0));
    EXPECT_EQ(least->decimals, 0);

    EXPECT_EQ(ReadCustomUnitRecord(L",,a,,b\nc,d,,3,2")->factor, 3.0);   // empty fields do not count
    for (const wchar_t* const refused : {L"", L",,,", L"a,b,c,d", L"a,b,c,d,0,1,1,2,3,2", L"a,b,c,d,x"})
        EXPECT_FALSE(ReadCustomUnitRecord(refused)) << TvlPlatform::ToUtf8(refused);
}

TEST(CustomUnitRecord, KeepsWhatIsOutOfRangeInItsBounds)
{
    const auto base = [](const wchar_t* text) { return ReadCustomUnitRecord(text)->baseUnit; };
    EXPECT_EQ(base(L"a,b,c,d,1,99999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(base(L"a,b,c,d,1,-99999999999"), std::numeric_limits<int>::min());
    EXPECT_EQ(base(L"a,b,c,d,1, 7x"), 7);
    EXPECT_TRUE(std::isnan(ReadCustomUnitRecord(L"a,b,c,d,nan,1")->factor));
    EXPECT_TRUE(std::isinf(ReadCustomUnitRecord(L"a,b,c,d,inf,1")->factor));
    EXPECT_TRUE(std::isinf(ReadCustomUnitRecord(L"a,b,c,d,1e999,1")->factor));
    constexpr std::pair<const wchar_t*, double> kFactors[] = {{L" +2.5x", 2.5},
        {L"-INFINITY", -std::numeric_limits<double>::infinity()}, {L"0x1.8p+1", 3.0}, {L"-0XA", -10.0},
        {L"4e-324", std::numeric_limits<double>::denorm_min()},
        // Half way between two numbers but for the last digit: a longer type in between would round twice.
        {L"1.00000000000000011102230246251565404236316680908203126", 1.0 + std::numeric_limits<double>::epsilon()}};
    for (const auto& [text, factor] : kFactors)
        EXPECT_EQ(ReadCustomUnitRecord(std::wstring(L"a,b,c,d,") + text)->factor, factor) << TvlPlatform::ToUtf8(text);

    const std::wstring longName(60, L'n');
    const auto cut = ReadCustomUnitRecord(longName + L"," + longName + L"," + longName + L"," + longName + L",2");
    ASSERT_TRUE(cut);
    EXPECT_EQ(CustomUnitName(cut->firstName), longName.substr(0, 20));
    EXPECT_EQ(CustomUnitName(cut->secondName), longName.substr(0, 22));
    EXPECT_EQ(WriteCustomUnitRecord(*cut).Find(L",nnnnnnnnnnnnnnnnnnnn,2.000000,1,"), 20 + 1 + 22 + 1 + 20);

    // The factor stands behind the 255 characters that count.
    EXPECT_FALSE(ReadCustomUnitRecord(L"a,b,c," + std::wstring(300, L'd') + L",2"));
    EXPECT_EQ(WriteCustomUnitRecord(*ReadCustomUnitRecord(L"a,b,c,d,1e300,1,1e300")).GetLength(), 255);
    EXPECT_FALSE(ReadCustomUnitRecord(std::wstring_view(L"a,b,c,\0d,2", 10)));
    std::wstring fields;
    for (int i = 0; i < 10'000; ++i)
        fields += L"1,";
    EXPECT_EQ(ReadCustomUnitRecord(fields)->decimals, 1);
}

TEST_F(CustomUnits, AreReadAndWrittenBack)
{
    Begin("fur,furlong,furlongs,f,220,16,0.1,0.5,1,3\r\nchain,chain,chains,c,0.1,42\n");
    EXPECT_THAT(CustomIds(), ElementsAre(42, 43));
    EXPECT_EQ(UNITConvertUnitToUnit(16, 42, 0.0, 2.0), 440.0);
    EXPECT_EQ(ToBase(43, 3.0), 3.0 * 9144000.0 * 220.0 * 0.1);   // by way of the other
    EXPECT_EQ(FromBase(43, 9144000.0), 9144000.0 / 9144000.0 / 220.0 / 0.1);
    EXPECT_EQ(UNITCustomUnitMappedUsing(42), 16);
    EXPECT_EQ(UNITCustomUnitMappedUsing(43), 42);
    EXPECT_EQ(UNITGetDefDecimalPrecision(42), 3u);
    EXPECT_EQ(UNITGetIncrement(42, 1, 0), 0.5);   // without a direction
    EXPECT_EQ(UNITGetIncrement(42, 3, 1), 1.0);
    EXPECT_EQ(UNITGetAutoIncrement(1, 0.3, 42, 2, 0), 1.0);
    EXPECT_EQ(UNITGetUnitAsString(42, kUnitNameSecond), L"furlong");
    EXPECT_EQ(UNITGetUnitAsString(42, kUnitNameThird), L"fu");   // two characters
    EXPECT_EQ(UNITGetUnitAsString(42, kUnitNameFirst), L"fur");
    double first = 0.0;
    double second = 0.0;
    UNITGetGridFreqLimits(42, &first, &second, 7);
    EXPECT_EQ(first, 200.0);
    EXPECT_EQ(second, 0.005);
    {
        FakeLocale locale;
        EXPECT_EQ(UNITConvToUnitString(9144000.0 * 330.0, 42, 0.0), L"1.500");
        EXPECT_EQ(UNITConvToUnitString(9144000.0 * 330.0 * -0.0001, 42, 0.0), L"0.000");
        wchar_t separator[4] = {};
        EXPECT_EQ(UNITGetSeparatorString(43, separator), 1u);
        EXPECT_STREQ(separator, L".");
    }
    End();
    EXPECT_EQ(Records(),
        "fur,furlong,furlongs,f,220.000000,16,0.100000,0.500000,1.000000,3\n"
        "chain,chain,chains,c,0.100000,42,0.000000,0.000000,0.000000,0\n");
}

TEST_F(CustomUnits, AreValidUpToOnePlacePastTheEnd)
{
    Begin("a,b,c,d,2.0,2\n");
    EXPECT_EQ(UNITIsValidCustomUnit(41), 0);
    EXPECT_EQ(UNITIsValidCustomUnit(42), 1);
    EXPECT_EQ(UNITIsValidCustomUnit(43), 1);
    EXPECT_EQ(UNITIsValidCustomUnit(44), 0);
    EXPECT_EQ(UNITIsValidCustomUnit(std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(UNITIsValidCustomUnit(std::numeric_limits<int>::min()), 0);
    // A unit of zeros answers there.
    EXPECT_EQ(ToBase(43, 5.0), 0.0);
    EXPECT_EQ(UNITCustomUnitMappedUsing(43), 0);
    EXPECT_EQ(UNITGetIncrement(43, 0, 1), 0.0);
    EXPECT_EQ(UNITGetUnitAsString(43, kUnitNameFirst), L"");
    for (const int none : {0, 40, 41, 44, -1})
        EXPECT_EQ(UNITCustomUnitMappedUsing(none), 0) << none;
    EXPECT_EQ(UNITCustomUnitMappedUsing(39), 39);
}

TEST_F(CustomUnits, CountTheirClients)
{
    Begin("a,b,c,d,2.0,2\n");
    Begin();
    End();
    EXPECT_EQ(ToBase(42, 1.0), 20000.0);
    End();
    // None are left.
    EXPECT_EQ(UNITGetUnitArray(kUnitArrayAll), nullptr);
    EXPECT_EQ(ToBase(42, 1.0), 0.0);
    EXPECT_EQ(FromBase(42, 1.0), 0.0);
    EXPECT_EQ(UNITCustomUnInitialize(), 1);   // one too many
    folder.Write(kFile, std::string(kFormat) + "a,b,c,d,3.0,2\n");
    Begin();
    EXPECT_THAT(CustomIds(), ElementsAre(42));
    EXPECT_EQ(ToBase(42, 1.0), 30000.0);
}

TEST_F(CustomUnits, LoseSmallFactorsAtTheNextStart)
{
    Begin("a,b,c,d,1e-9,1\n");
    EXPECT_EQ(ToBase(42, 1e9), 254000.0 * 1e9 * 1e-9);
    End();
    Begin();
    EXPECT_TRUE(CustomIds().empty());
}

TEST_F(CustomUnits, WithBasesThatLeadRoundAreNothing)
{
    struct Row {
        const char* records;
        unsigned unit;
    };
    constexpr Row kRows[] = {
        {"a,b,c,d,2.0,42\n", 42}, {"a,b,c,d,2.0,43\na,b,c,d,2.0,42\n", 42}, {"a,b,c,d,2.0,43\na,b,c,d,2.0,42\n", 43},
        {"a,b,c,d,2.0,1\na,b,c,d,2.0,43\n", 43}, {"a,b,c,d,2.0,43\n", 42},   // the place past the end
        {"a,b,c,d,2.0,2147483647\n", 42}, {"a,b,c,d,2.0,-1\n", 42},
        {"a,b,c,d,2.0,32\n", 42},   // WUnit alone converts it
    };
    for (const auto& [records, unit] : kRows) {
        Begin(records);
        EXPECT_EQ(ToBase(unit, 1.0), 0.0) << records;
        EXPECT_EQ(FromBase(unit, 1.0), 0.0) << records;
        End();
    }
    std::string chain;
    for (int i = 0; i < 63; ++i)
        chain += "a,b,c,d,0.5," + std::to_string(43 + i) + "\n";
    Begin(chain + "a,b,c,d,1,2\n");
    EXPECT_EQ(ToBase(42, 1.0), std::ldexp(10000.0, -63));   // as long as a chain can be
    EXPECT_EQ(FromBase(42, 10000.0), std::ldexp(1.0, 63));
}

TEST_F(CustomUnits, AreAsManyAsThereMayBe)
{
    std::string records;
    for (int i = 0; i < 100; ++i)
        records += i % 2 ? "a,b,c\n" : "a,b,c,d," + std::to_string(1 + i / 2) + "\n";
    for (int i = 0; i < 50; ++i)
        records += "a,b,c,d,99\n";
    Begin(records);
    const auto most = static_cast<std::size_t>(INIGetMaxNoOfCustomUnit());
    ASSERT_EQ(CustomIds().size(), most);
    EXPECT_EQ(ToBase(43, 1.0), 254000.0 * 2.0);   // records that are no units leave no gap
    EXPECT_EQ(ToBase(41 + static_cast<unsigned>(most), 1.0), 254000.0 * 99.0);
}

TEST_F(CustomUnits, SurviveHostileFiles)
{
    std::string fields;
    for (int i = 0; i < 10'000; ++i)
        fields += "1,";
    const std::string names = std::string(60, 'a') + "," + std::string(60, 'b') + ",c";
    Begin(fields + "\n" + std::string(1 << 19, 'x') + "\n" + names + "\na\xFF,b\xC3,c,d,nan,1\n\0,\n");
    EXPECT_THAT(CustomIds(), ElementsAre(42, 43));
    EXPECT_EQ(ToBase(42, 3.0), 3.0 * 254000.0);
    EXPECT_TRUE(std::isnan(ToBase(43, 3.0)));
    End();

    // Files of another version, and those that are too long, are left alone.
    constexpr std::size_t kMostLines = 1024;
    constexpr std::size_t kMostBytes = 1 << 20;
    const std::string unit = kFormat + std::string("a,b,c,d,2\n");
    for (const std::string& other : {std::string("TvlCustomUnits 2\na,b,c,d,2\n"), unit + std::string(kMostLines, '\n'),
             kFormat + std::string(kMostBytes, '\n'), unit + std::string(kMostBytes, 'x')}) {
        folder.Write(kFile, other);
        Begin();
        EXPECT_TRUE(CustomIds().empty());
        End();
        EXPECT_TRUE(folder.Read(kFile) == other);
        wchar_t record[kCustomUnitTextSize] = L"a,b,c,d,2";
        EXPECT_EQ(INISetCustomUnit(0, record), 0);
        EXPECT_TRUE(folder.Read(kFile) == other);
    }
    for (const std::string& longest : {unit + std::string(kMostLines - 2, '\n'),
             unit + std::string(kMostLines - 3, '\n') + 'x', unit + std::string(kMostBytes - unit.size(), 'x')}) {
        folder.Write(kFile, longest);
        Begin();
        EXPECT_THAT(CustomIds(), ElementsAre(42));
        End();
    }
}

TEST_F(CustomUnits, KeepTheirRecords)
{
    const std::string a20(20, 'a');
    const std::string b22(22, 'b');
    const std::string c20(20, 'c');
    const std::string d20(20, 'd');
    const std::string names = a20 + "," + b22 + "," + c20 + "," + d20;
    struct Row {
        std::string record;
        std::string kept;   // after one start and end; the record itself for what is passed over
    };
    const Row kRows[] = {
        {"a,b,c,d", "a,b,c,d"},
        {"a,b,c,d,0", "a,b,c,d,0"},
        {",,,,2.0,1", ",,,,2.0,1"},
        {"%s,%n,%d,%x,1.0,1", "%s,%n,%d,%x,1.000000,1,0.000000,0.000000,0.000000,0"},
        {names + ",1.5,1", names + ",1.500000,1,0.000000,0.000000,0.000000,0"},
        {a20 + "a," + b22 + "b," + c20 + "c," + d20 + "d,1.5", names + ",1.500000,1,0.000000,0.000000,0.000000,0"},
        {"a,b,c,d,2,-1,1e1,x,-.5,-3", "a,b,c,d,2.000000,-1,10.000000,0.000000,-0.500000,-3"},
        {"a,b,c,d,nan,1", "a,b,c,d,nan,1,0.000000,0.000000,0.000000,0"},
        {"a,b,c,d,1e999,1", "a,b,c,d,inf,1,0.000000,0.000000,0.000000,0"},
        {"a,b,c,d,2.0,2147483647", "a,b,c,d,2.000000,2147483647,0.000000,0.000000,0.000000,0"},
    };
    for (const auto& [record, kept] : kRows) {
        Begin(record + "\n");
        End();
        EXPECT_EQ(Records(), kept + "\n");
    }
    // A number of 301 digits leaves no room for the rest.
    Begin("a,b,c,d,1e300,1,1e300,1e300,1e300,9\n");
    EXPECT_EQ(ToBase(42, 2.0), 2.0 * 254000.0 * 1e300);
    End();
    EXPECT_EQ(Records().size(), 255u + 1u);
}

TEST_F(CustomUnits, AreKeptOneALine)
{
    wchar_t text[kCustomUnitTextSize] = L"\u00E4,b,c,d,2";
    EXPECT_EQ(INISetCustomUnit(1, text), 1);
    EXPECT_EQ(Records(), "\n\xC3\xA4,b,c,d,2\n");
    wchar_t read[kCustomUnitTextSize] = {};
    EXPECT_EQ(INIGetCustomUnit(0, read, nullptr), 0);
    EXPECT_EQ(INIGetCustomUnit(1, read, nullptr), 1);
    EXPECT_STREQ(read, text);
    wchar_t none[kCustomUnitTextSize] = {};
    EXPECT_EQ(INISetCustomUnit(1, none), 1);
    EXPECT_EQ(Records(), "");
    wchar_t broken[kCustomUnitTextSize] = L"a\nb";
    EXPECT_EQ(INISetCustomUnit(0, broken), 0);
    EXPECT_EQ(INISetCustomUnit(INIGetMaxNoOfCustomUnit(), text), 0);
    EXPECT_EQ(INISetCustomUnit(-1, text), 0);
    EXPECT_EQ(INIGetCustomUnit(-1, read, nullptr), 0);
}

}   // namespace
