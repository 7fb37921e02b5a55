// What the standard library's files lack.
#pragma once

#include <filesystem>

namespace Ports {

/// Has the system put a written file on its medium; false when the file can't be opened or flushed.
bool FlushFile(const std::filesystem::path& path);

}   // namespace Ports
