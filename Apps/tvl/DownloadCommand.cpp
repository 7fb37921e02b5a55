// tvl download: what an address answers, in a file.
#include "CancellableInternet.h"
#include "CommandTask.h"
#include "Commands.h"
#include "Download.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace {
struct Request {
    std::string url;
    std::string file;

    bool Download() const
    {
        CommandTask running(L"Downloading");
        CancellableInternet internet(running.Task());
        return TvlUtl::WinInetGzipDownload(TvlPlatform::FromUtf8(url), TvlPlatform::FromUtf8(file));
    }

    void Run() const
    try {
        if (!Download())
            EndWithBadInput("nothing of \"" + url + "\" could be stored in \"" + file + "\"");
    } catch (const DownloadCancelled&) {
        // The thread that fetches may still wait for its server: nothing may be taken down under it.
        std::cout.flush();
        std::cerr.flush();
        std::_Exit(kInterrupted);
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
