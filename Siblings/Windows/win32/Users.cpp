// The user and the keys, as Windows tells them.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
constexpr int kNameDisplay = 3;                 // NameDisplay of EXTENDED_NAME_FORMAT
constexpr DWORD kMostAccountCharacters = 256;   // UNLEN

class Win32Users final : public Users {
public:
    std::wstring DisplayName() const override
    {
        using GetUserNameEx_t = BOOLEAN(WINAPI*)(int, wchar_t*, ULONG*);
        // Loaded once and kept: the name may be asked for often.
        static const HMODULE library = Modules::Get().LoadFromSystem(L"Secur32.dll");
        const auto getName =
            library ? reinterpret_cast<GetUserNameEx_t>(Modules::Get().Address(library, "GetUserNameExW")) : nullptr;
        ULONG size = 0;
        if (!getName || getName(kNameDisplay, nullptr, &size) || GetLastError() != ERROR_MORE_DATA)
            return {};
        std::wstring name(size, L'\0');
        if (!getName(kNameDisplay, name.data(), &size))
            return {};
        return name.c_str();
    }

    std::wstring AccountName() const override
    {
        wchar_t name[kMostAccountCharacters + 1] = {};
        DWORD size = kMostAccountCharacters + 1;
        return GetUserNameW(name, &size) ? name : L"";
    }
};

class Win32Keyboard final : public Keyboard {
public:
    bool IsDown(int virtualKey) const override { return GetKeyState(virtualKey) < 0; }
};
}   // namespace

template <>
Users& SystemPort<Users>()
{
    static Win32Users users;
    return users;
}

template <>
Keyboard& SystemPort<Keyboard>()
{
    static Win32Keyboard keyboard;
    return keyboard;
}

}   // namespace Ports
