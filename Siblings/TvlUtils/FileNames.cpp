// Files that get another name, and names that nobody has.
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cstdint>
#include <cstdio>
#include <random>

namespace TvlUtils::SystemIO {

bool File::Move(const TvlString& from, const TvlString& to)
try {
    return static_cast<bool>(FileLayer::Get().Rename(ToFilePath(from), ToFilePath(to)));
} catch (const std::system_error&) {
    return false;   // a name that the file system can't express
}

TvlString Path::GetAbsolutePath(const TvlString& first, const TvlString& second)
{
    return FromFilePath(ToFilePath(Combine(first, second)).lexically_normal());
}

TvlString Path::GetTempFileNameW(const TvlString& folder, const TvlString& prefix, const TvlString& extension)
{
    std::random_device random;
    char digits[17];
    std::snprintf(digits, sizeof digits, "%08x%08x", random(), random());
    return Combine(folder, prefix + TvlString(std::wstring(digits, digits + sizeof digits - 1)), extension);
}

}   // namespace TvlUtils::SystemIO
