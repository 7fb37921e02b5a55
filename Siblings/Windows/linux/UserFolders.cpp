// The user's folders by the XDG base directories.
#include "Windows/SystemPorts.h"

namespace Ports {

namespace {
class LinuxUserFolders final : public UserFolders {
public:
    std::wstring ApplicationData() const override
    {
        const Environment& environment = Environment::Get();
        // A relative path is to be ignored there.
        if (const auto folder = environment.Variable(L"XDG_CONFIG_HOME"); folder && folder->starts_with(L'/'))
            return *folder;
        const auto home = environment.Variable(L"HOME");
        return home && !home->empty() ? *home + L"/.config" : std::wstring();
    }
};
}   // namespace

template <>
UserFolders& SystemPort<UserFolders>()
{
    static LinuxUserFolders folders;
    return folders;
}

}   // namespace Ports
