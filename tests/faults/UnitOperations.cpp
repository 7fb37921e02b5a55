// Measures as objects, and by id. The text functions by id throw nothing: without memory their text is empty.
#include "FakeLocale.h"
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "Units.h"
#include "WEqParser.h"
#include "WRegionalSupportFormat.h"
#include "WUnit.h"
#include "siblings/TvlConfig/CustomUnits.h"

#include <cmath>
#include <cwchar>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace {
constexpr int kMillimetre = 2;
constexpr int kYard = 16;

// An optional ends its object as what it is: WUnit's own destructor is not virtual.
struct UnitAlone final : WUnit { };

/// The digits of a number's text, in whatever region, but for zeros before it.
std::wstring DigitsOf(std::wstring_view text)
{
    std::wstring digits;
    for (const wchar_t c : text)
        if (c >= L'0' && c <= L'9' && (c != L'0' || !digits.empty()))
            digits += c;
    return digits;
}

/// Whether it is the wanted text, or that of another region where the user has moved.
bool IsTextOf(const TvlString& text, const wchar_t* wanted, const HeapRun& outcome)
{
    return text == wanted || (outcome.hasMoved && DigitsOf(text) == DigitsOf(wanted));
}

struct Units {
    FakeLocale locale;
    std::optional<UnitAlone> unit;
    TvlString text;
    double value = 0.0;
    int result = 0;

    void Expect(const wchar_t* wanted, const HeapRun& outcome)
    {
        EXPECT_TRUE(IsTextOf(text, wanted, outcome) || outcome.hasFailed) << text.c_str();
        text = L"";
    }
    static bool HasNoText(Units& units) { return units.text.IsEmpty(); }
};

/// A set of the run's own, filled before.
struct OwnUnits : Units {
    OwnUnits()
    {
        unit.emplace();
        unit->LoadDefaults(nullptr, 0);
    }
};

struct CustomUnits {
    CustomUnits() { world.Put("user/CustomUnits.txt", kFile); }
    ~CustomUnits() { EndAll(); }

    void EndAll()
    {
        for (; clients > 0; --clients)
            UNITCustomUnInitialize();
    }
    static constexpr const char* kFile = "TvlCustomUnits 1\na,b,c,d,2.000000,2,0.000000,0.000000,0.000000,0\n";

    FaultWorld world;
    int clients = 0;
    int result = 0;
};
}   // namespace

HeapOperations UnitOperations()
{
    return {
        Row<Units>(
            "LoadDefaults",
            [](Units& units) {
                units.result = 0;
                units.unit.emplace();
                units.result = units.unit->LoadDefaults(nullptr, 0);
            },
            [](Units& units, const HeapRun& outcome) { EXPECT_TRUE(units.result == 1 || outcome.hasFailed); }),
        Row<OwnUnits>(
            "DisplayUnitValueAsString",
            [](OwnUnits& units) {
                units.text = units.unit->DisplayUnitValueAsString(kYard, 5.75, kUnitTextThirdName, -1);
            },
            [](OwnUnits& units, const HeapRun& outcome) { units.Expect(L"5.75 yards", outcome); }),
        Row<OwnUnits>(
            "StringToValue",
            [](OwnUnits& units) {
                units.result = units.unit->StringToValue(
                    kMillimetre, L"2 inches + 3 * (4 mm - 1)", units.value, kTokensAll | kTokensUnits, DRG::Radians);
            },
            [](OwnUnits& units, const HeapRun& outcome) {
                EXPECT_TRUE((units.result == 1 && std::abs(units.value - 59.8) < 1e-9) || outcome.hasFailed);
                units.result = 0;
            }),
        Row<OwnUnits>(
            "AddUnitDefinition",
            [](OwnUnits& units) {
                auto definition = std::make_unique<WUntiDef>();
                units.result = units.unit->AddUnitDefinition(
                    definition.get(), 2, 1, 1, 1, L"a name of some length", L"", L"", L"", 2.0);
                static_cast<void>(definition.release());
            },
            [](OwnUnits& units, const HeapRun& outcome) {
                EXPECT_EQ(units.unit->ConvertFromUnitToUnit(1, kMillimetre, 1.0, 1.0), 25.4);
                EXPECT_TRUE(units.result >= 42 || outcome.hasFailed) << units.result;
                units.result = -1;
            }),
        Row<Units>(
            "AddUnitDisplay",
            [](Units& units) {
                if (!units.unit)
                    units.unit.emplace();
                units.result = units.unit->AddUnitDisplay(kYard);
            },
            [](Units& units, const HeapRun& outcome) {
                EXPECT_TRUE(units.result == kYard || outcome.hasFailed);
                // A display that is there is whole.
                EXPECT_TRUE(units.result != kYard || units.unit->GetNumberOfUnitInCollection(kYard) > 0);
                units.result = 0;
            }),
        Row<Units>(
            "GetValueInLocaleFormat",
            [](Units& units) {
                WRegionalSupportFormat format;
                units.result = format.GetValueInLocaleFormat(L"1234567.5 millimetres", units.text);
            },
            [](Units& units, const HeapRun& outcome) { units.Expect(L"1,234,567.5 millimetres", outcome); }),
    };
}

HeapOperations ProceduralUnitOperations()
{
    return {
        Row<Units>(
            "UNITConvToUnitAndStringEx",
            [](Units& units) { units.text = UNITConvToUnitAndStringEx(123456789.0, kMillimetre, 0.0, 3, 0, 1); },
            [](Units& units, const HeapRun& outcome) {
                // Without some setting of the region the digits are there all the same.
                EXPECT_TRUE(IsTextOf(units.text, L"12,345.679", outcome)
                    || (outcome.hasFailed && (units.text.IsEmpty() || units.text.Find(L"12") == 0)))
                    << units.text.c_str();
                units.text = L"";
            },
            Units::HasNoText),
        Row<Units>(
            "UNITPreciseConvToUnitAndString",
            [](Units& units) { units.text = UNITPreciseConvToUnitAndString(0.123456789, kMillimetre, 0.0, 2, 0); },
            [](Units& units, const HeapRun& outcome) { units.Expect(L"0.000012", outcome); }, Units::HasNoText),
        Row<Units>(
            "UNITGetUnitAsString", [](Units& units) { units.text = UNITGetUnitAsString(kMillimetre, kUnitNameThird); },
            [](Units& units, const HeapRun& outcome) { units.Expect(L"millimeters", outcome); }, Units::HasNoText),
        // The file belongs to the configuration: its own failures end in units that are not there.
        Row<CustomUnits>(
            "UNITCustomInitialize",
            [](CustomUnits& units) {
                units.EndAll();
                ++units.clients;
                units.result = UNITCustomInitialize();
            },
            [](CustomUnits& units, const HeapRun& outcome) {
                EXPECT_TRUE(outcome.hasFailed || (units.result == 1 && UNITConvertUnitToBase(42, 0.0, 1.0) == 20000.0));
                units.EndAll();
                EXPECT_EQ(UNITGetUnitArray(kUnitArrayAll), nullptr);
                EXPECT_EQ(units.world.Get("user/CustomUnits.txt"), CustomUnits::kFile);
            },
            [](CustomUnits& units) { return units.result == 0 || UNITConvertUnitToBase(42, 0.0, 1.0) == 0.0; }),
        Row<CustomUnits>(
            "INISetCustomUnit",
            [](CustomUnits& units) {
                wchar_t record[kCustomUnitTextSize] = L"e,f,g,h,3.000000,2,0.000000,0.000000,0.000000,0";
                units.result = INISetCustomUnit(1, record);
            },
            [](CustomUnits& units, const HeapRun& outcome) {
                const std::string bytes = units.world.Get("user/CustomUnits.txt").value_or("none");
                EXPECT_TRUE(bytes.find("\ne,f,") != bytes.npos || (outcome.hasFailed && bytes == CustomUnits::kFile));
                EXPECT_EQ(bytes.find(CustomUnits::kFile), 0u) << "the unit that was there";
                EXPECT_EQ(units.result == 0, outcome.hasFailed);
                units.result = 0;
            },
            [](CustomUnits& units) { return units.result == 0; }),
        Row<CustomUnits>(
            "INIGetCustomUnit",
            [](CustomUnits& units) {
                wchar_t record[kCustomUnitTextSize] = {};
                units.result = INIGetCustomUnit(0, record, nullptr) == 1 && std::wcsncmp(record, L"a,b,c,d", 7) == 0;
            },
            [](CustomUnits& units, const HeapRun& outcome) {
                EXPECT_TRUE(units.result == 1 || outcome.hasFailed);
                units.result = 0;
            },
            [](CustomUnits& units) { return units.result == 0; }),
    };
}
