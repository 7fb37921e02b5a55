// Versions of managed runtimes: numbers come out, or the one failure that there is.
#include "RuntimeVersion.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdint>
#include <stdexcept>

namespace {
/// Whether one of the first three numbers has a character below "0" in it, which refuses the text.
bool IsRefused(std::wstring_view text)
{
    int points = 0;
    for (const wchar_t c : text) {
        points += c == L'.';
        if (points == 3)
            return false;
        if (c != L'.' && c < L'0')
            return true;
    }
    return false;
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data), size});
    bool refused = false;
    try {
        TvlUtl::ParseRuntimeVersion(text);
    } catch (const std::invalid_argument&) {
        refused = true;
    }
    if (refused != IsRefused(text))
        __builtin_trap();
    return 0;
}
