// What the module of the network offers. libcurl brings two dozen libraries with it, whose loading takes as long as that
// of all others together: programs that open no address go without.
#pragma once

#include "windows/Internet.h"

namespace Ports {

/// The operations of Internet that need libcurl.
struct InternetModule {
    bool (*isUrl)(const std::wstring& url);
    std::unique_ptr<InternetFile> (*openUrl)(
        const std::wstring& agent, const std::wstring& url, const std::wstring& headers);
};

}   // namespace Ports

/// The one name that the module exports.
extern "C" __attribute__((visibility("default"))) const Ports::InternetModule kTvlInternetModule;
