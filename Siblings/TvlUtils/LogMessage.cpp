#include "siblings/TvlUtils/LogMessage.h"

#include "siblings/TvlPlatform/OneLine.h"
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

// Messages hold names and texts from files, which may be of any length. In characters, without the note behind it.
constexpr std::size_t kLongestLine = 16 * 1024;

std::wstring Shortened(const std::wstring& text)
{
    const bool isPairCut = sizeof(wchar_t) == 2 && (text[kLongestLine - 1] & 0xFC00) == 0xD800;
    const std::size_t kept = kLongestLine - (isPairCut ? 1 : 0);
    return text.substr(0, kept) + L"... (" + std::to_wstring(text.size() - kept) + L" more characters)";
}

void Write(LogLevel level, const std::wstring& text)
{
    static constexpr const char* kNames[] = {"info", "warning", "error"};
    const std::wstring line = TvlPlatform::OneLine(text, L' ');
    const std::string bytes = TvlPlatform::ToUtf8(line);
    std::fprintf(stderr, "%s: %s\n", kNames[static_cast<int>(level)], bytes.c_str());
    Ports::Debug::Get().Output(line + L"\n");
}

void WriteOrPass(LogLevel level, const TvlString& text)
{
    const std::lock_guard hold(logLock);
    if (Receiver())
        return Receiver()(level, text);
    Write(level, text.Std());
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
    if (text.Std().size() > kLongestLine)
        return WriteOrPass(level, Shortened(text.Std()));
    WriteOrPass(level, text);
} catch (...) {
    // A line that can't be written is lost: the log must not bring its caller down.
}

void SetLogReceiver(std::function<void(LogLevel, const TvlString&)> receiver)
{
    const std::lock_guard hold(logLock);
    Receiver() = std::move(receiver);
}

}   // namespace TvlUtils
