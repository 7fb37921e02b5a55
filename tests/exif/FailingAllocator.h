// Makes one allocation of the program fail.
#pragma once

namespace FailingAllocator {

/// From now on lets `count` allocations succeed and the one behind them fail.
void FailAt(int count);
/// Ends that; whether an allocation has failed.
bool Stop();

}   // namespace FailingAllocator
