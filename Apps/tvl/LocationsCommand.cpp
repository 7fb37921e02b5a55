// tvl locations: where the user's content lies, and how it moves.
#include "CFileLocations.h"
#include "CommandTask.h"
#include "Commands.h"
#include "TerminalText.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
namespace SystemIO = TvlUtils::SystemIO;
using TvlPlatform::FromUtf8;
using TvlPlatform::ToUtf8;

constexpr std::size_t kNameWidth = 24;

[[noreturn]] void Fail(const std::string& problem)
{
    std::cout.flush();
    std::cerr << "tvl: " << problem << '\n';
    throw CLI::RuntimeError(kBadInput);
}

/// A location as it is in use.
struct Location {
    TvlString name;
    TvlString stored;
    TvlString fallback;

    bool StoredExists() const { return SystemIO::Folder::Exists(stored); }
    const TvlString& Folder() const { return StoredExists() ? stored : fallback; }
    std::string Why() const
    {
        if (stored == fallback)
            return StoredExists() ? "the default" : "the default, which can't be made";
        return StoredExists() ? "chosen by the user"
                              : "the default, as the chosen folder is missing: " + ToUtf8(stored);
    }
};

std::vector<Location> AllLocations()
{
    std::vector<Location> locations;
    for (const auto& [stored, name] : CFileLocations::GetFileLocations())
        locations.push_back({name, stored, CFileLocations::GetDefaultFileLocation(name)});
    return locations;
}

Location Named(const std::string& name)
{
    for (const Location& location : AllLocations())
        if (location.name.CompareNoCase(FromUtf8(name)) == 0)
            return location;
    Fail("\"" + name + "\" is no location; `tvl locations` lists them");
}

/// A folder of the command line, which must be there.
struct FolderArgument {
    std::string text;
    bool create = false;

    void AddOptions(CLI::App& command)
    {
        command.add_option("folder", text, "the new folder")->required();
        command.add_flag("--create", create, "make the folder when it is missing");
    }
    TvlString Folder() const
    {
        std::error_code unknown;
        const auto path = std::filesystem::absolute(SystemIO::ToFilePath(FromUtf8(text)), unknown);
        const TvlString folder = SystemIO::FromFilePath(path.lexically_normal());
        if (create)
            if (const auto made = SystemIO::Folder::EnsureExists(folder); !made)
                Fail("the folder \"" + text + "\" can't be made: " + ToUtf8(made.Reason()));
        if (!SystemIO::Folder::Exists(folder))
            Fail("there is no folder \"" + text + "\"; --create makes it");
        return SystemIO::Path::AddBackslash(folder);
    }
};

struct Listing {
    bool json = false;
    bool why = false;

    void Run() const
    {
        for (const Location& location : AllLocations()) {
            if (json)
                std::cout << nlohmann::ordered_json{{"name", ToUtf8(location.name)},
                    {"folder", ToUtf8(location.Folder())}, {"stored", ToUtf8(location.stored)},
                    {"default", ToUtf8(location.fallback)}, {"why", location.Why()}}
                          << '\n';
            else
                std::cout << ToUtf8(PaddedToColumns(location.name.Std(), kNameWidth)) << ToUtf8(location.Folder())
                          << (why ? "  (" + location.Why() + ")" : "") << '\n';
        }
    }
};

struct Setting {
    std::string name;
    FolderArgument folder;

    void Run() const
    {
        const Location location = Named(name);
        CFileLocations::SetFileLocation({folder.Folder(), location.name});
        const Location after = Named(name);
        if (after.stored != folder.Folder())
            Fail("the location can't be stored");
    }
};

struct Migration {
    std::string name;
    FolderArgument folder;
    bool json = false;

    void Run() const
    {
        const Location location = Named(name);
        const TvlString target = folder.Folder();
        std::size_t copied = 0;
        nlohmann::ordered_json failed = nlohmann::ordered_json::array();
        CFileLocations::Moves moves{{location.name, {target, location.Folder()}}};
        {
            CommandTask running(L"Copying files");
            CFileLocations::MigrateContent(moves, [&](const MigrationStep& step) {
                if (step.problem.IsEmpty())
                    ++copied;
                else
                    failed.push_back({{"file", ToUtf8(step.source)}, {"problem", ToUtf8(step.problem)}});
                if (step.done == 1)
                    running.Begin(step.count);
                running.Task().SetProgress(step.done, SystemIO::Path::GetFileName(step.source).c_str());
                // Between two files: the copies are whole, and the location is where it was.
                if (step.done < step.count)
                    running.EndIfCancelled();
            });
        }
        if (failed.empty())
            CFileLocations::SetFileLocation({target, location.name});
        Show(location, target, copied, failed);
    }

private:
    void Show(const Location& location, const TvlString& target, std::size_t copied,
        const nlohmann::ordered_json& failed) const
    {
        if (json)
            std::cout << nlohmann::ordered_json{{"name", ToUtf8(location.name)}, {"from", ToUtf8(location.Folder())},
                {"to", ToUtf8(target)}, {"copied", copied}, {"failed", failed}}
                      << '\n';
        else
            std::cout << copied << (copied == 1 ? " file" : " files") << " copied from " << ToUtf8(location.Folder())
                      << " to " << ToUtf8(target) << '\n';
        std::cout.flush();
        for (const auto& file : failed)
            std::cerr << "tvl: " << file["file"].get<std::string>() << ": " << file["problem"].get<std::string>()
                      << '\n';
        if (!failed.empty())
            Fail("the location stays where it was");
    }
};
}   // namespace

void AddLocationsCommand(CLI::App& app)
{
    CLI::App* const locations = app.add_subcommand("locations", "shows and changes where the user's content lies");
    locations->require_subcommand(0, 1);
    const auto listing = std::make_shared<Listing>();
    locations->add_flag("--why", listing->why, "tell why a folder is the one");
    locations->add_flag("--json", listing->json, "print one JSON object a line");
    locations->callback([listing, locations] {
        if (locations->get_subcommands().empty())
            listing->Run();
    });

    const auto setting = std::make_shared<Setting>();
    CLI::App* const set = locations->add_subcommand("set", "chooses another folder, and leaves the files");
    set->add_option("name", setting->name, "the location's display name")->required();
    setting->folder.AddOptions(*set);
    set->callback([setting] { setting->Run(); });

    const auto migration = std::make_shared<Migration>();
    CLI::App* const migrate =
        locations->add_subcommand("migrate", "copies a location's files to another folder, and chooses that");
    migrate->add_option("name", migration->name, "the location's display name")->required();
    migration->folder.AddOptions(*migrate);
    migrate->add_flag("--json", migration->json, "print a JSON object");
    migrate->callback([migration] { migration->Run(); });
}
