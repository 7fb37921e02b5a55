// What one input costs: time of the processor, and memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

/// Begins to measure when it is made.
class InputCost {
public:
    InputCost();

    /// Processor time since then, in milliseconds: what other programs do beside does not count.
    long long Milliseconds() const { return (std::clock() - m_start) * 1000 / CLOCKS_PER_SEC; }
    /// The most bytes that were held at a time, more than at the beginning; 0 without the address sanitizer, which counts.
    long long PeakBytes() const;

private:
    std::clock_t m_start = std::clock();
};
