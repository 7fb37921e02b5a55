// Paths in private profile (.ini) files.
#pragma once

#include "TvlUtlApi.h"

/// Copies the path that a value in a profile file names to `out`: relative to `base`, with "." and ".." worked out. An
/// absolute value stands alone, values longer than 259 characters are cut, and without a value `base` stands for it.
/// @param outSize characters of `out`, end mark included
/// @return length of the path; 0 with an empty text when it has `outSize` characters or more
TVLUTL_API ULONG UTLGetPrivateProfileRelPath(const wchar_t* section, const wchar_t* key, const wchar_t* base,
    wchar_t* out, ULONG outSize, const wchar_t* iniFile);
