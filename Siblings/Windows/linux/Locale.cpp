// Regional settings through ICU, in the form in which Windows gives them.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <unicode/decimfmt.h>
#include <unicode/ulocdata.h>

namespace Ports {

namespace {
std::wstring ToWide(const icu::UnicodeString& text)
{
    std::wstring wide;
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
        wide += static_cast<wchar_t>(text.char32At(i));
    return wide;
}

/// The environment's locale of a category such as "LC_NUMERIC"; the C locale, which has no regional settings, counts as
/// American English.
icu::Locale EnvironmentLocale(const char* category)
{
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        const char* const value = std::getenv(name);
        if (!value || !*value)
            continue;
        const std::string_view text(value);
        if (text == "C" || text == "POSIX" || text.starts_with("C."))
            break;
        return icu::Locale::createCanonical(value);
    }
    return icu::Locale("en", "US");
}

/// Settings of one locale, read once.
struct Settings {
    explicit Settings(const icu::Locale& locale)
    {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, status));
        const auto* const decimal = dynamic_cast<const icu::DecimalFormat*>(format.get());
        if (U_FAILURE(status) || !decimal)
            return;
        const icu::DecimalFormatSymbols& symbols = *decimal->getDecimalFormatSymbols();
        decimalSeparator = ToWide(symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
        thousandsSeparator = ToWide(symbols.getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
        negativeSign = ToWide(symbols.getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol));
        // Windows writes the sign that keyboards have, also where print has the typographic one, as in Sweden.
        if (negativeSign == L"\u2212")
            negativeSign = L"-";
        // Lists take the comma unless numbers do.
        listSeparator = decimalSeparator == L"," ? L";" : L",";
        grouping = Grouping(*decimal);
        measurement = ulocdata_getMeasurementSystem(locale.getName(), &status) == UMS_US ? L"1" : L"0";
        paper = PaperSize(locale);
        country = TvlPlatform::FromUtf8(locale.getCountry());
        id = locale.getLCID();
    }

    /// The code of A4, or that of Letter where sheets are as wide as that.
    static std::wstring PaperSize(const icu::Locale& locale)
    {
        constexpr int32_t kLetterWidth = 216;   // millimetres
        int32_t height = 0;
        int32_t width = 0;
        UErrorCode status = U_ZERO_ERROR;
        ulocdata_getPaperSize(locale.getName(), &height, &width, &status);
        return U_SUCCESS(status) && width == kLetterWidth ? L"1" : L"9";
    }

    static std::wstring Grouping(const icu::DecimalFormat& format)
    {
        if (!format.isGroupingUsed() || format.getGroupingSize() <= 0)
            return L"0";
        std::wstring sizes = std::to_wstring(format.getGroupingSize());
        const int32_t second = format.getSecondaryGroupingSize();
        if (second > 0 && second != format.getGroupingSize())
            sizes += L";" + std::to_wstring(second);
        return sizes + L";0";
    }

    std::wstring decimalSeparator = L".";
    std::wstring thousandsSeparator = L",";
    std::wstring negativeSign = L"-";
    std::wstring listSeparator = L",";
    std::wstring grouping = L"3;0";
    std::wstring measurement = L"0";
    std::wstring paper = L"9";
    std::wstring country;
    std::wstring leadingZero = L"1";
    std::wstring negativeOrder = L"1";
    LCID id = 0x0409;
};

class LinuxLocale final : public Locale {
public:
    std::optional<std::wstring> Setting(LocaleSetting setting, std::size_t capacity) const override
    {
        const std::wstring* const text = Find(setting);
        if (!text || text->size() + 1 > capacity)
            return std::nullopt;
        return *text;
    }

    unsigned SettingsVersion() const override { return m_version; }
    std::optional<std::wstring> FormatNumber(std::wstring_view number, const NumberFormat& format) const override;
    LCID UserLocaleId() const override { return m_settings.id; }
    LANGID UserUILanguage() const override { return m_uiLanguage; }

    bool UseLocale(const std::wstring& name) override
    {
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale locale = icu::Locale::forLanguageTag(TvlPlatform::ToUtf8(name), status);
        int32_t count = 0;
        const icu::Locale* const known = icu::Locale::getAvailableLocales(count);
        const auto sameLanguage = [&](const icu::Locale& other) {
            return !std::strcmp(other.getLanguage(), locale.getLanguage());
        };
        if (U_FAILURE(status) || !*locale.getLanguage() || std::none_of(known, known + count, sameLanguage))
            return false;
        m_settings = Settings(locale);
        m_uiLanguage = static_cast<LANGID>(m_settings.id);
        ++m_version;
        return true;
    }

private:
    const std::wstring* Find(LocaleSetting setting) const
    {
        switch (setting) {
        case LocaleSetting::ListSeparator:
            return &m_settings.listSeparator;
        case LocaleSetting::MeasurementSystem:
            return &m_settings.measurement;
        case LocaleSetting::CountryCode:
            return &m_settings.country;
        case LocaleSetting::PaperSize:
            return &m_settings.paper;
        case LocaleSetting::DecimalSeparator:
            return &m_settings.decimalSeparator;
        case LocaleSetting::ThousandsSeparator:
            return &m_settings.thousandsSeparator;
        case LocaleSetting::Grouping:
            return &m_settings.grouping;
        case LocaleSetting::NegativeSign:
            return &m_settings.negativeSign;
        case LocaleSetting::LeadingZero:
            return &m_settings.leadingZero;
        case LocaleSetting::NegativeNumberOrder:
            return &m_settings.negativeOrder;
        }
        return nullptr;
    }

    Settings m_settings = Settings(EnvironmentLocale("LC_NUMERIC"));
    // Numbers may follow another country than the words: LC_NUMERIC=de_DE beside LC_MESSAGES=en_GB.
    LANGID m_uiLanguage = static_cast<LANGID>(EnvironmentLocale("LC_MESSAGES").getLCID());
    unsigned m_version = 1;
};

/// The pieces of a number text: a sign, digits and at most one point.
struct NumberText {
    bool negative = false;
    std::string whole;
    std::string fraction;

    static std::optional<NumberText> Read(std::wstring_view text)
    {
        NumberText number;
        number.negative = !text.empty() && text.front() == L'-';
        bool inFraction = false;
        for (const wchar_t c : text.substr(number.negative ? 1 : 0)) {
            const bool isDigit = c >= L'0' && c <= L'9';
            if (!isDigit && (c != L'.' || inFraction))
                return std::nullopt;
            if (isDigit)
                (inFraction ? number.fraction : number.whole) += static_cast<char>(c);
            else
                inFraction = true;
        }
        return number;
    }

    /// Rounds to `digits` behind the point, halves away from zero, and drops leading zeros.
    void Round(std::size_t digits)
    {
        const bool up = fraction.size() > digits && fraction[digits] >= '5';
        fraction.resize(digits, '0');
        std::string all = whole + fraction;
        if (up && !Increment(all))
            all.insert(0, "1");
        fraction = all.substr(all.size() - digits);
        whole = all.substr(0, all.size() - digits);
        whole.erase(0, whole.find_first_not_of('0'));
        negative = negative && (whole + fraction).find_first_not_of('0') != std::string::npos;
    }

    /// Adds one to a row of digits; false when it overflows to zeros.
    static bool Increment(std::string& digits)
    {
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
            if (*digit != '9') {
                ++*digit;
                return true;
            }
            *digit = '0';
        }
        return false;
    }
};

/// Digits with separators between groups, counted from the right. 32 stands for a first group of 3, then groups of 2.
std::wstring Group(const std::string& digits, UINT grouping, const std::wstring& separator)
{
    const std::size_t first = grouping == 32 ? 3 : grouping;
    const std::size_t next = grouping == 32 ? 2 : grouping;
    std::wstring text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const std::size_t left = digits.size() - i;
        if (i > 0 && first > 0 && left >= first && (left - first) % next == 0)
            text += separator;
        text += static_cast<wchar_t>(digits[i]);
    }
    return text;
}

std::optional<std::wstring> LinuxLocale::FormatNumber(std::wstring_view text, const NumberFormat& format) const
{
    auto number = NumberText::Read(text);
    if (!number || format.digits > 9 || (format.grouping > 9 && format.grouping != 32) || format.negativeOrder > 4)
        return std::nullopt;
    number->Round(format.digits);
    std::wstring formatted = Group(number->whole, format.grouping, format.thousandsSeparator);
    if (formatted.empty() && (format.leadingZero || format.digits == 0))
        formatted = L"0";
    if (format.digits > 0)
        formatted += format.decimalSeparator + std::wstring(number->fraction.begin(), number->fraction.end());
    if (!number->negative)
        return formatted;

    // The sign is the locale's, as it is for the Windows call: the format only says where it stands.
    const std::wstring& sign = m_settings.negativeSign;
    switch (format.negativeOrder) {
    case 0:
        return L"(" + formatted + L")";
    case 1:
        return sign + formatted;
    case 2:
        return sign + L" " + formatted;
    case 3:
        return formatted + sign;
    default:
        return formatted + L" " + sign;
    }
}
}   // namespace

template <>
Locale& SystemPort<Locale>()
{
    static LinuxLocale locale;
    return locale;
}

}   // namespace Ports
