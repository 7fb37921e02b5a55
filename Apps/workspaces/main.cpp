// Makes the stock workspaces from their sources: make_workspaces SOURCES TARGET
//
// Each folder of SOURCES becomes a workspace of its name in the folder TARGET. "workspace.json" has its properties, with
// texts by language; "thumbnail.jpg" is its picture, and everything else is its content.
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"
#include "windows/Modules.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace {
namespace fs = std::filesystem;
namespace SystemIO = TvlUtils::SystemIO;
using TvlPlatform::FromUtf8;

constexpr const char* kProperties = "workspace.json";
constexpr const char* kThumbnail = "thumbnail.jpg";

void Require(bool done, const fs::path& what)
{
    if (!done)
        throw std::runtime_error(what.string() + " can't be taken");
}

nlohmann::json ReadProperties(const fs::path& file)
{
    std::string bytes;
    Require(static_cast<bool>(SystemIO::File::ReadAll(SystemIO::FromFilePath(file), bytes)), file);
    return nlohmann::json::parse(bytes);
}

void SetProperties(WorkspaceContainer& container, const nlohmann::json& properties)
{
    namespace Schema = ZipContainerSchema::Metadata;
    const auto setTexts = [&](const char* name, const Metadata::Definition& property) {
        for (const auto& [language, text] : properties.at(name).items())
            container.SetStringMetadata(property, FromUtf8(language), FromUtf8(text.get<std::string>()));
    };
    const auto identifier = [&](const char* name) {
        return TvlUtils::Guid(TvlString(FromUtf8(properties.at(name).get<std::string>())));
    };
    setTexts("title", Schema::Title);
    setTexts("category", WorkspaceContainerSchema::Metadata::Category);
    setTexts("description", Schema::Description);
    container.SetMetadata(WorkspaceContainerSchema::Metadata::UIOrder, properties.at("order").get<int>());
    container.SetMetadata(Schema::DocumentID, identifier("document"));
    container.SetMetadata(Schema::InstanceID, identifier("instance"));
}

void AddContent(WorkspaceContainer& container, const fs::path& source)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());   // the same file whatever the order on disk
    for (const fs::path& file : files) {
        if (file.filename() == kProperties)
            continue;
        const TvlString path = SystemIO::FromFilePath(file);
        const TvlString name = FromUtf8(file.lexically_relative(source).generic_string());
        Require(file.filename() == kThumbnail
                ? container.AddThumbnail(path)
                : container.AddFile(ZipContainerSchema::GetContentFilename(name), path, false, nullptr),
            file);
    }
}

void Make(const fs::path& source, const fs::path& target)
{
    WorkspaceContainer container = WorkspaceContainer::Create(SystemIO::FromFilePath(target));
    Require(static_cast<bool>(container), target);
    SetProperties(container, ReadProperties(source / kProperties));
    AddContent(container, source);
    Require(container.Close(), target);
    std::cout << target.string() << '\n';
}
}   // namespace

int main()
try {
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() != 2) {
        std::cerr << "make_workspaces SOURCES TARGET\n";
        return 2;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(SystemIO::ToFilePath(arguments[0])))
        if (entry.is_directory())
            Make(entry.path(), SystemIO::ToFilePath(arguments[1]) / fs::path(entry.path().filename()).concat(".tvws"));
    return 0;
} catch (const std::exception& failure) {
    std::cerr << "make_workspaces: " << failure.what() << '\n';
    return 1;
}
