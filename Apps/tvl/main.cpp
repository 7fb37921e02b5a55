// tvl: tries the library's families on real input.
#include "Commands.h"

#include "TvlUtlVersion.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Modules.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

// What is thrown before the arguments are read ends the program.
int main()   // NOLINT(bugprone-exception-escape)
{
    std::ios::sync_with_stdio(false);
    CLI::App app{"Tries the suite's utilities library on real input.", "tvl"};
    app.set_version_flag("--version", std::string("tvl ") + TvlUtlVersion());
    app.require_subcommand(1);
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
