// Finds the Exif block of an image file: JPEG, TIFF (and the raw formats built on it), PNG and WebP.
#pragma once

#include "siblings/TvlUtils/Stream.h"

#include <limits>

enum class ExifSearch {
    Found,
    NoBlock,         ///< a sound image without one
    UnknownFormat,   ///< none of the four
    Damaged,         ///< the structure around the block is broken before it is found
};

struct ExifPlace {
    ExifSearch search = ExifSearch::UnknownFormat;
    // Of a found block in the file, from its TIFF header on. A TIFF file is a block as a whole, of any length.
    long long offset = 0;
    long long size = std::numeric_limits<long long>::max();
    // A PNG file keeps a check sum (CRC-32 of ISO 3309) behind the block, over these bytes from the chunk's type on.
    long long checkedOffset = 0;
    long long checkedSize = 0;   // 0 when there is no check sum
};

/// Finds the first block. Reads the heads of the segments or chunks alone.
/// @param file the whole file from its start
ExifPlace LocateExif(TvlUtils::Stream& file);

/// After a block was changed: makes the check sum behind it fit. True when there is none, or it is written.
bool RenewCheckSum(TvlUtils::Stream& file, const ExifPlace& place);
