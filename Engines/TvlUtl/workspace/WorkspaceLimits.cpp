#include "WorkspaceLimits.h"

#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <algorithm>
#include <cwchar>

namespace {
using TextPreference = CPrefObject<TvlString, CAppPrefManager>;

constexpr long long kMegabyte = 1 << 20;
// Beyond these a process would run out of memory before it is done.
constexpr long long kMostMegabytes = 1024;
// None would keep out every workspace, also the one that would set the limit right again.
constexpr long long kLeastMegabytes = 1;
constexpr long long kMostIcons = 4096;

const TextPreference& MegabytesPreference()
{
    static const TextPreference preference(L"Workspaces/MaxEntryMegabytes", L"64");
    return preference;
}

const TextPreference& IconsPreference()
{
    static const TextPreference preference(L"Workspaces/MaxIcons", L"1000");
    return preference;
}

/// The preference's number, brought into its range; its default in place of a text that is none. Workspaces from anywhere
/// set preferences.
long long NumberOf(const TextPreference& preference, long long least, long long most)
{
    const auto read = [](const TvlString& text) {
        wchar_t* end = nullptr;
        const long long value = std::wcstoll(text.c_str(), &end, 10);
        return text.IsEmpty() || *end != L'\0' ? -1LL : value;
    };
    const long long value = read(preference.GetValue());
    return std::clamp(value < 0 ? read(preference.GetDefault()) : value, least, most);
}
}   // namespace

long long MaxWorkspaceEntryBytes()
{
    return NumberOf(MegabytesPreference(), kLeastMegabytes, kMostMegabytes) * kMegabyte;
}

std::size_t MaxWorkspaceIcons() { return static_cast<std::size_t>(NumberOf(IconsPreference(), 0, kMostIcons)); }

bool IconAllowance::HasRoom() const
{
    const bool hasRoom = m_icons > 0 && m_bytes >= 0;
    if (!hasRoom)
        TvlUtils::LogMessage(TvlUtils::LogLevel::Warning,
            L"Only some of the icons are taken, there are too many or they are too large: " + m_workspace);
    return hasRoom;
}

void IconAllowance::Take(long long bytes)
{
    --m_icons;
    m_bytes -= bytes;
}
