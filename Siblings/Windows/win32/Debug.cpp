// The debugger's channel.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
class Win32Debug final : public Debug {
public:
    void Output(const std::wstring& text) override { OutputDebugStringW(text.c_str()); }
};
}   // namespace

template <>
Debug& SystemPort<Debug>()
{
    static Win32Debug debug;
    return debug;
}

}   // namespace Ports
