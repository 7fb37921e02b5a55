// The commands of the host application: each adds itself with its options.
#pragma once

#include <string>

namespace CLI {
class App;
}

/// Exit code for input that could not be used.
constexpr int kBadInput = 2;
/// Exit code of a command that the user interrupted, as shells have it.
constexpr int kInterrupted = 130;
/// Ends the command with the exit code for bad input, and says why.
[[noreturn]] void EndWithBadInput(const std::string& problem);

void AddCloudCommand(CLI::App& app);
void AddConvertCommand(CLI::App& app);
void AddDownloadCommand(CLI::App& app);
void AddEvalCommand(CLI::App& app);
void AddExifCommand(CLI::App& app);
void AddGuidMapCommand(CLI::App& app);
void AddLanguageCommand(CLI::App& app);
/// Its subcommands join those of "language", where that is there already.
void AddLanguageFolderCommands(CLI::App& app);
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
void AddTrackCommand(CLI::App& app);
void AddUnitsCommand(CLI::App& app);
void AddWorkspaceCommand(CLI::App& app);
