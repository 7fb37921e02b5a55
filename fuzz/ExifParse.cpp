// Reads a block, asks for everything, and shows every value.
#include "CExif.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CExif exif;
    const int result = exif.ParseData(TvlUtils::Stream::OverMemory(data, size));
    if (result != 0 && result != 1)
        std::abort();

    double resolution = 0;
    unsigned short unit = 0;
    short orientation = 0;
    exif.GetHRes(resolution, unit);
    exif.GetVRes(resolution, unit);
    exif.GetOrientation(orientation);
    std::vector<unsigned char> bytes;
    TvlString text;
    for (int i = 0; CExifTag* tag = exif.GetAt(i); ++i) {
        bytes.resize(tag->GetBufferSize());
        if (tag->GetBufferSize() == 0 || tag->GetBufferSize() > 65536 || tag->GetID() == 37500
            || !tag->GetAllValues(bytes.data(), tag->GetBufferSize())
            || !tag->GetSingleValue(tag->GetValueCount() - 1, bytes.data(), tag->GetDataItemSize()))
            std::abort();
        tag->GetDisplayLabel(text);
        if (!tag->GetDisplayValue(text) && tag->GetID() != 37510)
            std::abort();
    }
    return 0;
}
