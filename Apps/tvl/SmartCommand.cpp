// tvl smart: a value in another unit, by way of defaults that are round in each.
#include "Commands.h"
#include "MeasureOptions.h"
#include "SmartValue.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

namespace {
[[noreturn]] void Refuse(const std::string& text, const char* problem)
{
    std::cerr << "tvl: \"" << text << "\" " << problem << '\n';
    throw CLI::RuntimeError(kBadInput);
}

/// The values of a text; a text that surely is none ends the command.
WUnitValuePair ValuesOf(const std::string& text)
{
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        const std::string entry = text.substr(begin, end - begin);
        if (entry.find_first_of("0123456789") == std::string::npos)
            Refuse(entry, "has no number; defaults are written as 8.25in;210mm");
        begin = end + 1;
    }
    WUnitValuePair values;
    values.LoadFromString(TvlString(TvlPlatform::FromUtf8(text)));
    return values;
}

struct Smart {
    std::string defaults;
    std::pair<std::string, std::string> from;   // number and unit
    UnitName to;
    bool json = false;

    void Run() const
    {
        WSmartUnitValue smart;
        smart.SetValues(ValuesOf(defaults));
        const auto value = FiniteNumber(from.first);
        if (!value)
            Refuse(from.first, "is no finite number");
        const int source = UnitName{from.second}.MeasureId();
        const int target = to.MeasureId();
        const nlohmann::ordered_json result = smart.GetValueForUnit(target, source, *value, 0.0);
        if (json)
            std::cout << nlohmann::ordered_json{{"value", *value}, {"from", source}, {"to", target}, {"result", result}}
                      << '\n';
        else
            std::cout << result << '\n';
    }
};
}   // namespace

void AddSmartCommand(CLI::App& app)
{
    const auto smart = std::make_shared<Smart>();
    CLI::App* const command = app.add_subcommand("smart", "goes from one unit to another by round defaults");
    command->add_option("defaults", smart->defaults, "one default for each of some units, such as \"8.25in;210mm\"")
        ->required();
    command->add_option("--from", smart->from, "the value and its unit")->required();
    command->add_option("--to", smart->to.text, "the unit wanted: an id or a name")->required();
    command->add_flag("--json", smart->json, "print a JSON object");
    command->callback([smart] { smart->Run(); });
}
