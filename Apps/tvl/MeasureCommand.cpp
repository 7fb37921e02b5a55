// tvl measure: what a numeric field makes of a text.
#include "../MeasureText.h"
#include "Commands.h"
#include "MeasureOptions.h"
#include "TextInput.h"
#include "WEqParser.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
constexpr unsigned kFlags = kTokensUnits | kTokensAll;

struct Measure {
    TextInput input;
    NumberOptions numbers;
    UnitName unit{"mm"};
    unsigned form = kUnitTextFirstName;
    int decimals = -1;
    bool failed = false;

    void Run();
    void Show(const std::string& bytes, int id);
    void ShowProblem(const std::string& bytes, const TvlString& text, int id);
};

void Measure::ShowProblem(const std::string& bytes, const TvlString& text, int id)
{
    failed = true;
    const WParseDiagnosis diagnosis = WUnit::GetDefaultWUnit().DiagnoseText(id, text, kFlags, numbers.AngleMode());
    const TvlString problem = DescribeParseProblem(diagnosis.problem);
    if (!numbers.json)
        return PrintProblem(text, diagnosis.position, problem);
    const nlohmann::ordered_json line{
        {"input", bytes}, {"error", TvlPlatform::ToUtf8(problem)}, {"position", diagnosis.position}};
    std::cout << line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void Measure::Show(const std::string& bytes, int id)
{
    const TvlString text = TvlPlatform::FromUtf8(bytes);
    double value = 0.0;
    if (!WUnit::GetDefaultWUnit().StringToValue(id, text, value, kFlags, numbers.AngleMode()))
        return ShowProblem(bytes, text, id);
    const std::string shown = std::isnan(value)
        ? "not a number"
        : TvlPlatform::ToUtf8(RegionalText(WUnit::GetDefaultWUnit(), id, value, form, decimals));
    if (!numbers.json) {
        std::cout << shown << '\n';
        return;
    }
    // JSON has no NaN: the value is null then.
    const nlohmann::ordered_json line{{"input", bytes}, {"unit", id}, {"value", value}, {"text", shown}};
    std::cout << line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void Measure::Run()
{
    numbers.Apply();
    const int id = unit.Id();
    input.ForEach([&](const std::string& text) { Show(text, id); });
    std::cout.flush();
    if (failed)
        throw CLI::RuntimeError(kBadInput);
}
}   // namespace

void AddMeasureCommand(CLI::App& app)
{
    const auto measure = std::make_shared<Measure>();
    CLI::App* const command = app.add_subcommand("measure", "evaluates field texts such as \"5in + 3mm\"");
    measure->input.AddOptions(*command, "texts to evaluate; without any, the lines of standard input");
    command->add_option("--unit,-u", measure->unit.text, "unit of the field: an id or a name")->capture_default_str();
    command->add_option("--form", measure->form, "how units are named: 0 not, 1 short, 2 singular, 3 plural, 4 symbol")
        ->check(CLI::Range(0, 4))
        ->capture_default_str();
    command->add_option("--decimals", measure->decimals, "decimal places; -1 for the unit's own")
        ->check(CLI::Range(-1, 15))
        ->capture_default_str();
    measure->numbers.AddOptions(*command);
    command->callback([measure] { measure->Run(); });
}
