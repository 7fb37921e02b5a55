#include "Windows/FlushFile.h"

#include <fcntl.h>
#include <unistd.h>

namespace Ports {

bool FlushFile(const std::filesystem::path& path)
{
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool flushed = fsync(file) == 0;
    return close(file) == 0 && flushed;
}

}   // namespace Ports
