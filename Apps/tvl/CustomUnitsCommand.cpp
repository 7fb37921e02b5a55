#include "CustomUnitsCommand.h"

#include "Commands.h"
#include "CustomUnitsLint.h"
#include "MeasureOptions.h"
#include "StoredUnits.h"
#include "siblings/TvlConfig/CustomUnits.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {
constexpr int kMostDecimals = 15;

std::string Utf8(std::wstring_view text) { return TvlPlatform::ToUtf8(text); }

nlohmann::ordered_json Describe(const StoredUnit& unit)
{
    const CustomUnitRecord& record = *unit.record;
    return {{"id", unit.id}, {"short", Utf8(CustomUnitName(record.firstName))},
        {"singular", Utf8(CustomUnitName(record.secondName))}, {"plural", Utf8(CustomUnitName(record.thirdName))},
        {"symbol", Utf8(CustomUnitName(record.fourthName))}, {"factor", record.factor}, {"base", record.baseUnit},
        {"steps", record.increments}, {"decimals", record.decimals}};
}

void List(bool json)
{
    for (const StoredUnit& unit : ReadStoredUnits())
        if (unit.id >= 0 && json)
            std::cout << Describe(unit) << '\n';
        else if (unit.id >= 0)
            std::cout << unit.id << "  " << Utf8(unit.text) << '\n';
}

struct Add {
    std::string name;
    std::string factor;
    std::string base;
    std::string singular;
    std::string plural;
    std::string symbol;
    std::vector<double> steps;
    int decimals = 0;

    void Run() const;
    template <std::size_t size>
    void CopyName(const std::string& given, wchar_t (&to)[size]) const;
    CustomUnitRecord Record(const std::vector<StoredUnit>& units) const;
};

template <std::size_t size>
void Add::CopyName(const std::string& given, wchar_t (&to)[size]) const
{
    const std::string& bytes = given.empty() ? name : given;
    const std::wstring text = TvlPlatform::FromUtf8(bytes);
    if (text.empty() || text.find_first_of(L",\r\n") != std::wstring::npos)
        RefuseText(bytes, "is no name: it is empty, or has a comma or a line break");
    if (text.size() > size)
        RefuseText(bytes, "is too long: there is room for " + std::to_string(size) + " characters");
    std::copy(text.begin(), text.end(), to);
}

CustomUnitRecord Add::Record(const std::vector<StoredUnit>& units) const
{
    CustomUnitRecord record{};
    CopyName(name, record.firstName);
    CopyName(singular, record.secondName);
    CopyName(plural, record.thirdName);
    CopyName(symbol, record.fourthName);
    if (FindStoredUnit(units, name) >= 0)
        RefuseText(name, "is a custom unit already");
    const auto number = FiniteNumber(factor);
    if (!number || *number == 0.0)
        RefuseText(factor, "is no factor: it must be a finite number and not 0");
    record.factor = *number;
    record.baseUnit = MeasureUnitId(units, base);
    std::copy_n(steps.begin(), std::min(steps.size(), std::size(record.increments)), record.increments);
    record.decimals = decimals;
    return record;
}

void Add::Run() const
{
    TvlConfig::CustomUnitBatch batch;
    const std::vector<StoredUnit> units = ReadStoredUnits();
    if (units.size() >= static_cast<std::size_t>(INIGetMaxNoOfCustomUnit()))
        RefuseText(name, "finds no room: there may be " + std::to_string(INIGetMaxNoOfCustomUnit()) + " custom units");
    const TvlString text = WriteCustomUnitRecord(Record(units));
    const auto kept = ReadCustomUnitRecord(text);
    if (!kept)
        RefuseText(factor, "is too small: records keep six decimals");
    if (WriteCustomUnitRecord(*kept) != text)
        RefuseText(name, "needs too long a record: it would be cut");
    std::vector<TvlString> texts;
    for (const StoredUnit& unit : units)
        texts.push_back(unit.text);
    texts.push_back(text);
    WriteStoredUnits(batch, texts);
    const StoredUnit added = ReadStoredUnits().back();
    std::cout << added.id << "  " << Utf8(added.text) << '\n';
}

/// A record's text when the unit `removed` goes: the units behind it move up one place.
TvlString TextWithout(const StoredUnit& unit, int removed)
{
    if (!unit.record || unit.record->baseUnit <= removed)
        return unit.text;
    CustomUnitRecord record = *unit.record;
    --record.baseUnit;
    return WriteCustomUnitRecord(record);
}

void Remove(const std::string& name)
{
    TvlConfig::CustomUnitBatch batch;
    const std::vector<StoredUnit> units = ReadStoredUnits();
    const int id = FindStoredUnit(units, name);
    if (id < 0)
        RefuseText(name, "is no custom unit; `tvl units list` lists them");
    std::vector<TvlString> texts;
    for (const StoredUnit& unit : units) {
        if (unit.id == id)
            continue;
        if (unit.record && unit.record->baseUnit == id)
            RefuseText(name, "is what " + std::to_string(unit.id) + " is based on");
        texts.push_back(TextWithout(unit, id));
    }
    WriteStoredUnits(batch, texts);
}

void Lint()
{
    const std::vector<std::string> problems = FindUnitProblems(ReadStoredUnits());
    for (const std::string& problem : problems)
        std::cout << problem << '\n';
    if (!problems.empty())
        throw CLI::RuntimeError(kBadInput);
}

void AddAddCommand(CLI::App& units)
{
    const auto add = std::make_shared<Add>();
    CLI::App* const command = units.add_subcommand("add", "adds a unit and prints its id");
    command->add_option("name", add->name, "short name, up to 20 characters")->required();
    command->add_option("factor", add->factor, "how many of the base unit it is")->required();
    command->add_option("base", add->base, "the base unit: an id or a name, custom units too")->required();
    command->add_option("--singular", add->singular, "name in the singular, up to 22 characters");
    command->add_option("--plural", add->plural, "name in the plural, up to 20 characters");
    command->add_option("--symbol", add->symbol, "symbol, up to 20 characters");
    command->add_option("--steps", add->steps, "small, medium and large step")
        ->expected(3)
        ->check(CLI::Range(-1e6, 1e6));
    command->add_option("--decimals", add->decimals, "decimal places")
        ->check(CLI::Range(0, kMostDecimals))
        ->capture_default_str();
    command->callback([add] { add->Run(); });
}
}   // namespace

void AddCustomUnitsCommands(CLI::App& units)
{
    CLI::App* const list = units.add_subcommand("list", "lists the user's own units by id");
    const auto json = std::make_shared<bool>(false);
    list->add_flag("--json", *json, "print one JSON object a line");
    list->callback([json] { List(*json); });
    AddAddCommand(units);
    CLI::App* const remove = units.add_subcommand("remove", "removes a unit; those behind it move up one id");
    const auto name = std::make_shared<std::string>();
    remove->add_option("unit", *name, "its id or a name")->required();
    remove->callback([name] { Remove(*name); });
    units.add_subcommand("lint", "tells what is wrong with the user's own units")->callback(Lint);
}
