#include "siblings/TvlUtils/FileStat.h"

#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/FilePath.h"

namespace TvlUtils::SystemIO {

FileStat File::GetFileStat(const TvlString& path)
{
    FileStatus status;
    if (!FileLayer::Get().Stat(ToFilePath(path), status))
        return {};
    const auto time = std::chrono::file_clock::to_sys(status.modified);
    return {status.size, Time(std::chrono::time_point_cast<std::chrono::nanoseconds>(time))};
}

}   // namespace TvlUtils::SystemIO
