// Sounds through WINMM.DLL, which is loaded when sounds are switched on.
#include "Windows/SystemPorts.h"

#include <atomic>
#include <windows.h>

namespace Ports {

namespace {
class Win32Sound final : public Sound {
public:
    bool Load() override
    {
        if (!m_library)
            m_library = Modules::Get().LoadFromSystem(L"WINMM.DLL");
        return m_library;
    }

    std::optional<bool> Play(const wchar_t* name, DWORD flags) override
    {
        using PlaySound_t = BOOL(WINAPI*)(const wchar_t*, HMODULE, DWORD);
        const HMODULE library = m_library;
        const auto play =
            library ? reinterpret_cast<PlaySound_t>(Modules::Get().Address(library, "PlaySoundW")) : nullptr;
        if (!play)
            return std::nullopt;
        return play(name, nullptr, flags);
    }

private:
    std::atomic<HMODULE> m_library = nullptr;
};
}   // namespace

template <>
Sound& SystemPort<Sound>()
{
    static Win32Sound sound;
    return sound;
}

}   // namespace Ports
