// tvl slider: draws how the positions of a slider become values.
#include "Commands.h"
#include "SliderTransform.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {
using namespace Framework::UI::Experimental;

constexpr int kColumns = 61;
constexpr int kRows = 16;
constexpr int kRowsPerLabel = 5;
constexpr int kPoints = 11;              // of the JSON form
constexpr double kStepsOfRange = 1000;   // by default
constexpr int kLabelWidth = 10;

std::string NumberText(double number)
{
    std::ostringstream text;
    text << number;
    return text.str();
}

struct Slider {
    std::string kind;
    double min = 0.0;
    double max = 0.0;
    double range = 100.0;
    std::optional<double> step;
    std::optional<double> centre;
    bool json = false;

    void Run();
    void Check();
    std::unique_ptr<WICmnUISliderTransform> Make() const;
    double PositionOf(int point, int points) const { return range * point / (points - 1); }
    void Draw(const WICmnUISliderTransform& slider) const;
};

[[noreturn]] void Refuse(const std::string& problem)
{
    std::cerr << "tvl: " << problem << '\n';
    throw CLI::RuntimeError(kBadInput);
}

void Slider::Check()
{
    if (!(max > min) || !std::isfinite(max - min))
        Refuse("the maximum must be a finite number above the minimum");
    if (!(range > 0.0) || !std::isfinite(range))
        Refuse("the slider's range must be a finite number above 0");
    if (!step)
        step = (max - min) / kStepsOfRange;
    if (!(*step > 0.0) || !std::isfinite(*step) || !((max - min) / *step < std::numeric_limits<int>::max()))
        Refuse("the step must be a finite number above 0, and a 32-bit number of steps must fill the range");
    if (kind == "centred" && !(centre && *centre > min && *centre < max))
        Refuse("a centred slider needs --centre with a value inside the range");
}

std::unique_ptr<WICmnUISliderTransform> Slider::Make() const
{
    if (kind == "linear")
        return std::make_unique<WCmnUIDefaultSliderTransformation>();
    if (kind == "log")
        return std::make_unique<WCmnUILogarithmicSliderTransformation>();
    if (kind == "exp")
        return std::make_unique<WCmnUIExponentialSliderTransformation>();
    if (kind == "centred")
        return std::make_unique<WCmnUICombinedSliderTransformation>(*centre);
    Refuse("\"" + kind + "\" is no slider; there are linear, log, exp and centred");
}

void Slider::Draw(const WICmnUISliderTransform& slider) const
{
    std::vector<std::string> rows(kRows, std::string(kColumns, ' '));
    for (int column = 0; column < kColumns; ++column) {
        const double part = (slider.GetMappedValue(PositionOf(column, kColumns)) - min) / (max - min);
        const auto height = static_cast<std::size_t>(std::lround(std::clamp(part, 0.0, 1.0) * (kRows - 1)));
        rows[kRows - 1 - height][static_cast<std::size_t>(column)] = '*';
    }
    for (int row = 0; row < kRows; ++row) {
        std::string& curve = rows[static_cast<std::size_t>(row)];
        curve.erase(curve.find_last_not_of(' ') + 1);
        const double value = max - (max - min) * row / (kRows - 1);
        std::cout << std::setw(kLabelWidth) << (row % kRowsPerLabel == 0 ? NumberText(value) : "") << " |" << curve
                  << '\n';
    }
    const std::string end = NumberText(range);
    std::cout << std::string(kLabelWidth + 1, ' ') << '+' << std::string(kColumns, '-') << '\n'
              << std::string(kLabelWidth + 2, ' ') << '0' << std::setw(kColumns - 1) << end << '\n';
}

void Slider::Run()
{
    Check();
    const auto slider = Make();
    if (min < 0.0)
        slider->SetRangeMin(min);   // a maximum below the minimum that stands, 0.0, would be refused
    slider->InitTransformation(min, max, range);
    slider->SetIncrementValue(*step);
    if (!json)
        return Draw(*slider);
    for (int point = 0; point < kPoints; ++point) {
        const double position = PositionOf(point, kPoints);
        std::cout << nlohmann::ordered_json{{"position", position}, {"value", slider->GetMappedValue(position)}}
                  << '\n';
    }
}
}   // namespace

void AddSliderCommand(CLI::App& app)
{
    const auto slider = std::make_shared<Slider>();
    CLI::App* const command = app.add_subcommand("slider", "draws how the positions of a slider become values");
    command->add_option("kind", slider->kind, "linear, log, exp or centred")->required();
    command->add_option("min", slider->min, "value at the slider's start")->required();
    command->add_option("max", slider->max, "value at its end")->required();
    command->add_option("--range", slider->range, "positions of the slider")->capture_default_str();
    command->add_option("--step", slider->step, "step of values; a thousandth of the range by default");
    command->add_option("--centre", slider->centre, "value in the middle of a centred slider");
    command->add_flag("--json", slider->json, "print some points, one JSON object a line");
    command->callback([slider] { slider->Run(); });
}
