#include "../SharedCounter.h"

SharedCounter* CounterOfTheOtherModule() { return &SharedCounter::GetInstance(); }
