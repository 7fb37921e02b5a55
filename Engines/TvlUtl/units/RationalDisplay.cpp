// Displays that show fractions.
#include "WUnit.h"

#include "siblings/TvlResources/Resources.h"

#include <cmath>
#include <iterator>

namespace {
constexpr const wchar_t* kFractionsKey = L"a3e902fe-a5c9-4ffe-904e-b3c783b557e5";
}

WUnitRationalBase2::WUnitRationalBase2()
    : m_denominators(m_denominatorValues), m_denominatorCount(static_cast<std::int32_t>(std::size(m_denominatorValues)))
{
    for (int k = 0; k < m_denominatorCount; ++k)
        m_denominatorValues[k] = 2 * static_cast<std::int32_t>(std::pow(2.0, k));
}

TvlString WUnitRationalBase2::FormatLastPart(double value, unsigned form, int) const
{
    const double finest = 1.0 / m_denominators[m_denominatorCount - 1];
    double whole = std::floor(value);
    const double fraction = value - whole;
    double numerator = 0.0;
    double denominator = 0.0;
    if (const double rounded = std::floor(fraction + 0.5); finest * 0.5 >= std::fabs(fraction - rounded)) {
        whole += rounded;
    } else {
        // The coarsest that is near enough, so that a fraction is in lowest terms by itself.
        for (int i = 0; i < m_denominatorCount; ++i) {
            denominator = m_denominators[i];
            numerator = std::floor(denominator * fraction + 0.5);
            if (std::fabs(fraction - numerator / denominator) <= finest * 0.5)
                break;
        }
    }
    TvlString text;
    if (numerator == 0.0 || denominator == 0.0)
        text.Format(L"%0.0f", whole);
    else if (whole == 0.0)
        text.Format(L"%0.0f/%0.0f", numerator, denominator);
    else
        text.Format(L"%0.0f %0.0f/%0.0f", whole, numerator, denominator);
    if (form != kUnitTextNumber && form != kUnitTextSymbol)
        text += L' ';
    return text + Definition(m_definitions.size() - 1).GetNameText(form);
}

TvlString WUnitRationalInch::GetDisplayString(unsigned form) const
{
    return GetUnitString(form) + Framework::Resources::GetString(kFractionsKey);
}
