#include "MeasureOptions.h"

#include "Commands.h"
#include "Units.h"
#include "WRegionalSupportFormat.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Locale.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iostream>
#include <optional>

namespace {
constexpr int kDisplays = 41;   // ids of built-in displays are below
constexpr int kNoDisplays[] = {18, 19, 20, 21};
constexpr std::size_t kSeparatorCapacity = 16;

struct SameMeasure {
    int display;
    int measure;
};

// Picas and ciceros, which the procedural functions know by the ids of their chains with points and didots.
constexpr SameMeasure kSameMeasures[] = {{24, 3}, {25, 12}, {35, 12}, {36, 3}};

bool IsDisplay(int id)
{
    return id >= 0 && id < kDisplays
        && std::find(std::begin(kNoDisplays), std::end(kNoDisplays), id) == std::end(kNoDisplays);
}

std::optional<int> IdOf(const std::string& text)
{
    if (!text.empty() && text.size() < 3
        && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        const int id = std::stoi(text);
        return IsDisplay(id) ? std::optional(id) : std::nullopt;
    }
    WUnit& units = WUnit::GetDefaultWUnit();
    const TvlString name = TvlPlatform::FromUtf8(text);
    // Definitions have the ids of the displays that show them alone.
    for (int id = 0; id < kDisplays; ++id) {
        if (!IsDisplay(id))
            continue;
        for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form)
            if (const TvlString known = units.GetUnitDisplayString(id, form);
                !known.IsEmpty() && known.CompareNoCase(name) == 0)
                return id;
    }
    return std::nullopt;
}

bool ShowsFractions(int id) { return id == 31 || id == 33 || id == 34; }
}   // namespace

int UnitName::Id() const
{
    if (const auto id = IdOf(text))
        return *id;
    std::cerr << "tvl: \"" << text << "\" is no unit; `tvl units` lists them\n";
    throw CLI::RuntimeError(kBadInput);
}

int UnitName::MeasureId() const
{
    int id = Id();
    for (const auto& [display, measure] : kSameMeasures)
        if (id == display)
            id = measure;
    if (UNITConvertUnitToBase(static_cast<unsigned>(id), 0.0, 1.0) != 0.0)
        return id;
    std::cerr << "tvl: \"" << text << "\" is a unit of texts alone; use one that is a plain measure\n";
    throw CLI::RuntimeError(kBadInput);
}

std::optional<double> FiniteNumber(std::string_view text)
{
    double number = 0.0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, number);
    return error == std::errc() && end == textEnd && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void NumberOptions::AddOptions(CLI::App& command)
{
    AddOutputOptions(command);
    command.add_flag("--degrees", degrees, "functions take angles in degrees");
}

void NumberOptions::AddOutputOptions(CLI::App& command)
{
    command.add_option("--locale", locale, "regional settings to use, such as de-DE");
    command.add_flag("--json", json, "print one JSON object a line");
}

void NumberOptions::Apply() const
{
    if (locale.empty() || Ports::Locale::Get().UseLocale(TvlPlatform::FromUtf8(locale)))
        return;
    std::cerr << "tvl: the locale \"" << locale << "\" is unknown\n";
    throw CLI::RuntimeError(kBadInput);
}

void PrintProblem(const TvlString& text, std::size_t position, const TvlString& problem)
{
    constexpr std::size_t kShown = 40;   // characters on each side of the place
    const std::wstring& all = text.Std();
    position = std::min(position, all.size());
    const std::size_t begin = position > kShown ? position - kShown : 0;
    const std::size_t end = std::min(position + kShown, all.size());
    std::wstring shown = all.substr(begin, end - begin);
    std::replace_if(
        shown.begin(), shown.end(), [](wchar_t c) { return c < L' '; }, L' ');
    std::cout.flush();
    std::cerr << "tvl: " << TvlPlatform::ToUtf8(shown) << "\n     " << std::string(position - begin, ' ') << "^ "
              << TvlPlatform::ToUtf8(problem) << "\n";
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
