// An object that the test program and a second library both ask for.
#pragma once

#include "siblings/TvlUtils/Singleton.h"

#ifdef OTHER_MODULE_BUILD
#define OTHER_MODULE_API TVL_EXPORT
#else
#define OTHER_MODULE_API TVL_IMPORT
#endif

class SharedCounter : public TvlUtils::Singleton<SharedCounter, 0> {
public:
    int count = 0;
};

OTHER_MODULE_API SharedCounter* CounterOfTheOtherModule();
