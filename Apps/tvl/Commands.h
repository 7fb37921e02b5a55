// The commands of the host application: each adds itself with its options.
#pragma once

#include <string>

namespace CLI {
class App;
}

/// Exit code for input that could not be used.
constexpr int kBadInput = 2;
/// Ends the command with that exit code, and says why.
[[noreturn]] void EndWithBadInput(const std::string& problem);

void AddCloudCommand(CLI::App& app);
void AddConvertCommand(CLI::App& app);
void AddDownloadCommand(CLI::App& app);
void AddEvalCommand(CLI::App& app);
void AddExifCommand(CLI::App& app);
void AddGuidMapCommand(CLI::App& app);
void AddLocationsCommand(CLI::App& app);
void AddMeasureCommand(CLI::App& app);
void AddPaperCommand(CLI::App& app);
void AddPlugInsCommand(CLI::App& app);
void AddPolicyCommand(CLI::App& app);
void AddRegistryCommand(CLI::App& app);
void AddScaleCommand(CLI::App& app);
void AddSizeCommand(CLI::App& app);
void AddSliderCommand(CLI::App& app);
void AddSmartCommand(CLI::App& app);
void AddStepCommand(CLI::App& app);
void AddUnitsCommand(CLI::App& app);
void AddWorkspaceCommand(CLI::App& app);
