#include "siblings/TvlUtils/SystemIO.h"

#include <filesystem>

namespace TvlUtils::SystemIO::File {

bool Delete(const wchar_t* path)
try {
    std::error_code failed;
    return std::filesystem::remove(path, failed);
} catch (const std::exception&) {
    // A name that the file system can't express.
    return false;
}

}   // namespace TvlUtils::SystemIO::File
