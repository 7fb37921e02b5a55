// Files from the network.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtl {

/// Reads what an http or https address answers into a file, and returns when all is there. The answer may be compressed
/// by gzip or deflate; the file is not. Redirections are followed, no proxy is used and nobody is asked for a password.
/// The HTTP status is not looked at: an error page is a file like any other, and so is what came in before a connection
/// broke, the server said nothing more for a minute, or the disk was full. Memory use does not depend on the size.
/// The bytes go to a new file beside `destination`, "<8 digits of its name>.<16 digits>.aside", which is flushed and takes
/// that name in the end; an older file is replaced. What a killed download has left there goes with the next one to the
/// same file that ends two minutes later or more: until then its process may be at work.
/// @return whether at least one byte was stored under the name `destination`: false for an empty answer, which
///         leaves an empty file. False without a file, and with an older one as it was, when the address is none or
///         can't be reached, or when the answer has more than 4 GiB, of which the log tells.
TVLUTL_API bool WinInetGzipDownload(const TvlString& url, const TvlString& destination);

}   // namespace TvlUtl
