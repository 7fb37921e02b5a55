#include "MeasureOptions.h"

#include "../MeasureText.h"
#include "Commands.h"
#include "Units.h"
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
    const int id = ProceduralUnit(Id());
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
