// The user's folders by the XDG base directories.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <sstream>

namespace Ports {

namespace {
/// A folder that a variable names by its full path: a relative one is to be ignored there.
std::wstring NamedFolder(const wchar_t* variable)
{
    const auto folder = Environment::Get().Variable(variable);
    return folder && folder->starts_with(L'/') ? *folder : std::wstring();
}

/// The value of a line such as XDG_DOCUMENTS_DIR="$HOME/Documents"; the file is written for a shell, by a program that
/// puts nothing else into it. Empty when `line` is another one.
std::wstring AssignedFolder(const std::wstring& line, const std::wstring& name, const std::wstring& home)
{
    const std::wstring begin = name + L"=\"";
    if (!line.starts_with(begin) || !line.ends_with(L'"') || line.size() == begin.size())
        return std::wstring();
    const std::wstring value = line.substr(begin.size(), line.size() - begin.size() - 1);
    constexpr std::wstring_view kHome = L"$HOME/";
    if (value.starts_with(kHome))
        return home + L'/' + value.substr(kHome.size());
    return value.starts_with(L'/') ? value : std::wstring();
}

class LinuxUserFolders final : public UserFolders {
public:
    std::wstring ApplicationData() const override
    {
        const std::wstring named = NamedFolder(L"XDG_CONFIG_HOME");
        return named.empty() ? InHome(L"/.config") : named;
    }

    std::wstring Documents() const override
    {
        namespace SystemIO = TvlUtils::SystemIO;
        constexpr std::size_t kMostBytes = 1 << 16;
        std::string bytes;
        static_cast<void>(
            SystemIO::File::ReadAll(SystemIO::Path::Combine(ApplicationData(), L"user-dirs.dirs"), bytes, kMostBytes));
        std::istringstream lines(bytes);
        for (std::string line; std::getline(lines, line);) {
            const std::wstring folder =
                AssignedFolder(TvlPlatform::FromUtf8(line), L"XDG_DOCUMENTS_DIR", NamedFolder(L"HOME"));
            if (!folder.empty())
                return folder;
        }
        return InHome(L"/Documents");
    }

private:
    static std::wstring InHome(const wchar_t* name)
    {
        const std::wstring home = NamedFolder(L"HOME");
        return home.empty() ? std::wstring() : home + name;
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
