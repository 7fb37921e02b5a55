// tvl convert: one number from a unit to another.
#include "Commands.h"
#include "MeasureOptions.h"
#include "WUnit.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
struct Convert {
    double value = 0.0;
    UnitName from;
    UnitName to;
    bool json = false;

    void Run() const
    {
        const int source = from.Id();
        const int target = to.Id();
        const double result = WUnit::GetDefaultWUnit().ConvertFromUnitToUnit(source, target, value, -1.0);
        if (!std::isfinite(result)) {
            std::cerr << "tvl: the number, or what it becomes, is out of range\n";
            throw CLI::RuntimeError(kBadInput);
        }
        const nlohmann::ordered_json number = result;
        if (json)
            std::cout << nlohmann::ordered_json{{"value", value}, {"from", source}, {"to", target}, {"result", result}}
                      << '\n';
        else
            std::cout << number << '\n';
    }
};
}   // namespace

void AddConvertCommand(CLI::App& app)
{
    const auto convert = std::make_shared<Convert>();
    CLI::App* const command = app.add_subcommand("convert", "converts a number between units");
    command->add_option("value", convert->value, "the number")->required();
    command->add_option("from", convert->from.text, "its unit: an id or a name")->required();
    command->add_option("to", convert->to.text, "the unit wanted")->required();
    command->add_flag("--json", convert->json, "print a JSON object");
    command->callback([convert] { convert->Run(); });
}
