// Points in time, and durations.
#pragma once

#include "windows/Clock.h"

#include <chrono>
#include <compare>
#include <ctime>

namespace TvlUtils {

/// What a time is told in.
enum class TimeZone : int {
    Utc = 0,
};

/// A point in time, to 100 nanoseconds.
class Time {
public:
    /// The start of 1970, in UTC.
    Time() = default;
    /// Rounded down to 100 nanoseconds.
    explicit Time(std::chrono::sys_time<std::chrono::nanoseconds> time)
        : m_ticks(std::chrono::floor<Ticks>(time.time_since_epoch()).count())
    {
    }

    /// Whole seconds since 1970, rounded down.
    std::time_t ToTimeT(TimeZone) const { return std::chrono::floor<std::chrono::seconds>(Ticks(m_ticks)).count(); }
    /// The same tick.
    bool operator==(const Time&) const = default;

private:
    using Ticks = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;
    long long m_ticks = 0;   // since 1970
};

/// A span of time in ticks of 100 nanoseconds; negative for one that leads back.
class TimeDelta {
public:
    static constexpr long long kTicksPerSecond = 10'000'000;   ///< of 100 nanoseconds

    /// No time at all.
    constexpr TimeDelta() = default;
    /// So many ticks.
    explicit constexpr TimeDelta(long long ticks) : m_ticks(ticks) { }

    /// The span in ticks.
    constexpr long long GetTicks() const { return m_ticks; }
    /// The sum must fit, as with all 64-bit numbers.
    constexpr TimeDelta& operator+=(TimeDelta other)
    {
        m_ticks += other.m_ticks;
        return *this;
    }
    /// From `b` to `a`.
    friend constexpr TimeDelta operator-(TimeDelta a, TimeDelta b) { return TimeDelta(a.m_ticks - b.m_ticks); }
    /// The longer span is the greater.
    auto operator<=>(const TimeDelta&) const = default;

private:
    long long m_ticks = 0;
};

/// A point in time for measuring how long something takes: changes of the clock on the wall don't touch it.
class TimeTicks {
public:
    /// The point that all others count from.
    TimeTicks() = default;
    /// The time of this moment. Any thread may call.
    static TimeTicks Now()
    {
        using Ticks = std::chrono::duration<long long, std::ratio<1, TimeDelta::kTicksPerSecond>>;
        TimeTicks now;
        now.m_ticks = std::chrono::floor<Ticks>(Ports::Clock::Get().Elapsed()).count();
        return now;
    }

    /// From `b` to `a`.
    friend TimeDelta operator-(TimeTicks a, TimeTicks b) { return TimeDelta(a.m_ticks - b.m_ticks); }
    /// The later time is the greater.
    auto operator<=>(const TimeTicks&) const = default;

private:
    long long m_ticks = 0;   // since the machine started, or another point that stays
};

}   // namespace TvlUtils
