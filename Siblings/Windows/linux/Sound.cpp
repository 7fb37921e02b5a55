// Event sounds through libcanberra, which is loaded when sounds are switched on: a machine without it is silent.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdint>
#include <filesystem>
#include <mutex>

namespace Ports {

namespace {
struct Context;   // libcanberra's

constexpr std::uint32_t kSoundId = 1;   // one sound at a time, as PlaySound has it

class LinuxSound final : public Sound {
public:
    bool Load() override
    {
        const std::scoped_lock hold(m_lock);
        if (m_context)
            return true;
        Modules& modules = Modules::Get();
        const HMODULE library = modules.LoadFromSystem(L"libcanberra.so.0");
        if (!library)
            return false;
        const auto create = reinterpret_cast<int (*)(Context**)>(modules.Address(library, "ca_context_create"));
        m_play = reinterpret_cast<Play_t>(modules.Address(library, "ca_context_play"));
        m_cancel = reinterpret_cast<Cancel_t>(modules.Address(library, "ca_context_cancel"));
        return create && m_play && m_cancel && create(&m_context) == 0;
    }

    std::optional<bool> Play(const wchar_t* name, DWORD) override
    {
        const std::scoped_lock hold(m_lock);
        if (!m_context)
            return std::nullopt;
        m_cancel(m_context, kSoundId);
        if (!name)
            return true;
        const std::string text = TvlPlatform::ToUtf8(name);
        std::error_code ignored;
        const bool isFile = std::filesystem::is_regular_file(text, ignored);
        const char* const property = isFile ? "media.filename" : "event.id";
        return m_play(m_context, kSoundId, property, text.c_str(), static_cast<const char*>(nullptr)) == 0;
    }

private:
    using Play_t = int (*)(Context*, std::uint32_t id, ...);
    using Cancel_t = int (*)(Context*, std::uint32_t id);

    std::mutex m_lock;
    Context* m_context = nullptr;   // lives as long as the process, like the library
    Play_t m_play = nullptr;
    Cancel_t m_cancel = nullptr;
};
}   // namespace

template <>
Sound& SystemPort<Sound>()
{
    static LinuxSound sound;
    return sound;
}

}   // namespace Ports
