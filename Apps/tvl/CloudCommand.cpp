// tvl cloud: the forms that an asset of the cloud has.
#include "CloudHelpers.h"
#include "Commands.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace {
namespace Cloud = TvlUtl::CloudHelpers;

/// A conversion of one text; empty for one that it does not know.
struct Conversion {
    const char* name;
    const char* description;
    const char* argument;
    TvlString (*convert)(const TvlString&);
    const char* problem;
};

constexpr Conversion kConversions[] = {
    {"escape", "makes names safe for the file system", "name",
        [](const TvlString& text) { return Cloud::EscapeFileName(text); }, "is no name"},
    {"unescape", "gives names back", "name", [](const TvlString& text) { return Cloud::UnescapeFileName(text); },
        "is no name"},
    {"id", "tells the cloud's identifier of local files", "file",
        [](const TvlString& text) { return Cloud::GetCloudFileIdByPath(text); }, "is no file of a cloud document"},
    {"asset", "tells the asset path of local files", "file",
        [](const TvlString& text) { return Cloud::GetCloudAssetIDFromFilePath(text); },
        "is no file of a cloud document"},
    {"local", "tells the local file of asset paths", "asset",
        [](const TvlString& text) { return Cloud::GetLocalPathForAssetPathFromCloud(text); }, "is no asset path"},
};

void Run(const Conversion& conversion, const std::vector<std::string>& texts)
{
    bool failed = false;
    for (const std::string& text : texts) {
        const TvlString result = conversion.convert(TvlPlatform::FromUtf8(text));
        if (!result.IsEmpty()) {
            std::cout << TvlPlatform::ToUtf8(result) << '\n';
            continue;
        }
        std::cout.flush();
        std::cerr << "tvl: \"" << text << "\" " << conversion.problem << '\n';
        failed = true;
    }
    std::cout.flush();
    if (failed)
        throw CLI::RuntimeError(kBadInput);
}

struct CloudFile {
    std::string id;
    std::string name;

    void Run() const
    {
        const TvlString path = Cloud::GetCloudFilePath(TvlPlatform::FromUtf8(id), TvlPlatform::FromUtf8(name));
        if (path.IsEmpty()) {
            std::cerr << "tvl: \"" << id << "\" and \"" << name << "\" name no cloud file\n";
            throw CLI::RuntimeError(kBadInput);
        }
        std::cout << TvlPlatform::ToUtf8(path) << '\n';
    }
};
}   // namespace

void AddCloudCommand(CLI::App& app)
{
    CLI::App* const cloud = app.add_subcommand("cloud", "converts names and paths of cloud documents");
    cloud->require_subcommand(1);
    for (const Conversion& conversion : kConversions) {
        const auto texts = std::make_shared<std::vector<std::string>>();
        CLI::App* const command = cloud->add_subcommand(conversion.name, conversion.description);
        command->add_option(conversion.argument, *texts, "what to convert")->required();
        command->callback([&conversion, texts] { Run(conversion, *texts); });
    }
    const auto file = std::make_shared<CloudFile>();
    CLI::App* const path = cloud->add_subcommand("path", "tells where the local file of a cloud document lies");
    path->add_option("id", file->id, "the cloud's identifier")->required();
    path->add_option("name", file->name, "the file's name in the cloud")->required();
    path->callback([file] { file->Run(); });
}
