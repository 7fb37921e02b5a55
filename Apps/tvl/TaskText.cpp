#include "TaskText.h"

#include <algorithm>
#include <cmath>

namespace {
using Seconds = std::chrono::duration<double>;

// Rates of the first moments tell nothing.
constexpr Seconds kSettled{1.0};

std::wstring TwoDigits(long long value) { return (value < 10 ? L"0" : L"") + std::to_wstring(value); }

std::wstring OneDecimal(double value)
{
    const long long tenths = std::llround(value * 10.0);
    return std::to_wstring(tenths / 10) + L"." + std::to_wstring(tenths % 10);
}

std::wstring Bar(double done, std::size_t width)
{
    const auto filled = std::min(width, static_cast<std::size_t>(done * static_cast<double>(width)));
    return L"[" + std::wstring(filled, L'#') + std::wstring(width - filled, L' ') + L"] ";
}
}   // namespace

std::wstring SpanText(std::chrono::steady_clock::duration span)
{
    const long long seconds = std::max<long long>(0, std::chrono::round<std::chrono::seconds>(span).count());
    const long long minutes = seconds / 60;
    if (minutes < 60)
        return std::to_wstring(minutes) + L":" + TwoDigits(seconds % 60);
    return std::to_wstring(minutes / 60) + L":" + TwoDigits(minutes % 60) + L":" + TwoDigits(seconds % 60);
}

int WholePercent(double progress)
{
    constexpr double kRounding = 1e-9;   // 57 of 100 are not 56 percent
    return static_cast<int>(std::clamp(progress, 0.0, 1.0) * 100.0 + kRounding);
}

std::wstring ProgressText(
    TvlUtl::ITaskProgress& task, std::chrono::steady_clock::duration elapsed, std::size_t barWidth)
{
    const double done = std::min(task.GetProgress(), 1.0);
    const std::wstring step = task.GetStepName().Std();
    if (done <= 0.0)
        return step;
    const std::wstring percent = std::to_wstring(WholePercent(done));
    std::wstring text =
        (barWidth > 0 ? Bar(done, barWidth) : L"") + std::wstring(3 - percent.size(), L' ') + percent + L" %";
    const Seconds passed = elapsed;
    if (passed >= kSettled) {
        const Seconds left = passed * ((1.0 - done) / done);
        text += L"  " + OneDecimal(done * 100.0 / passed.count()) + L" %/s  "
            + SpanText(std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                std::min(left, Seconds(std::chrono::hours(999)))))
            + L" left";
    }
    return step.empty() ? text : text + L"  " + step;
}

std::wstring EndText(TvlUtl::ITaskProgress& task, std::chrono::steady_clock::duration elapsed)
{
    if (task.HasError())
        return L"failed: " + task.GetErrorText().Std();
    return task.IsCancelled() ? L"cancelled" : L"done in " + SpanText(elapsed);
}
