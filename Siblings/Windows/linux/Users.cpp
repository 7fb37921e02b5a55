// The user from the password database, and what linux has nothing of: managed runtimes and keys.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cerrno>
#include <pwd.h>
#include <unistd.h>

namespace Ports {

namespace {
constexpr std::size_t kMostAccountCharacters = 256;   // as UNLEN of the Windows headers

/// Calls `take` with the user's entry; empty when there is none.
template <class Take>
std::wstring FromEntry(Take take)
{
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    while (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found ? TvlPlatform::FromUtf8(take(*found)) : std::wstring();
}

class LinuxUsers final : public Users {
public:
    std::wstring DisplayName() const override
    {
        // The first of the fields that commas part.
        return FromEntry([](const passwd& entry) {
            const std::string_view fields = entry.pw_gecos ? entry.pw_gecos : "";
            return fields.substr(0, fields.find(','));
        });
    }

    std::wstring AccountName() const override
    {
        return FromEntry([](const passwd& entry) {
            return std::string_view(entry.pw_name);
        }).substr(0, kMostAccountCharacters);
    }
};

class LinuxManagedRuntimes final : public ManagedRuntimes {
public:
    std::optional<std::vector<std::wstring>> Installed() const override { return std::nullopt; }
};

class LinuxKeyboard final : public Keyboard {
public:
    bool IsDown(int) const override { return false; }
};
}   // namespace

template <>
Users& SystemPort<Users>()
{
    static LinuxUsers users;
    return users;
}

template <>
ManagedRuntimes& SystemPort<ManagedRuntimes>()
{
    static LinuxManagedRuntimes runtimes;
    return runtimes;
}

template <>
Keyboard& SystemPort<Keyboard>()
{
    static LinuxKeyboard keyboard;
    return keyboard;
}

}   // namespace Ports
