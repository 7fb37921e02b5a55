// Memory of the test process.
#pragma once

#include <cstddef>

/// The most memory that the process has had at one time so far, in bytes.
std::size_t PeakMemory();
