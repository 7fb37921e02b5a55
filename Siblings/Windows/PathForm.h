// How paths are written on this system.
#pragma once

#include <cstddef>
#include <string_view>

namespace TvlUtils::SystemIO {

#ifdef _WIN32
/// What separates the elements of a path; the first is the one to write.
inline constexpr std::wstring_view kPathSeparators = L"\\/";

/// Characters of a drive at the head of a path, such as "C:"; 0 when there is none.
constexpr std::size_t DriveLength(std::wstring_view path)
{
    const wchar_t letter = path.empty() ? L'\0' : static_cast<wchar_t>(path[0] | 0x20);
    return path.size() > 1 && path[1] == L':' && letter >= L'a' && letter <= L'z' ? 2 : 0;
}
#else
inline constexpr std::wstring_view kPathSeparators = L"/";

constexpr std::size_t DriveLength(std::wstring_view) { return 0; }
#endif

}   // namespace TvlUtils::SystemIO
