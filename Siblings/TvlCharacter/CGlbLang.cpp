#include "siblings/TvlCharacter/CGlbLang.h"

#include <algorithm>
#include <iterator>

bool CGlbLang::IsRTL() const
{
    // Primary language ids: Arabic, Hebrew, Urdu, Persian, Yiddish, Sindhi, Syriac, Pashto, Divehi, Uyghur, Dari and
    // Central Kurdish.
    static constexpr LANGID kRightToLeft[] = {0x01, 0x0D, 0x20, 0x29, 0x3D, 0x59, 0x5A, 0x63, 0x65, 0x80, 0x8C, 0x92};
    constexpr LANGID kPrimary = 0x3FF;
    return std::binary_search(std::begin(kRightToLeft), std::end(kRightToLeft), m_language & kPrimary);
}
