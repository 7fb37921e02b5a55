// tvl units: the measures that there are, and commands on the user's own.
#include "Commands.h"
#include "CustomUnitsCommand.h"
#include "TerminalText.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
constexpr int kDisplays = 41;
constexpr int kMetre = 9;
constexpr int kNumberWithoutUnit[] = {0, 17, 22, 23};

bool IsPlain(int id)
{
    return std::find(std::begin(kNumberWithoutUnit), std::end(kNumberWithoutUnit), id) != std::end(kNumberWithoutUnit);
}

/// A name of a unit in a column of the table.
std::string Cell(int id, unsigned form, std::size_t columns)
{
    return TvlPlatform::ToUtf8(PaddedToColumns(WUnit::GetDefaultWUnit().GetUnitDisplayString(id, form).Std(), columns));
}

nlohmann::ordered_json Describe(int id)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    const auto name = [&](unsigned form) { return TvlPlatform::ToUtf8(units.GetUnitDisplayString(id, form)); };
    nlohmann::ordered_json unit{{"id", id}, {"short", name(kUnitTextFirstName)},
        {"singular", name(kUnitTextSecondName)}, {"plural", name(kUnitTextThirdName)},
        {"symbol", name(kUnitTextSymbol)}, {"decimals", units.GetUnitDecimalPlaces(id)}};
    // To metres, whose own factor is 1: no rounding adds to the unit's.
    unit["factor"] = IsPlain(id) ? nlohmann::ordered_json()
                                 : nlohmann::ordered_json(units.ConvertFromUnitToUnit(id, kMetre, 1.0, 0.0));
    return unit;
}

void Run(bool json)
{
    if (!json)
        std::cout << " id  short               plural                      metres or radians per unit\n";
    for (int id = 0; id < kDisplays; ++id) {
        if (id >= 18 && id <= 21)
            continue;   // never shown: no display has these ids
        const nlohmann::ordered_json unit = Describe(id);
        if (json)
            std::cout << unit << '\n';
        else
            std::cout << std::setw(3) << id << "  " << Cell(id, kUnitTextFirstName, 20)
                      << Cell(id, kUnitTextThirdName, 28) << unit["factor"] << '\n';
    }
}
}   // namespace

void AddUnitsCommand(CLI::App& app)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App* const command = app.add_subcommand("units", "lists ids, names and factors of the units");
    command->add_flag("--json", *json, "print one JSON object a line");
    AddCustomUnitsCommands(*command);
    command->require_subcommand(0, 1);
    command->callback([json, command] {
        if (command->get_subcommands().empty())
            Run(*json);
    });
}
