// What a file system tells of a file.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Time.h"

namespace TvlUtils::SystemIO {

/// Size and time of the last change.
struct FileStat {
    long long size = 0;   // bytes
    Time time;            // of the last change

    /// To the byte and the tick.
    bool operator==(const FileStat&) const = default;
};

namespace File {
/// Zeros when there is no such file.
TVLSIBLINGS_API FileStat GetFileStat(const TvlString& path);
}   // namespace File

}   // namespace TvlUtils::SystemIO
