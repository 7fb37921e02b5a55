// Number text in the form of the user's region.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Turns plain number text into the regional form, and takes thousands separators out again. The settings are cached by
/// the user's locale: a change of region is noticed, a change of separators alone is not. Slot order is part of the
/// interface. For the user interface thread.
class TVLUTL_API WRegionalSupportFormat {
public:
    /// Formats the number at the head of `text`, which is in the locale's own separators; what stands behind its last
    /// digit or separator passes through. Up to nine decimals are kept. False when there is no number or it can't be
    /// formatted: `out` is the text then, or the plain digits. An empty text leaves `out` alone.
    virtual bool GetValueInLocaleFormat(TvlString text, TvlString& out);
    /// Removes all thousands separators; false, with `out` left alone, when there were none.
    virtual bool RemoveThousandSeptFromValue(TvlString text, TvlString& out);
    /// Decimals of a number; a number with a decimal separator keeps as many as it has, whatever was set.
    virtual void SetNumFractionalDigit(unsigned digits);
};
