// tvl workspace: lists, makes, changes and checks workspaces.
#include "Commands.h"
#include "WorkspaceHost.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlConfig/WorkspaceFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
namespace SystemIO = TvlUtils::SystemIO;
using TvlPlatform::FromUtf8;
using TvlPlatform::ToUtf8;
using WorkspaceManagerTypes::Result;

constexpr const char* kReasons[] = {
    "done",
    "the file does not tell what it contains",
    "there is no current workspace",
    "it can't be made; there may be one of this name already",
    "that is no workspace",
    "a default workspace can't be deleted",
    "there is no such workspace, or its file can't be written",
    "the application refused the change",
};

void Require(Result result)
{
    if (result != Result::Ok)
        EndWithBadInput(kReasons[static_cast<int>(result)]);
}

/// The full path of a file of the command line.
TvlString FullPath(const std::string& text)
{
    std::error_code unknown;
    const auto path = std::filesystem::absolute(SystemIO::ToFilePath(FromUtf8(text)), unknown);
    return SystemIO::FromFilePath(path.lexically_normal());
}

/// A workspace by the path of its file, or by its name in the user's folder; one that is there.
TvlString WorkspacePath(const std::string& nameOrPath)
{
    if (const TvlString path = FullPath(nameOrPath); SystemIO::File::Exists(path))
        return path;
    const TvlString path = SystemIO::Path::Combine(GetUserProfileWorkspaceDir(), FromUtf8(nameOrPath), L"tvws");
    if (!SystemIO::File::Exists(path))
        EndWithBadInput("there is no workspace \"" + nameOrPath + "\"");
    return path;
}

/// A name for a workspace in the user's folder.
TvlString WorkspaceName(const std::string& name)
{
    // Elsewhere nobody would find it, and files there are none of the user's workspaces.
    if (name.empty() || name.find_first_of("/\\:") != std::string::npos)
        EndWithBadInput("\"" + name + "\" does not serve as a name: it is empty, or has a slash or a colon");
    return FromUtf8(name);
}

/// A temporary file that goes with the object.
class TemporaryFile {
public:
    TemporaryFile() : path(SystemIO::Path::GetTempFileNameW(SystemIO::Path::GetTempFolder(), L"tvl", L".ini")) { }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { SystemIO::File::Delete(path); }

    const TvlString path;
};

UserInteractionMode_t ModeOf(const std::string& name)
{
    return name == "tablet" ? kTabletInteraction
        : name == "desktop" ? kDesktopInteraction
                            : CurrentUserInteractionMode(nullptr);
}

/// Options that several commands have.
struct Arguments {
    std::string mode;   // empty for the system's
    std::string name;
    std::string source = "_default";
    std::string title;
    std::string description;
    std::string version;
    bool json = false;
    bool dryRun = false;
    bool yes = false;
    bool applicationData = false;
    bool shortcuts = false;
    bool dockers = false;

    WorkspaceHost Host() const { return WorkspaceHost(ModeOf(mode)); }
};

nlohmann::ordered_json Describe(const WorkspaceFile& file)
{
    nlohmann::ordered_json ancestors = nlohmann::ordered_json::array();
    for (const TvlUtils::Guid& ancestor : file.GetDerivedFrom())
        ancestors.push_back(ToUtf8(ancestor.ToString()));
    return {{"name", ToUtf8(file.GetName())}, {"title", ToUtf8(file.GetTitleInUILang())},
        {"category", ToUtf8(file.GetCategoryInUILang())}, {"description", ToUtf8(file.GetDescriptionInUILang())},
        {"order", file.GetUIOrder()}, {"touch", file.IsTouchWorkspace()}, {"preview", file.IsPreviewAvailable()},
        {"instance", ToUtf8(file.GetInstanceID().ToString())}, {"document", ToUtf8(file.GetDocumentID().ToString())},
        {"derived from", ancestors}, {"file", ToUtf8(file.GetFilename())}};
}

void Print(const nlohmann::ordered_json& value)
{
    std::cout << value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

/// How many preferences differ from those in a workspace.
std::size_t CountChanges(const PreferenceTree& preferences, const WorkspaceFile& file)
{
    const TemporaryFile settings;
    WorkspaceFile(file).LoadSettings(settings.path, {});
    return CompareTrees(PreferenceTree::FromSettings(settings.path), preferences).size();
}

void List(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    const TvlString current = host.Manager().GetCurrentWorkspaceName();
    for (const auto& [category, files] : host.Manager().GetCategoriedWorkspaces()) {
        if (!arguments.json && !category.IsEmpty())
            std::cout << Shown(category) << ":\n";
        for (const WorkspaceFile& file : files) {
            const bool isCurrent = file.GetName() == current;
            if (arguments.json) {
                nlohmann::ordered_json description = Describe(file);
                description["current"] = isCurrent;
                if (isCurrent)
                    description["changed preferences"] = CountChanges(host.Preferences(), file);
                Print(description);
            } else {
                std::cout << (isCurrent ? "* " : "  ") << Shown(file.GetName()) << "  "
                          << Quoted(file.GetTitleInUILang()) << '\n';
            }
        }
    }
}

void Show(const Arguments& arguments)
{
    const WorkspaceFile file(WorkspacePath(arguments.name));
    if (!WorkspaceContainer::Open(file.GetFilename(), ZipFile::OpenMode::Read))
        EndWithBadInput("\"" + arguments.name + "\" is no workspace");
    const nlohmann::ordered_json description = Describe(file);
    if (arguments.json)
        return Print(description);
    for (const auto& [name, value] : description.items())
        std::cout << name << ": " << (value.is_string() ? Quoted(FromUtf8(value.get<std::string>())) : value.dump())
                  << '\n';
}

void New(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    MultiLanguageString title, description;
    title.SetDefaultLangString(FromUtf8(arguments.title.empty() ? arguments.name : arguments.title));
    description.SetDefaultLangString(FromUtf8(arguments.description));
    Require(host.Manager().CreateNewWorkspace(
        WorkspaceName(arguments.name), WorkspaceName(arguments.source), title, description));
    host.ShutDown();
}

/// The settings of a workspace in a temporary file; the command ends when it has none that can be read.
void ExtractSettings(const TvlString& workspace, const TemporaryFile& file)
{
    if (!WorkspaceFile(workspace).LoadSettings(file.path, {}))
        EndWithBadInput("the workspace has no settings that can be read");
}

void Switch(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    const TvlString path = WorkspacePath(arguments.name);
    if (arguments.dryRun) {
        const TemporaryFile settings;
        ExtractSettings(path, settings);
        const auto changes = CompareTrees(host.Preferences(), PreferenceTree::FromSettings(settings.path));
        std::cout << (changes.empty() ? "no preference would change\n" : ShowChanges(changes));
        return;
    }
    if (!WorkspaceContainer::Open(path, ZipFile::OpenMode::Read))
        EndWithBadInput("\"" + arguments.name + "\" is no workspace");
    const IWorkspaceFiles& files = host.Manager().GetWorkspaces();
    // In place of one that is not in the list the default would become current.
    if (std::none_of(files.begin(), files.end(),
            [&](const WorkspaceFile& file) { return file.GetFilename().CompareNoCase(path) == 0; }))
        EndWithBadInput("\"" + arguments.name + "\" is not in the folder " + ToUtf8(GetUserProfileWorkspaceDir()));
    Require(host.Switch(path));
    host.ShutDown();
    std::cout << Shown(host.Manager().GetCurrentWorkspaceName()) << ", " << host.Preferences().All().size()
              << " preferences\n";
}

void Export(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    WorkspaceFileExportSettings settings;
    settings.Name = host.Manager().GetCurrentWorkspaceName();
    settings.Framework = L"tvl";
    settings.Version = FromUtf8(arguments.version);
    settings.ExportApplicationData = arguments.applicationData;
    settings.ExportShortcutKeys = arguments.shortcuts;
    settings.ExportDockers = arguments.dockers;
    const TvlString target = FullPath(arguments.name);
    if (SystemIO::Path::Exists(target))
        EndWithBadInput("\"" + arguments.name + "\" is there already");
    Require(host.Manager().ExportWorkspace(target, settings));
    if (!SystemIO::File::Exists(target))
        EndWithBadInput("\"" + arguments.name + "\" can't be written");
    host.ShutDown();
}

void Delete(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    const TvlString name = WorkspaceName(arguments.name);
    Require(host.Manager().DeleteWorkspace(name));
    host.ShutDown();
    if (SystemIO::File::Exists(SystemIO::Path::Combine(GetUserProfileWorkspaceDir(), name, L"tvws")))
        EndWithBadInput("the file can't be deleted");
}

void Reset(const Arguments& arguments)
{
    if (!arguments.yes)
        EndWithBadInput("what the current workspace has would be lost; --yes says that it may");
    WorkspaceHost host(ModeOf(arguments.mode), true);
    host.ShutDown();
    std::cout << Shown(host.Manager().GetCurrentWorkspaceName()) << '\n';
}

void Lint(const Arguments& arguments)
{
    const TemporaryFile settings;
    ExtractSettings(WorkspacePath(arguments.name), settings);
    const std::string report = LintSettings(settings.path);
    std::cout << (report.empty() ? "nothing to report\n" : report);
}

/// Whether a file of another user can be taken over, and what it would bring along.
void ImportCheck(const Arguments& arguments)
{
    const TvlString path = WorkspacePath(arguments.name);
    if (!WorkspaceContainer::Open(path, ZipFile::OpenMode::Read))
        EndWithBadInput("\"" + arguments.name + "\" is no workspace");
    const TemporaryFile settings;
    if (WorkspaceFile(path).LoadSettings(settings.path, {}))
        std::cout << LintSettings(settings.path);
    WorkspaceFileExportSettings exported;
    if (!WorkspaceFile::ReadExportSettings(path, exported))
        EndWithBadInput("the file does not tell what it contains: nobody has exported it");
    std::cout << "exported as " << Quoted(exported.Name) << " of framework " << Quoted(exported.Framework)
              << ", version " << Quoted(exported.Version) << '\n'
              << exported.Toolbars.size() << " toolbars, " << exported.Menus.size() << " menus, "
              << exported.Statusbars.size() << " status bars, " << exported.Touchbars.size() << " touch bars\n"
              << "shortcut keys: " << (exported.ExportShortcutKeys ? "yes" : "no")
              << ", dockers: " << (exported.ExportDockers ? "yes" : "no")
              << ", application data: " << (exported.ExportApplicationData ? "yes" : "no") << '\n';
}

void ShowIcons(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    for (const auto& [name, path] : host.Manager().ExtractIconResources()) {
        std::string bytes;
        static_cast<void>(SystemIO::File::ReadAll(path, bytes));
        std::cout << Shown(name) << "  " << bytes.size() << " bytes\n";
    }
    host.ShutDown();   // the extracted files go
}

void AddIcon(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    TvlString path = FullPath(arguments.name);
    const TvlString name = host.Manager().AddIconResource(path);
    if (name.IsEmpty())
        EndWithBadInput("\"" + arguments.name + "\" can't be added");
    SystemIO::File::Delete(path);   // the copy that applications show
    std::cout << ToUtf8(name) << '\n';
}

void RemoveIcon(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    if (!host.Manager().RemoveIconResource(FromUtf8(arguments.name)))
        EndWithBadInput("the icon \"" + arguments.name + "\" can't be removed; is there one of this name?");
}

void CopyIcons(const Arguments& arguments)
{
    WorkspaceHost host = arguments.Host();
    if (!host.Manager().CopyIconsFromWorkspace(WorkspaceFile(WorkspacePath(arguments.name))))
        EndWithBadInput("the icons can't be copied");
}

using ArgumentsPointer = std::shared_ptr<Arguments>;

CLI::App* AddCommand(CLI::App& parent, const char* name, const char* description, const ArgumentsPointer& arguments,
    void (*run)(const Arguments&))
{
    CLI::App* const command = parent.add_subcommand(name, description);
    command->callback([arguments, run] { run(*arguments); });
    return command;
}

void AddIconCommands(CLI::App& workspace, const ArgumentsPointer& arguments)
{
    CLI::App* const icons = workspace.add_subcommand("icons", "shows and changes the icons of the current workspace");
    icons->require_subcommand(0, 1);
    icons->callback([icons, arguments] {
        if (icons->get_subcommands().empty())
            ShowIcons(*arguments);
    });
    AddCommand(*icons, "add", "adds a file, and prints its name there", arguments, AddIcon)
        ->add_option("file", arguments->name)
        ->required();
    AddCommand(*icons, "remove", "removes an icon", arguments, RemoveIcon)
        ->add_option("name", arguments->name)
        ->required();
    AddCommand(*icons, "copy", "copies the icons of another workspace", arguments, CopyIcons)
        ->add_option("workspace", arguments->name, "its name or file")
        ->required();
}

void AddListingCommands(CLI::App& workspace, const ArgumentsPointer& arguments)
{
    AddCommand(workspace, "list", "lists the workspaces; a star marks the current one", arguments, List)
        ->add_flag("--json", arguments->json, "print one JSON object a line");
    CLI::App* const show = AddCommand(workspace, "show", "shows what a workspace tells of itself", arguments, Show);
    show->add_option("workspace", arguments->name, "its name or file")->required();
    show->add_flag("--json", arguments->json, "print a JSON object");
    AddCommand(workspace, "lint", "shows what the settings of a workspace bring along, and which values don't keep",
        arguments, Lint)
        ->add_option("workspace", arguments->name, "its name or file")
        ->required();
    AddCommand(workspace, "import-check", "shows what an exported workspace contains", arguments, ImportCheck)
        ->add_option("file", arguments->name)
        ->required();
}

void AddChangingCommands(CLI::App& workspace, const ArgumentsPointer& arguments)
{
    CLI::App* const create = AddCommand(workspace, "new", "makes a workspace from another", arguments, New);
    create->add_option("name", arguments->name)->required();
    create->add_option("--from", arguments->source, "the other's name")->capture_default_str();
    create->add_option("--title", arguments->title, "the name if it is not given");
    create->add_option("--description", arguments->description);
    CLI::App* const change =
        AddCommand(workspace, "switch", "makes another workspace the current one", arguments, Switch);
    change->add_option("workspace", arguments->name, "its name or file")->required();
    change->add_flag("--dry-run", arguments->dryRun, "only show which preferences would change");
    CLI::App* const share =
        AddCommand(workspace, "export", "copies the current workspace for others", arguments, Export);
    share->add_option("file", arguments->name)->required();
    share->add_option("--version", arguments->version, "the version to write into it");
    share->add_flag("--application-data", arguments->applicationData, "with the settings");
    share->add_flag("--shortcuts", arguments->shortcuts, "say that shortcut keys are in it");
    share->add_flag("--dockers", arguments->dockers, "say that dockers are in it");
    AddCommand(workspace, "delete", "deletes a workspace", arguments, Delete)
        ->add_option("name", arguments->name)
        ->required();
    AddCommand(workspace, "reset", "gives the current workspace its first state again", arguments, Reset)
        ->add_flag("--yes", arguments->yes, "what it has now may be lost");
}
}   // namespace

void AddWorkspaceCommand(CLI::App& app)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const workspace = app.add_subcommand("workspace", "lists, makes, changes and checks workspaces");
    workspace->require_subcommand(1);
    workspace
        ->add_option("--mode", arguments->mode, "come up for desktop or tablet; the system's state if it is not given")
        ->check(CLI::IsMember({"desktop", "tablet"}));
    AddListingCommands(*workspace, arguments);
    AddChangingCommands(*workspace, arguments);
    AddIconCommands(*workspace, arguments);
}
