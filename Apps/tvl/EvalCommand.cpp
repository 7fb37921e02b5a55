// tvl eval: expressions without units.
#include "Commands.h"
#include "MeasureOptions.h"
#include "TextInput.h"
#include "WEqParser.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
struct Eval {
    TextInput input;
    NumberOptions numbers;
    bool failed = false;

    void Show(const std::string& bytes)
    {
        const TvlString text = TvlPlatform::FromUtf8(bytes);
        WEqParser parser(text, kTokensAll, numbers.AngleMode());
        double value = 0.0;
        const bool hasValue = parser.GetValue(value) != 0;
        const WParseDiagnosis diagnosis = parser.GetDiagnosis();
        const TvlString problem = DescribeParseProblem(diagnosis.problem);
        failed |= !hasValue;
        nlohmann::ordered_json line{{"input", bytes}};
        if (hasValue)
            line["value"] = value;
        else
            line.update({{"error", TvlPlatform::ToUtf8(problem)}, {"position", diagnosis.position}});
        if (numbers.json)
            std::cout << line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
        else if (!hasValue)
            PrintProblem(text, diagnosis.position, problem);
        else if (std::isnan(value))
            std::cout << "not a number\n";
        else
            std::cout << line["value"] << '\n';
    }

    void Run()
    {
        numbers.Apply();
        input.ForEach([&](const std::string& text) { Show(text); });
        std::cout.flush();
        if (failed)
            throw CLI::RuntimeError(kBadInput);
    }
};
}   // namespace

void AddEvalCommand(CLI::App& app)
{
    const auto eval = std::make_shared<Eval>();
    CLI::App* const command = app.add_subcommand("eval", "evaluates expressions without units such as \"2*(3+4)\"");
    eval->input.AddOptions(*command, "texts to evaluate; without any, the lines of standard input");
    eval->numbers.AddOptions(*command);
    command->callback([eval] { eval->Run(); });
}
