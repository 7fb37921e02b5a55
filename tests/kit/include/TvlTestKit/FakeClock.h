// Clocks that a test sets, in the system's place as long as the object lives.
#pragma once

#include "windows/Clock.h"

namespace TvlTestKit {

/// One at a time; the system's clocks are back when it goes. Time stands still unless the test moves it.
class FakeClock : public Ports::Clock {
public:
    /// The start of 1970, nothing elapsed.
    FakeClock() { SetForTests(this); }
    ~FakeClock() override { SetForTests(nullptr); }
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;

    std::chrono::sys_time<std::chrono::nanoseconds> Now() const override { return now; }
    std::chrono::nanoseconds Elapsed() const override { return elapsed; }
    /// Lets time go by.
    void Pass(std::chrono::nanoseconds time)
    {
        now += time;
        elapsed += time;
    }

    std::chrono::sys_time<std::chrono::nanoseconds> now{};   ///< the time of day; may be set at any time
    std::chrono::nanoseconds elapsed{};                      ///< what durations are measured with; never set it back
};

}   // namespace TvlTestKit
