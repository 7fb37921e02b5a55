// Numbers in texts, and what texts are made of.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Operations on texts that depend on no locale.
namespace TvlUtils::String {

/// "true" or "false".
TVLSIBLINGS_API TvlString ToStringW(bool value);
/// In decimal digits, with "-" before a negative number.
TVLSIBLINGS_API TvlString ToStringW(int value);
/// The shortest text that reads back as the same number, with a point, whatever the user's locale: "0.1", "1e+20", "2".
TVLSIBLINGS_API TvlString ToStringW(double value);
TvlString ToStringW(const void*) = delete;

/// The number that a text begins with behind blanks, with a point as decimal separator whatever the user's locale; 0.0
/// when it begins with none. A number out of range is infinite or 0.0. Words such as "nan" are no numbers.
TVLSIBLINGS_API double DblFromString(const TvlString& text);

/// Sets of characters that can be added up.
enum class CharacterSet : unsigned {
    CapitalLetters = 1,     ///< A to Z
    SmallLetters = 2,       ///< a to z
    Digits = 4,             ///< 0 to 9
    LettersAndDigits = 7,   ///< all of these
};

/// Whether a text has nothing but characters of `set` and of `extra`. An empty text has nothing else.
TVLSIBLINGS_API bool ConsistsOnlyOf(const TvlString& text, CharacterSet set, const TvlString& extra);

}   // namespace TvlUtils::String
