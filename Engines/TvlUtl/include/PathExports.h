// Folders and names for callers without the suite's string. Each function copies its text with a zero at the end to
// `buffer` without a bound: the caller gives room enough. A folder is a default of the suite or one that exists, so
// that no text of a preference is longer than what the system takes for a name: 4,096 characters hold any folder on
// linux and 32,768 on windows, end mark included; where programs are not set up for long paths, 260 do on windows.
// Who would rather not count on that takes CFileLocations.
#pragma once

#include "TvlUtlApi.h"

extern "C" {

/// The folder of the running program.
TVLUTL_API void GetAppDir(wchar_t* buffer) noexcept;
/// @{
/// Folders of the user's content, as CFileLocations gives them.
TVLUTL_API void GetColorPalettesDir(wchar_t* buffer) noexcept;
TVLUTL_API void GetFillsDir(wchar_t* buffer) noexcept;
TVLUTL_API void GetFontsDir(wchar_t* buffer) noexcept;
TVLUTL_API void GetImageListsDir(wchar_t* buffer) noexcept;
TVLUTL_API void GetPhotoFramesDir(wchar_t* buffer) noexcept;
TVLUTL_API void GetTemplatesDir(wchar_t* buffer) noexcept;
/// @}

/// The application's display name.
TVLUTL_API void GetAppUIName(wchar_t* buffer) noexcept;
}
