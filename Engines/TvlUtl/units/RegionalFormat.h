// The settings behind WRegionalSupportFormat, one set for the process.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Singleton.h"
#include "windows/Locale.h"

#include <string>
#include <string_view>

/// A number in plain text.
struct PlainNumber {
    bool isNegative = false;
    std::wstring_view whole;
    std::wstring_view fraction;   // without its separator

    /// Whether the system would write it so: nothing to round, no zeros to leave away or to put before it.
    bool HasSystemForm() const;
};

class WRegionalSupportFormatImpl : public TvlUtils::Singleton<WRegionalSupportFormatImpl, 0> {
public:
    WRegionalSupportFormatImpl() { Refresh(); }

    /// WRegionalSupportFormat::GetValueInLocaleFormat; `out` is not the text's own.
    bool Format(TvlString&& text, TvlString& out);
    /// The same for a number in pieces whose text has `decimalSeparator`; false, with `out` left alone, where only the
    /// system knows the form.
    bool FormatNumber(const PlainNumber& number, std::wstring_view decimalSeparator, TvlString& out);
    bool RemoveThousandSeptFromValue(const TvlString& text, TvlString& out) const;
    bool IsThousandsSeparator(wchar_t c) const { return c != 0 && c == m_thousands; }
    void SetNumFractionalDigit(unsigned digits) { m_fractionalDigits = digits; }

private:
    void Refresh();
    void ReadSettings();
    bool FormatPlain(TvlString& text, TvlString& out) const;
    void Compose(const PlainNumber& number, std::wstring_view tail, TvlString& out) const;
    bool FormatBySystem(std::wstring_view number, std::wstring_view tail, TvlString& out);

    LCID m_localeId = static_cast<LCID>(-1);   // -1 until first loaded
    unsigned m_fractionalDigits = 0;
    Ports::NumberFormat m_format;
    wchar_t m_decimal = L'\0';   // what the separators begin with; 0 for none
    wchar_t m_thousands = L'\0';
    bool m_isPlain = false;   // whether the settings are such that plain numbers need no call of the system
};
