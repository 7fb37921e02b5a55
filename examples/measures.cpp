// A numeric field: evaluates what was typed, keeps it in the base unit, shows it again and takes a step.
#include "SmartValue.h"
#include "Units.h"
#include "WEqParser.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <iostream>

int main()
{
    constexpr int kInch = 1;
    constexpr int kMillimetre = 2;
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const wchar_t* const typed : {L"5in + 3mm", L"3 1/2\"", L"2 * (3 + 4"}) {
        std::cout << TvlPlatform::ToUtf8(typed) << " -> ";
        constexpr unsigned kFlags = kTokensAll | kTokensUnits;
        double value = 0.0;
        if (units.StringToValue(kMillimetre, typed, value, kFlags, DRG::Degrees)) {
            const TvlString text = units.DisplayUnitValueAsString(kMillimetre, value, kUnitTextFirstName, -1);
            std::cout << TvlPlatform::ToUtf8(text) << '\n';
        } else {
            const WParseDiagnosis wrong = units.DiagnoseText(kMillimetre, typed, kFlags, DRG::Degrees);
            std::cout << TvlPlatform::ToUtf8(DescribeParseProblem(wrong.problem)) << " at " << wrong.position << '\n';
        }
    }

    // Documents keep tenths of a micron.
    double width = UNITConvertUnitToBase(kInch, 0.0, 8.5);
    std::cout << "8.5 in are " << static_cast<long long>(width) << " tenths of a micron\n";
    UNITIncAndConvValue(kInch, &width, 0, 1, 1, 0.0, 1.0);
    std::cout << "a small step up: " << UNITConvertBaseToUnit(kInch, 0.0, width) << " in\n";

    // A default that is round in every unit.
    WUnitValuePair margins;
    margins.LoadFromString(L"0.5in;12mm");
    WSmartUnitValue margin;
    margin.SetValues(margins);
    std::cout << "the margin of 0.5 in is " << margin.GetValueForUnit(kMillimetre, kInch, 0.5, 0.0) << " mm\n";
}
