// tvl download: what an address answers, in a file.
#include "Commands.h"
#include "Download.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace {
struct Request {
    std::string url;
    std::string file;

    void Run() const
    {
        if (!TvlUtl::WinInetGzipDownload(TvlPlatform::FromUtf8(url), TvlPlatform::FromUtf8(file)))
            EndWithBadInput("nothing of \"" + url + "\" could be stored in \"" + file + "\"");
    }
};
}   // namespace

void AddDownloadCommand(CLI::App& app)
{
    const auto request = std::make_shared<Request>();
    CLI::App* const command = app.add_subcommand("download", "stores in a file what an http or https address answers");
    command->add_option("url", request->url, "the address")->required();
    command->add_option("file", request->file, "the file; an older one is replaced")->required();
    command->callback([request] { request->Run(); });
}
