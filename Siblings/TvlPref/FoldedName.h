// Names of keys and values compare without case.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <string>
#include <string_view>

namespace PREFUTILS {

inline std::wstring FoldedName(std::wstring_view name)
{
    std::wstring folded(name);
    for (wchar_t& c : folded)
        c = TvlFoldCase(c);
    return folded;
}

}   // namespace PREFUTILS
