// tvl step: what a spin control makes of a measure.
#include "Commands.h"
#include "MeasureOptions.h"
#include "StoredUnits.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

namespace {
struct Step {
    std::string value;
    std::string unit;
    bool isUp = false;   // the default, said aloud
    bool isDown = false;
    unsigned level = 0;
    int count = 1;
    std::pair<std::string, std::string> like;   // number and unit
    NumberOptions output;

    void Run() const;
    double Size(const std::vector<StoredUnit>& units, int id) const;
};

double NumberOf(const std::string& text)
{
    const auto number = FiniteNumber(text);
    return number ? *number : (RefuseText(text, "is no finite number"), 0.0);
}

double Step::Size(const std::vector<StoredUnit>& units, int id) const
{
    if (like.second.empty())
        return UNITGetIncrement(id, level, !isDown);
    return UNITGetAutoIncrement(MeasureUnitId(units, like.second), NumberOf(like.first), id, level, !isDown);
}

void Step::Run() const
{
    output.Apply();
    const double before = NumberOf(value);
    // Only read: what ends the units again would write their file.
    UNITCustomInitialize();
    const auto units = ReadStoredUnits();
    const int id = MeasureUnitId(units, unit);
    const auto unitId = static_cast<unsigned>(id);
    const double size = Size(units, id);
    // Stepped in the unit: steps in inches land on round inches.
    const double base = UNITConvertUnitToBase(unitId, 0.0, size * count + before);
    const double after = UNITConvertBaseToUnit(unitId, 0.0, base);
    if (!std::isfinite(after))
        RefuseText(value, "leads out of the range of numbers");
    const std::string text = TvlPlatform::ToUtf8(UNITConvToUnitAndStringEx(base, id, 0.0, 0, 1, 1));
    const std::string name = TvlPlatform::ToUtf8(UNITGetUnitAsString(id, kUnitNameFirst));
    const std::string shown = name.empty() ? text : text + ' ' + name;
    if (output.json)
        std::cout << nlohmann::ordered_json{{"value", before}, {"unit", id}, {"step", size}, {"result", after},
            {"text", shown}}
                  << '\n';
    else
        std::cout << shown << '\n';
}
}   // namespace

void AddStepCommand(CLI::App& app)
{
    const auto step = std::make_shared<Step>();
    CLI::App* const command = app.add_subcommand("step", "steps a measure as a spin control does");
    command->add_option("value", step->value, "the number, with a point in every locale")->required();
    command->add_option("unit", step->unit, "its unit: an id or a name, custom units too")->required();
    CLI::Option* const down = command->add_flag("--down", step->isDown, "step down");
    command->add_flag("--up", step->isUp, "step up, as without either")->excludes(down);
    command->add_option("--level", step->level, "the step: small, medium or large")
        ->transform(
            CLI::CheckedTransformer(std::map<std::string, unsigned>{{"small", 0}, {"medium", 1}, {"large", 2}}));
    command->add_option("--count", step->count, "number of steps")
        ->check(CLI::Range(0, 1'000'000))
        ->capture_default_str();
    command->add_option("--like", step->like, "take a round step for a value and unit, such as \"--like 20 mm\"");
    step->output.AddOutputOptions(*command);
    command->callback([step] { step->Run(); });
}
