#include "RuntimeVersion.h"

#include "DotNet.h"
#include "WUTLRegistry.h"
#include "windows/ManagedRuntimes.h"

#include <algorithm>
#include <stdexcept>

namespace TvlUtl {

namespace {
constexpr RuntimeVersion kLeastRuntime{4, 0, 30319};
constexpr RuntimeVersion kLeastFramework{4, 7, 0};
constexpr const wchar_t* kFrameworkKey = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\NET Framework Setup\\NDP\\v4\\Full";

unsigned ParseNumber(std::wstring_view digits)
{
    unsigned value = 0;
    for (const wchar_t c : digits) {
        // Letters pass: versions with a word in them are compared by what it makes of the number.
        if (c < L'0')
            throw std::invalid_argument("Invalid digit encountered");
        value = value * 10 + (static_cast<unsigned>(c) - L'0');
    }
    return value;
}

bool HasRuntime()
{
    const auto versions = Ports::ManagedRuntimes::Get().Installed();
    return versions && std::any_of(versions->begin(), versions->end(), [](const std::wstring& version) {
        return ParseRuntimeVersion(version) >= kLeastRuntime;
    });
}

bool HasFramework()
{
    const WUTLRegistry key(kFrameworkKey, WUTLRegistry::kReadAccess);
    ULONG install = 0;
    TvlString version;
    return key.GetValue(L"Install", install) == 0 && key.GetValue(L"Version", version) == 0
        && ParseRuntimeVersion(version) >= kLeastFramework;
}
}   // namespace

RuntimeVersion ParseRuntimeVersion(std::wstring_view text)
{
    RuntimeVersion version;
    if (text.starts_with(L'v'))
        text.remove_prefix(1);
    for (unsigned* const number : {&version.majorNumber, &version.minorNumber, &version.build}) {
        const std::size_t point = std::min(text.find(L'.'), text.size());
        *number = ParseNumber(text.substr(0, point));
        text.remove_prefix(std::min(point + 1, text.size()));
    }
    return version;
}

bool DetectDotNet()
try {
    return HasRuntime() && HasFramework();
} catch (const std::invalid_argument&) {
    return false;   // a version that can't be read
}

bool IsDotNetInstalled()
{
    static const bool installed = DetectDotNet();
    return installed;
}

bool IsNewDotNetInstalled() { return IsDotNetInstalled(); }

}   // namespace TvlUtl
