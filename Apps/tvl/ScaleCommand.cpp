// tvl scale: a drawing scale as a preset with its label, or the presets on offer.
#include "Commands.h"
#include "MeasureOptions.h"
#include "Units.h"
#include "WorldScale.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace {
using TvlUtl::WorldScale::Preset;

/// World distance by page distance of a text such as "1:50".
std::optional<double> ScaleOf(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto page = FiniteNumber(text.substr(0, colon));
    const auto world = FiniteNumber(text.substr(colon + 1));
    const bool areDistances = page && world && *page > 0.0 && *world > 0.0;
    const double scale = areDistances ? *world / *page : 0.0;
    return scale > 0.0 && std::isfinite(scale) ? std::optional(scale) : std::nullopt;
}

struct Scale {
    std::string ratio;
    UnitName world{"mm"};
    UnitName page{"mm"};
    unsigned dotsPerInch = 300;
    NumberOptions numbers;

    void Run() const;
    void Show(const Preset& preset) const;
};

void Scale::Show(const Preset& preset) const
{
    const std::string label = TvlPlatform::ToUtf8(preset.Label());
    if (!numbers.json) {
        std::cout << label << '\n';
        return;
    }
    const nlohmann::ordered_json line{{"scale", preset.Scale()}, {"page", preset.PageDist()},
        {"pageUnit", preset.PageUnit()}, {"world", preset.WorldDist()}, {"worldUnit", preset.WorldUnit()},
        {"metric", preset.IsMetric()}, {"label", label}};
    std::cout << line << '\n';
}

void Scale::Run() const
{
    numbers.Apply();
    if (ratio.empty()) {
        for (const Preset& preset : TvlUtl::WorldScale::GetPresetList())
            Show(preset);
        return;
    }
    const auto scale = ScaleOf(ratio);
    if (!scale) {
        std::cerr << "tvl: \"" << ratio << "\" is no scale; one is written as 1:50, page before world\n";
        throw CLI::RuntimeError(kBadInput);
    }
    Show(TvlUtl::WorldScale::Format(*scale, world.MeasureId(), page.MeasureId(), UNITConvertResToBase(dotsPerInch)));
}
}   // namespace

void AddScaleCommand(CLI::App& app)
{
    const auto scale = std::make_shared<Scale>();
    CLI::App* const command = app.add_subcommand("scale", "shows a drawing scale in units, or lists the presets");
    command->add_option("ratio", scale->ratio, "page to world, such as 1:50; without it the presets are listed");
    command->add_option("--world", scale->world.text, "unit of the world: an id or a name")->capture_default_str();
    command->add_option("--page", scale->page.text, "unit of the page: an id or a name")->capture_default_str();
    command->add_option("--dpi", scale->dotsPerInch, "pixels per inch")
        ->check(CLI::Range(1U, 1000000U))
        ->capture_default_str();
    scale->numbers.AddOutputOptions(*command);
    command->callback([scale] { scale->Run(); });
}
