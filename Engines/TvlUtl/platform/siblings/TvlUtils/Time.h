// Points in time.
#pragma once

#include <chrono>
#include <ctime>

namespace TvlUtils {

/// What a time is told in.
enum class TimeZone : int {
    Utc = 0,
};

/// A point in time, to 100 nanoseconds.
class Time {
public:
    Time() = default;
    explicit Time(std::chrono::sys_time<std::chrono::nanoseconds> time)
        : m_ticks(std::chrono::floor<Ticks>(time.time_since_epoch()).count())
    {
    }

    /// Whole seconds since 1970, rounded down.
    std::time_t ToTimeT(TimeZone) const { return std::chrono::floor<std::chrono::seconds>(Ticks(m_ticks)).count(); }
    bool operator==(const Time&) const = default;

private:
    using Ticks = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;
    long long m_ticks = 0;   // since 1970
};

}   // namespace TvlUtils
