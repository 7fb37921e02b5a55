#include "siblings/TvlUtils/LogMessage.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Debug.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace TvlUtils {

namespace {
std::mutex logLock;
std::atomic<int> vlogLevel = 0;
std::atomic<LogLevel> lowestLevel = LogLevel::Info;

std::function<void(LogLevel, const TvlString&)>& Receiver()
{
    static std::function<void(LogLevel, const TvlString&)> receiver;
    return receiver;
}
}   // namespace

int GetVlogLevel() noexcept { return vlogLevel.load(std::memory_order_relaxed); }
void SetVlogLevel(int level) noexcept { vlogLevel.store(level, std::memory_order_relaxed); }

bool ShouldCreateLogMessage(LogLevel level) noexcept { return level >= lowestLevel.load(std::memory_order_relaxed); }
void SetLowestLogLevel(LogLevel level) noexcept { lowestLevel.store(level, std::memory_order_relaxed); }

void LogMessage(LogLevel level, const TvlString& text) noexcept
try {
    if (!ShouldCreateLogMessage(level))
        return;
    static constexpr const char* kNames[] = {"info", "warning", "error"};
    const std::lock_guard hold(logLock);
    if (Receiver())
        return Receiver()(level, text);
    const std::string bytes = TvlPlatform::ToUtf8(text);
    std::fprintf(stderr, "%s: %s\n", kNames[static_cast<int>(level)], bytes.c_str());
    Ports::Debug::Get().Output(text.Std() + L"\n");
} catch (...) {
    // A line that can't be written is lost: the log must not bring its caller down.
}

void SetLogReceiver(std::function<void(LogLevel, const TvlString&)> receiver)
{
    const std::lock_guard hold(logLock);
    Receiver() = std::move(receiver);
}

}   // namespace TvlUtils
