// Files and folders by path.
#pragma once

#include "siblings/SiblingsApi.h"

namespace TvlUtils::SystemIO::File {

/// Deletes a file; false when there is none or it can't be deleted.
TVLSIBLINGS_API bool Delete(const wchar_t* path);

}   // namespace TvlUtils::SystemIO::File
