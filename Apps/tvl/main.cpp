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

namespace {
/// Names the word that is no command, where one was expected; else what CLI11 says.
std::string Explain(const CLI::App* app, const CLI::Error& error)
{
    const std::vector<std::string> unknown = app->remaining(true);
    if (error.get_name() == "RequiredError" && !unknown.empty())
        return "tvl: there is no command \"" + unknown.front() + "\"\nRun with --help for the commands.\n";
    return CLI::FailureMessage::simple(app, error);
}
}   // namespace

// What is thrown before the arguments are read ends the program.
int main()   // NOLINT(bugprone-exception-escape)
{
    std::ios::sync_with_stdio(false);
    const TerminalGuard guard;
    CLI::App app{"Tries the suite's utilities library on real input.", "tvl"};
    app.set_version_flag("--version", std::string("tvl ") + TvlUtlVersion());
    app.require_subcommand(1);
    app.failure_message(Explain);
    AddMeasureCommand(app);
    AddConvertCommand(app);
    AddEvalCommand(app);
    AddStepCommand(app);
    AddUnitsCommand(app);
    AddSmartCommand(app);
    AddScaleCommand(app);
    AddSliderCommand(app);
    AddPaperCommand(app);
    AddExifCommand(app);
    AddLocationsCommand(app);
    AddPlugInsCommand(app);
    AddCloudCommand(app);
    AddRegistryCommand(app);
    AddPolicyCommand(app);
    AddGuidMapCommand(app);
    AddDownloadCommand(app);
    AddSizeCommand(app);
    AddLanguageCommand(app);
    AddLanguageFolderCommands(app);
    AddTrackCommand(app);
    AddWorkspaceCommand(app);
    AddSessionCommand(app);

    std::vector<std::string> arguments;
    for (const std::wstring& argument : Ports::Modules::Get().Arguments())
        arguments.push_back(TvlPlatform::ToUtf8(argument));
    std::reverse(arguments.begin(), arguments.end());   // taken from the back
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& end) {
        return app.exit(end);
    }
    return 0;
}
