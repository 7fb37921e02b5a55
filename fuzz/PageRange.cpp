// Page numbers of any text. The first two bytes choose the pages.
#include "PaperTypes.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const unsigned first = data[0];
    const unsigned count = data[1];
    std::vector<unsigned> pages;
    const std::string_view text(reinterpret_cast<const char*>(data) + 2, size - 2);
    TvlUtl::MakePageRangeFromString(first, count, TvlPlatform::FromUtf8(text), pages);
    const bool isFallback = pages.size() == 1 && pages[0] == 1;
    for (const unsigned page : pages)
        if (!isFallback && (page < first || page >= first + count))
            std::abort();
    return 0;
}
