// Tries every place where something can fail.
#pragma once

#include <cstddef>
#include <gtest/gtest.h>

/// Calls `attempt(n)` for n = 1, 2, … until it says that it ran through without reaching its n-th fault point. Whatever
/// the seam is — allocations, file operations, a child process — a walk that has met fewer points than were `recorded`
/// when the test was written looks at less than it claims, and fails.
/// @param recorded fault points that the operation is known to have, at least 1
/// @param attempt  runs the operation with the n-th fault in place and checks what it leaves; returns whether the fault
///                 was reached
template <class Attempt>
void WalkFaultPoints(std::size_t recorded, Attempt attempt)
{
    constexpr std::size_t kEndless = 100'000;
    std::size_t point = 1;
    for (bool reached = true; reached && point <= kEndless; ++point) {
        SCOPED_TRACE(testing::Message() << "fault point " << point);
        reached = attempt(point);
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_LE(point, kEndless) << "the operation never ran through";
    EXPECT_GE(point - 2, recorded) << "fewer fault points than recorded";
}
