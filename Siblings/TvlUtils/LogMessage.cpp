#include "siblings/TvlUtils/LogMessage.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Debug.h"

#include <algorithm>
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

/// Messages hold names and texts from files. A terminal would obey what is no character of them, and a line's end would
/// let a file write lines of its own.
std::wstring OneLine(std::wstring text)
{
    const auto isControl = [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029; };
    std::replace_if(text.begin(), text.end(), isControl, L' ');
    return text;
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
    const std::wstring line = OneLine(text.Std());
    const std::string bytes = TvlPlatform::ToUtf8(line);
    std::fprintf(stderr, "%s: %s\n", kNames[static_cast<int>(level)], bytes.c_str());
    Ports::Debug::Get().Output(line + L"\n");
} catch (...) {
    // A line that can't be written is lost: the log must not bring its caller down.
}

void SetLogReceiver(std::function<void(LogLevel, const TvlString&)> receiver)
{
    const std::lock_guard hold(logLock);
    Receiver() = std::move(receiver);
}

}   // namespace TvlUtils
