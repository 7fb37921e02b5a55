#include "siblings/TvlUtils/FilePath.h"

#include "siblings/TvlPlatform/TextEncoding.h"

namespace TvlUtils::SystemIO {

std::filesystem::path ToFilePath(const TvlString& text)
{
    const std::string bytes = TvlPlatform::ToUtf8(text);
    return std::u8string(bytes.begin(), bytes.end());
}

TvlString FromFilePath(const std::filesystem::path& path)
{
    const std::u8string bytes = path.u8string();
    return TvlPlatform::FromUtf8(std::string(bytes.begin(), bytes.end()));
}

}   // namespace TvlUtils::SystemIO
