// The settings behind WRegionalSupportFormat, one set for the process.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Singleton.h"
#include "windows/Locale.h"

class WRegionalSupportFormatImpl : public TvlUtils::Singleton<WRegionalSupportFormatImpl, 0> {
public:
    WRegionalSupportFormatImpl() { Refresh(); }

    bool GetValueInLocaleFormat(const TvlString& text, TvlString& out);
    bool RemoveThousandSeptFromValue(const TvlString& text, TvlString& out) const;
    bool IsThousandsSeparator(wchar_t c) const { return c != 0 && c == ThousandsSeparator(); }
    void SetNumFractionalDigit(unsigned digits) { m_fractionalDigits = digits; }

private:
    void Refresh();
    wchar_t ThousandsSeparator() const;
    wchar_t DecimalSeparator() const;

    LCID m_localeId = static_cast<LCID>(-1);   // -1 until first loaded
    unsigned m_fractionalDigits = 0;
    Ports::NumberFormat m_format;
};
