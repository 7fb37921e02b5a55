// tvl: tries the library's families on real input.
#include "Commands.h"

#include "TerminalFilter.h"
#include "TvlUtlVersion.h"
#include "session/SessionCommand.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Modules.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string_view>
#include <vector>

namespace {
/// Names the word that is no command, where one was expected; else what CLI11 says.
std::string Explain(const CLI::App* app, const CLI::Error& error)
{
    const std::vector<std::string> unknown = app->remaining(true);
    if (error.get_name() == "RequiredError" && !unknown.empty())
        return "tvl: there is no command \"" + unknown.front() + "\"\nRun with --help for the commands.\n";
    return CLI::FailureMessage::simple(app, error);
}

struct Command {
    std::string_view name;
    void (*add)(CLI::App& app);
};

constexpr Command kCommands[] = {
    {"measure", AddMeasureCommand},
    {"convert", AddConvertCommand},
    {"eval", AddEvalCommand},
    {"step", AddStepCommand},
    {"units", AddUnitsCommand},
    {"smart", AddSmartCommand},
    {"scale", AddScaleCommand},
    {"slider", AddSliderCommand},
    {"paper", AddPaperCommand},
    {"exif", AddExifCommand},
    {"locations", AddLocationsCommand},
    {"plugins", AddPlugInsCommand},
    {"cloud", AddCloudCommand},
    {"registry", AddRegistryCommand},
    {"policy", AddPolicyCommand},
    {"guidmap", AddGuidMapCommand},
    {"download", AddDownloadCommand},
    {"size", AddSizeCommand},
    {"language", AddLanguageCommand},
    {"language", AddLanguageFolderCommands},
    {"track", AddTrackCommand},
    {"workspace", AddWorkspaceCommand},
    {"session", AddSessionCommand},
};

/// Adds the command that the first argument names, or all when it names none: describing the options of all takes
/// longer than what most commands do.
void AddCommands(CLI::App& app, const std::vector<std::string>& arguments)
{
    const auto isNamed = [&](const Command& command) {
        return !arguments.empty() && arguments.front() == command.name;
    };
    const bool isOneNamed = std::ranges::any_of(kCommands, isNamed);
    for (const Command& command : kCommands)
        if (!isOneNamed || isNamed(command))
            command.add(app);
}
}   // namespace

// What is thrown before the arguments are read ends the program.
int main()   // NOLINT(bugprone-exception-escape)
{
    std::ios::sync_with_stdio(false);
    const TerminalGuard guard;
    std::vector<std::string> arguments;
    for (const std::wstring& argument : Ports::Modules::Get().Arguments())
        arguments.push_back(TvlPlatform::ToUtf8(argument));
    CLI::App app{"Tries the suite's utilities library on real input.", "tvl"};
    app.set_version_flag("--version", std::string("tvl ") + TvlUtlVersion());
    app.require_subcommand(1);
    app.failure_message(Explain);
    AddCommands(app, arguments);

    std::reverse(arguments.begin(), arguments.end());   // taken from the back
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& end) {
        return app.exit(end);
    }
    return 0;
}
