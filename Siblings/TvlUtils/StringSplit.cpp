#include "siblings/TvlUtils/StringSplit.h"

namespace TvlUtils::String {

std::pair<TvlString, TvlString> SplitAtFirst(const TvlString& text, wchar_t separator, bool wholeIsSecond)
{
    const int at = text.Find(separator);
    if (at >= 0)
        return {text.Left(at), text.Mid(at + 1)};
    return wholeIsSecond ? std::pair(TvlString(), text) : std::pair(text, TvlString());
}

}   // namespace TvlUtils::String
