// Byte counts as text for people.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtl {

/// Class of a byte count, in powers of 1024.
enum ESizeType : int {
    eSizeBytes = 0,       ///< below 1024 bytes
    eSizeKilobytes = 1,   ///< from 1024 bytes on
    eSizeMegabytes = 2,   ///< from 1024 kilobytes on
    eSizeGigabytes = 3,   ///< from 1024 megabytes on
    eSizeTerabytes = 4,   ///< from 1024 gigabytes on
};

/// The greatest class that `bytes` fills at least once; `value` becomes the count in it.
TVLUTL_API ESizeType ConvertByteSize(unsigned long long bytes, double& value);
/// Name of a class in the user's language; any other value is named as bytes.
TVLUTL_API TvlString GetSizeTypeString(ESizeType type);
/// The number: whole for bytes and above 100, with one decimal above 10, else with two; a point whatever the locale.
/// `withUnit` appends a blank and the class' name.
TVLUTL_API TvlString FormatSizeType(ESizeType type, double value, bool withUnit);
/// ConvertByteSize and FormatSizeType with the unit.
TVLUTL_API TvlString FormatDataSize(unsigned long long bytes);

}   // namespace TvlUtl
