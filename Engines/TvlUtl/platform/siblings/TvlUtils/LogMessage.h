// The suite's log.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <functional>

namespace TvlUtils {

/// How grave a line is: what went as it should, what was worked around, what could not be done.
enum class LogLevel : int { Info = 0, Warning = 1, Error = 2 };

/// Writes one line to the log: the receiver set by SetLogReceiver, or else standard error and the debugger. Of a line of
/// more than 16,384 characters the rest is left out, and counted at its end. Safe from any thread. Never throws.
TVLSIBLINGS_API void LogMessage(LogLevel level, const TvlString& text) noexcept;

/// How much the log tells of what goes right: 0, the default, for nothing, 1 for each large step, higher ones for more.
TVLSIBLINGS_API int GetVlogLevel() noexcept;
/// Sets GetVlogLevel for the process. Any thread may call.
TVLSIBLINGS_API void SetVlogLevel(int level) noexcept;
/// Whether lines of a level are written; ask before composing a long one.
TVLSIBLINGS_API bool ShouldCreateLogMessage(LogLevel level) noexcept;
/// Lines below this level are left out from now on; Info, the default, leaves none out.
TVLSIBLINGS_API void SetLowestLogLevel(LogLevel level) noexcept;

/// Takes the log over; an empty function gives it back to standard error. The receiver is called under a lock and must
/// not log itself.
TVLSIBLINGS_API void SetLogReceiver(std::function<void(LogLevel, const TvlString&)> receiver);

}   // namespace TvlUtils
