#include "PathExports.h"

#include "CFileLocations.h"

#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/DataFolders.h"

#include <cwchar>

namespace {
template <class Source>
void CopyText(wchar_t* buffer, Source source) noexcept
try {
    const TvlString text = source();
    std::wcscpy(buffer, text.c_str());
} catch (...) {
    *buffer = L'\0';   // callers know of no exceptions
}
}   // namespace

extern "C" {

void GetAppDir(wchar_t* buffer) noexcept { CopyText(buffer, INIGetAppDir); }

void GetColorPalettesDir(wchar_t* buffer) noexcept
{
    CopyText(buffer, CFileLocations::GetFileLocationsColorPalettesDir);
}
void GetFillsDir(wchar_t* buffer) noexcept { CopyText(buffer, CFileLocations::GetFileLocationsFillsDir); }
void GetFontsDir(wchar_t* buffer) noexcept { CopyText(buffer, CFileLocations::GetFileLocationsFontsDir); }
void GetImageListsDir(wchar_t* buffer) noexcept { CopyText(buffer, CFileLocations::GetFileLocationsImageListsDir); }
void GetPhotoFramesDir(wchar_t* buffer) noexcept { CopyText(buffer, CFileLocations::GetFileLocationsPhotoFramesDir); }

void GetTemplatesDir(wchar_t* buffer) noexcept { CopyText(buffer, CFileLocations::GetFileLocationsTemplatesDir); }

void GetAppUIName(wchar_t* buffer) noexcept
{
    CopyText(buffer, [] { return GetAppSkinSettingData().GetAppUIName(); });
}
}
