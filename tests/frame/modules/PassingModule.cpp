// A module that the test program loads and unloads.
#include "Counters.h"

extern "C" TVL_EXPORT PassingCounter* MakePassingCounter() { return &PassingCounter::GetInstance(); }
