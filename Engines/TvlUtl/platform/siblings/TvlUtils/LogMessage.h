// The suite's log.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <functional>

namespace TvlUtils {

enum class LogLevel : int { Info = 0, Warning = 1, Error = 2 };

/// Writes one line to the log: the receiver set by SetLogReceiver, or else standard error and the debugger.
/// Safe from any thread. Never throws.
TVLSIBLINGS_API void LogMessage(LogLevel level, const TvlString& text) noexcept;

/// Takes the log over; an empty function gives it back to standard error. The receiver is called under a lock and must
/// not log itself.
TVLSIBLINGS_API void SetLogReceiver(std::function<void(LogLevel, const TvlString&)> receiver);

}   // namespace TvlUtils
