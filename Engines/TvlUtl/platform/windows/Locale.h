// Regional settings of the user, as the operating system keeps them.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Ports {

/// Names of settings; the values are the LCTYPE codes of Windows.
enum class LocaleSetting : ULONG {
    ListSeparator = 0x0C,           ///< LOCALE_SLIST
    MeasurementSystem = 0x0D,       ///< LOCALE_IMEASURE: "0" metric, "1" US
    DecimalSeparator = 0x0E,        ///< LOCALE_SDECIMAL
    ThousandsSeparator = 0x0F,      ///< LOCALE_STHOUSAND
    Grouping = 0x10,                ///< LOCALE_SGROUPING: sizes such as "3;0" or "3;2;0"
    LeadingZero = 0x12,             ///< LOCALE_ILZERO: "0" none, "1" one
    CountryCode = 0x5A,             ///< LOCALE_SISO3166CTRYNAME: two letters such as "DE"
    NegativeSign = 0x51,            ///< LOCALE_SNEGATIVESIGN
    PaperSize = 0x100A,             ///< LOCALE_IPAPERSIZE: a printer's code, "1" Letter or "9" A4
    NegativeNumberOrder = 0x1010,   ///< LOCALE_INEGNUMBER: 0 "(1)", 1 "-1", 2 "- 1", 3 "1-", 4 "1 -"
};

/// How FormatNumber writes a number: the fields of NUMBERFMTW.
struct NumberFormat {
    UINT digits = 0;                   // digits behind the decimal separator, 0 to 9
    UINT leadingZero = 0;              // 0 or 1
    UINT grouping = 0;                 // digits per group, 0 to 9; 32 stands for 3;2
    std::wstring decimalSeparator;     // between the whole number and its fraction
    std::wstring thousandsSeparator;   // between groups of digits
    UINT negativeOrder = 0;            // 0 to 4, as LocaleSetting::NegativeNumberOrder
};

/// Reads what the user has set for numbers, units and languages.
class TVLSIBLINGS_API Locale {
public:
    /// The system's, or the one that stands in for it.
    static Locale& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Locale*);

    virtual ~Locale() = default;
    /// Text of one setting of the user's default locale; empty when it can't be read or needs more than `capacity`
    /// characters, end mark included.
    virtual std::optional<std::wstring> Setting(LocaleSetting setting, std::size_t capacity) const = 0;
    /// A number that changes with the settings, so that callers who ask often can keep what they read; 0 where a change
    /// goes unnoticed.
    virtual unsigned SettingsVersion() const { return 0; }
    /// GetNumberFormatEx for the default locale: `number` is digits with at most one "." and a leading "-"; empty when
    /// it is anything else. What a format out of range gives is up to the system.
    virtual std::optional<std::wstring> FormatNumber(std::wstring_view number, const NumberFormat& format) const = 0;
    /// Id of the user's default locale.
    virtual LCID UserLocaleId() const = 0;
    /// Language of the user interface.
    virtual LANGID UserUILanguage() const = 0;
    /// EnumUILanguagesW: how many languages the system's own user interface has; empty when the system does not tell.
    virtual std::optional<int> UILanguageCount() const { return 1; }
    /// Makes a locale the user's default for this process, by its BCP 47 name such as L"de-DE", numbers and, where the
    /// system has one setting for each, words alike; false when it is unknown.
    virtual bool UseLocale(const std::wstring& name) = 0;
};

}   // namespace Ports
