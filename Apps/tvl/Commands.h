// The commands of the host application: each adds itself with its options.
#pragma once

namespace CLI {
class App;
}

/// Exit code for input that could not be used.
constexpr int kBadInput = 2;

void AddConvertCommand(CLI::App& app);
void AddEvalCommand(CLI::App& app);
void AddExifCommand(CLI::App& app);
void AddMeasureCommand(CLI::App& app);
void AddPaperCommand(CLI::App& app);
void AddScaleCommand(CLI::App& app);
void AddSliderCommand(CLI::App& app);
void AddSmartCommand(CLI::App& app);
void AddStepCommand(CLI::App& app);
void AddUnitsCommand(CLI::App& app);
