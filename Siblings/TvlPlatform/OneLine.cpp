#include "siblings/TvlPlatform/OneLine.h"

#include <algorithm>

namespace TvlPlatform {

std::wstring OneLine(std::wstring text, wchar_t mark)
{
    const auto isControl = [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029; };
    std::replace_if(text.begin(), text.end(), isControl, mark);
    return text;
}

}   // namespace TvlPlatform
