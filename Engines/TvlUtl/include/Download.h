// Fetching a file from the network.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtl {

/// Fetches what an address answers into a file, unpacking gzip and deflate. Blocks for the whole transfer; no retry, no
/// timeout of its own, and no look at the HTTP status: an error page is fetched like any other body.
/// @return whether at least one block was written and the file could be put at `destination`; false for an empty body
TVLUTL_API bool WinInetGzipDownload(const TvlString& url, const TvlString& destination);

}   // namespace TvlUtl
