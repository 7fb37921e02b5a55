// What reading one tag after another needs.
#pragma once

#include "ExifMemory.h"
#include "siblings/TvlUtils/Stream.h"

struct ExifReading {
    TvlUtils::Stream& stream;
    ExifMemory* memory;        // of the values; null for a block of its own
    unsigned long long room;   // bytes that further values may take
};
