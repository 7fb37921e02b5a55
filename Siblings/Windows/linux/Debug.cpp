// The debugger's channel on linux: standard error, when the user asks for it.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdio>
#include <cstdlib>

namespace Ports {

namespace {
class LinuxDebug final : public Debug {
public:
    void Output(const std::wstring& text) override
    {
        static const bool wanted = std::getenv("TVL_DEBUG") != nullptr;
        if (wanted)
            std::fputs(TvlPlatform::ToUtf8(text).c_str(), stderr);
    }
};
}   // namespace

template <>
Debug& SystemPort<Debug>()
{
    static LinuxDebug debug;
    return debug;
}

}   // namespace Ports
