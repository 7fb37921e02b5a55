// The network: transfers by a module that is loaded when the first address is looked at, and lies beside this library.
#include "Windows/SystemPorts.h"
#include "Windows/linux/internet/InternetModule.h"

#include <dlfcn.h>
#include <filesystem>
#include <ifaddrs.h>
#include <net/if.h>

namespace Ports {

namespace {
/// Null when there is no such module.
const InternetModule* Load()
{
    static const char inThisLibrary = 0;
    Dl_info library = {};
    if (dladdr(&inThisLibrary, &library) == 0)
        return nullptr;
    const auto path = std::filesystem::path(library.dli_fname).replace_filename(TVL_INTERNET_MODULE);
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);   // for as long as the process lives
    return module ? static_cast<const InternetModule*>(dlsym(module, "kTvlInternetModule")) : nullptr;
}

const InternetModule* Module()
{
    static const InternetModule* const module = Load();
    return module;
}

class LinuxInternet final : public Internet {
public:
    bool IsConnected() const override
    {
        ifaddrs* list = nullptr;
        if (getifaddrs(&list) != 0)
            return false;
        bool connected = false;
        for (const ifaddrs* entry = list; entry; entry = entry->ifa_next) {
            constexpr unsigned kUsable = IFF_UP | IFF_RUNNING;
            connected |= entry->ifa_addr && (entry->ifa_flags & (kUsable | IFF_LOOPBACK)) == kUsable;
        }
        freeifaddrs(list);
        return connected;
    }

    bool IsUrl(const std::wstring& url) const override { return Module() && Module()->isUrl(url); }

    std::unique_ptr<InternetFile> OpenUrl(
        const std::wstring& agent, const std::wstring& url, const std::wstring& headers) override
    {
        return Module() ? Module()->openUrl(agent, url, headers) : nullptr;
    }
};
}   // namespace

template <>
Internet& SystemPort<Internet>()
{
    static LinuxInternet internet;
    return internet;
}

}   // namespace Ports
