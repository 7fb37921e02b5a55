#include "MeasureText.h"

#include "WRegionalSupportFormat.h"
#include "WUnit.h"
#include "windows/Locale.h"

#include <cmath>

namespace {
constexpr std::size_t kSeparatorCapacity = 16;

struct SameMeasure {
    int display;
    int measure;
};

// Picas and ciceros, which the procedural functions know by the ids of their chains with points and didots.
constexpr SameMeasure kSameMeasures[] = {{24, 3}, {25, 12}, {35, 12}, {36, 3}};

bool ShowsFractions(int id) { return id == 31 || id == 33 || id == 34; }
}   // namespace

int ProceduralUnit(int display)
{
    for (const auto& [same, measure] : kSameMeasures)
        if (same == display)
            return measure;
    return display;
}

TvlString RegionalText(WUnit& units, int id, double value, unsigned form, int decimals)
{
    units.GetUnitString(id, form);   // loads every part of a chain
    TvlString text = units.DisplayUnitValueAsString(id, value, form, decimals);
    if (!std::isfinite(value) || ShowsFractions(id) || units.GetNumberOfUnitInCollection(id) != 1)
        return text;
    // Numbers are formatted with a point; the regional form wants the region's own separator.
    const auto separator = Ports::Locale::Get().Setting(Ports::LocaleSetting::DecimalSeparator, kSeparatorCapacity);
    if (const int point = text.Find(L'.'); point >= 0 && separator && !separator->empty()) {
        const bool isLast = point + 1 == text.GetLength() || text.GetAt(point + 1) == L' ';
        text = text.Left(point) + (isLast ? TvlString() : TvlString(*separator)) + text.Mid(point + 1);
    }
    WRegionalSupportFormat().GetValueInLocaleFormat(text, text);
    return text;
}
