// Folders and names for callers without the suite's string. Each function copies its text with a zero at the end to
// `buffer` without a bound: the caller gives room enough.
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
