// Sizes as text, and what the user's locale says of papers.
#include "PaperTypes.h"
#include "Units.h"

#include "windows/Locale.h"

#include <optional>

namespace {
constexpr int kInch = 1;
constexpr std::size_t kSettingCapacity = 10;

/// A setting of the user's locale that is an integer.
std::optional<long> NumberSetting(Ports::LocaleSetting setting)
{
    const auto text = Ports::Locale::Get().Setting(setting, kSettingCapacity);
    return text ? std::optional(std::wcstol(text->c_str(), nullptr, 10)) : std::nullopt;
}
}   // namespace

TvlString TvlUtl::GetDimensionsString(double width, double height, int units, int resolutionX, int resolutionY)
{
    const auto unit = static_cast<unsigned>(units);
    TvlString name = UNITGetUnitAsString(units, kUnitNameThird);
    if (units == kInch)
        name += L'.';
    return TvlString().Format(L"%g \u00D7 %g %s", UNITConvertBaseToUnit(unit, resolutionX, width),
        UNITConvertBaseToUnit(unit, resolutionY, height), name.Std());
}

TvlString TvlUtl::GetPageDimensions(const PaperTypeInformation& paper)
{
    if (paper.Type == kPaperNone)
        return {};
    return GetDimensionsString(paper.Width, paper.Height, paper.Units, paper.ResolutionX, paper.ResolutionY);
}

unsigned OSUtils::LocaleEnvironment::GetUnits()
{
    return NumberSetting(Ports::LocaleSetting::MeasurementSystem) == 1 ? 1 : 2;
}

bool OSUtils::LocaleEnvironment::GetPaperType(PaperType& type)
{
    struct Row {
        long code;   // DMPAPER_...
        PaperType type;
    };
    constexpr Row kRows[] = {{1, kPaperLetter}, {5, kPaperLegal}, {8, kPaperA3}, {9, kPaperA4}};
    const auto code = NumberSetting(Ports::LocaleSetting::PaperSize);
    for (const Row& row : kRows)
        if (code == row.code) {
            type = row.type;
            return true;
        }
    return false;
}
