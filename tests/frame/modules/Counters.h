// Single objects that the test program and other modules ask for.
#pragma once

#include "siblings/TvlUtils/Singleton.h"

#ifdef OTHER_MODULE_BUILD
#define OTHER_MODULE_API TVL_EXPORT
#else
#define OTHER_MODULE_API TVL_IMPORT
#endif

/// Every module makes the members of its base for itself.
class PlainCounter : public TvlUtils::Singleton<PlainCounter, 0> {
public:
    int count = 0;
};

/// The members of its base are those of the other module.
class ExportedCounter;
extern template class OTHER_MODULE_API TvlUtils::Singleton<ExportedCounter, 1>;

class ExportedCounter : public TvlUtils::Singleton<ExportedCounter, 1> {
public:
    int count = 0;
};

/// Tells of its end.
class PassingCounter : public TvlUtils::Singleton<PassingCounter, 0> {
public:
    ~PassingCounter()
    {
        if (ended)
            ++*ended;
    }
    int* ended = nullptr;
};

OTHER_MODULE_API PlainCounter* PlainCounterOfTheOtherModule();
OTHER_MODULE_API ExportedCounter* ExportedCounterOfTheOtherModule();
