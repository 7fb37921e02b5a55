// tvl language check, pseudo: folders of translators.
#include "Commands.h"
#include "LanguageTexts.h"
#include "LanguageTokens.h"
#include "PseudoLanguage.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace {
namespace fs = std::filesystem;
using TvlUtils::SystemIO::ToFilePath;

struct FolderRequest {
    std::string folder;

    fs::path Path() const { return ToFilePath(TvlPlatform::FromUtf8(folder)); }
};

/// The texts of the suite's English; ends the command where they are not whole.
LanguageTexts English()
{
    LanguageFaults faults;
    LanguageTexts texts = ReadLanguageTexts(ToFilePath(TvlConfig::GetSuiteDir()) / "Languages" / "EN", faults);
    if (!faults.empty())
        EndWithBadInput("the suite's English texts: " + faults.front());
    return texts;
}

std::size_t Count(const LanguageTexts& texts)
{
    std::size_t count = 0;
    for (const auto& [file, keys] : texts)
        count += keys.size();
    return count;
}

void Check(const FolderRequest& request)
{
    const fs::path folder = request.Path();
    if (!fs::is_directory(folder / "Data"))
        EndWithBadInput("\"" + request.folder + "\" is no language's folder: it has no folder \"Data\"");
    // Units are known by their English names.
    Framework::Resources::SetLanguageFolder(L"EN");
    const LanguageTexts english = English();
    LanguageFaults faults;
    CheckLanguageInfo(folder, faults);
    const LanguageTexts texts = ReadLanguageTexts(folder, faults);
    CompareTexts(texts, english, faults);
    CheckTokens(texts, english, faults);
    for (const std::string& fault : faults)
        std::cout << fault << '\n';
    if (!faults.empty())
        EndWithBadInput(std::to_string(faults.size()) + (faults.size() == 1 ? " fault" : " faults") + " in \""
            + request.folder + '"');
    std::cout << Count(texts) << " texts in " << texts.size() << " files, all as they should be\n";
}

void WritePseudo(const FolderRequest& request)
try {
    WritePseudoLanguage(request.Path(), English());
} catch (const std::runtime_error& failure) {
    EndWithBadInput("\"" + request.folder + "\": " + failure.what());
}
}   // namespace

void AddLanguageFolderCommands(CLI::App& app)
{
    const auto there = app.get_subcommands([](CLI::App* command) { return command->get_name() == "language"; });
    CLI::App* const language = there.empty()
        ? app.add_subcommand("language", "looks after languages of the user interface")->require_subcommand(1)
        : there.front();
    const auto request = std::make_shared<FolderRequest>();
    const auto add = [&](const char* name, const char* what, void (*run)(const FolderRequest&)) {
        CLI::App& command = *language->add_subcommand(name, what);
        command.add_option("folder", request->folder, "a language's folder, such as Languages/DE")->required();
        command.callback([request, run] { run(*request); });
    };
    add("check", "holds a translator's folder against the English texts", Check);
    add("pseudo", "writes a language for layout tests: English with accents, longer and in brackets", WritePseudo);
}
