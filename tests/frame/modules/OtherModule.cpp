#include "Counters.h"

template class TvlUtils::Singleton<ExportedCounter, 1>;

PlainCounter* PlainCounterOfTheOtherModule() { return &PlainCounter::GetInstance(); }

ExportedCounter* ExportedCounterOfTheOtherModule() { return &ExportedCounter::GetInstance(); }
