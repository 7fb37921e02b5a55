#include "MeasureText.h"

#include "RegionalFormat.h"
#include "X64Integers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {
constexpr unsigned kMostDecimals = 15;
constexpr double kPartsOfWhole = 12.0;           // points to the pica, didots to the cicero
constexpr std::size_t kLongestWhole = 320;       // digits of the greatest double, and some
constexpr std::wstring_view kPlainSign = L"-";   // the sign that the regional form understands

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
    1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};   // all that a double holds exactly

constexpr double kExactBelow = 9007199254740992.0;   // whole numbers below have a double of their own

/// Half of the last decimal place, by decimals.
constexpr auto kHalves = [] {
    std::array<double, kMostDecimals + 1> halves{};
    for (unsigned i = 0; i <= kMostDecimals; ++i)
        halves[i] = 0.5 / kPowersOfTen[i];
    return halves;
}();

/// A number without its sign, as digits in place.
class Digits {
public:
    Digits() = default;
    Digits(const Digits&) = delete;
    Digits& operator=(const Digits&) = delete;

    /// @param whole a whole number that is not negative, written as "%.0f" does
    void SetWhole(double whole);
    /// @param places digits at least, with zeros before them
    void SetFraction(unsigned long long fraction, unsigned places);
    void LeaveWholeAway() { m_whole = std::wstring_view(); }

    std::wstring_view Whole() const { return m_whole; }
    std::wstring_view Fraction() const { return m_fraction; }
    bool IsZero() const { return m_isZero; }

private:
    static constexpr std::size_t kLongestInteger = 24;

    static std::wstring_view Write(
        unsigned long long number, unsigned places, wchar_t (&digits)[kLongestInteger]) noexcept;
    void SetLargeWhole(double whole);

    std::wstring_view m_whole;
    std::wstring_view m_fraction;   // empty for a whole number
    bool m_isZero = true;
    wchar_t m_wholeDigits[kLongestInteger];
    wchar_t m_fractionDigits[kLongestInteger];
    ShortText m_largeWhole;
};

std::wstring_view Digits::Write(unsigned long long number, unsigned places, wchar_t (&digits)[kLongestInteger]) noexcept
{
    wchar_t* const end = std::end(digits);
    wchar_t* at = end;
    for (; number > 0; number /= 10)
        *--at = static_cast<wchar_t>(L'0' + number % 10);
    for (const wchar_t* const first = end - places; at > first;)
        *--at = L'0';
    return {at, static_cast<std::size_t>(end - at)};
}

void Digits::SetWhole(double whole)
{
    m_isZero = m_isZero && whole == 0.0;
    if (whole < kExactBelow)
        m_whole = Write(static_cast<unsigned long long>(static_cast<long long>(whole)), 1, m_wholeDigits);
    else
        SetLargeWhole(whole);
}

void Digits::SetLargeWhole(double whole)
{
    char digits[kLongestWhole] = "nan";
    const char* end = digits + 3;
    if (!std::isnan(whole))
        end = std::to_chars(digits, std::end(digits), whole, std::chars_format::fixed, 0).ptr;
    wchar_t wide[kLongestWhole];
    m_largeWhole.Append({wide, static_cast<std::size_t>(std::copy<const char*>(digits, end, wide) - wide)});
    m_whole = m_largeWhole.View();
}

void Digits::SetFraction(unsigned long long fraction, unsigned places)
{
    m_isZero = m_isZero && fraction == 0;
    m_fraction = Write(fraction, places, m_fractionDigits);
}

/// @param value    not negative
/// @param decimals up to kMostDecimals
void WriteDecimal(double value, unsigned decimals, bool trim, bool leadingZero, Digits& digits)
{
    const double rounded = kHalves[decimals] + value;
    // For what is not negative truncation is the floor, and quicker.
    const double whole =
        rounded < kExactBelow ? static_cast<double>(static_cast<long long>(rounded)) : std::floor(rounded);
    // A NaN becomes 2 to the power 63 here, as it always has.
    unsigned long long fraction = ToUInt64AsX64((rounded - whole) * kPowersOfTen[decimals]);
    if (trim) {
        for (; fraction > 0 && fraction % 10 == 0; fraction /= 10)
            --decimals;
        if (fraction == 0)
            decimals = 1;
    }
    digits.SetWhole(whole);
    if (whole == 0.0 && !leadingZero)
        digits.LeaveWholeAway();
    digits.SetFraction(fraction, decimals);
}

ShortText Join(std::wstring_view sign, const Digits& digits, const LocaleCache& locale)
{
    ShortText text;
    text.Append(sign);
    text.Append(digits.Whole());
    if (!digits.Fraction().empty()) {
        text.Append(locale.decimalSeparator.View());
        text.Append(digits.Fraction());
    }
    return text;
}

/// The form of the user's region; false when the system has none for the number.
bool FormatRegional(bool isNegative, const Digits& digits, const LocaleCache& locale, TvlString& out)
{
    auto& format = WRegionalSupportFormatImpl::GetInstance();
    const PlainNumber number{isNegative, digits.Whole(), digits.Fraction()};
    if (format.FormatNumber(number, locale.decimalSeparator.View(), out))
        return true;
    // With the plain sign: the form drops every other, and sets the region's own in its place.
    return format.Format(TvlString(Join(isNegative ? kPlainSign : std::wstring_view(), digits, locale).View()), out);
}
}   // namespace

double PowerOfTen(unsigned exponent)
{
    return exponent < std::size(kPowersOfTen) ? kPowersOfTen[exponent] : std::pow(10.0, exponent);
}

void ShortText::Append(std::wstring_view text)
{
    const std::size_t count = std::min(text.size(), kRoom - m_length);
    std::copy_n(text.data(), count, m_text + m_length);
    m_length += count;
}

TvlString NumberText(double value, const NumberStyle& style, const LocaleCache& locale)
{
    const unsigned decimals = std::min(style.decimals, kMostDecimals);
    const double size = value < 0.0 ? -value : value;
    Digits digits;
    if (decimals < 1)
        digits.SetWhole(std::trunc(size + 0.5));
    else
        WriteDecimal(size, decimals, style.trim, locale.leadingZero, digits);
    const bool isNegative = value < 0.0 && !digits.IsZero();
    TvlString formatted;
    if (style.regional && FormatRegional(isNegative, digits, locale, formatted))
        return formatted;
    return TvlString(Join(isNegative ? locale.negativeSign.View() : std::wstring_view(), digits, locale).View());
}

TvlString PreciseNumberText(double value, const NumberStyle& style, const LocaleCache& locale)
{
    unsigned decimals = style.decimals;
    if (value > -1.0 && value < 1.0 && value != 0.0) {
        unsigned first = 1;   // place of the first digit that is not 0
        while (std::fabs(PowerOfTen(first) * value) < 1.0)
            ++first;
        if (first >= decimals)
            decimals = first + 1;
    }
    return NumberText(value, {decimals, style.trim, style.regional}, locale);
}

TvlString ChainText(double value, unsigned decimals, const LocaleCache& locale)
{
    const double size = std::fabs(value);
    const double step = 1.0 / PowerOfTen(decimals);
    double whole = std::floor(size);
    double parts = std::floor((size - whole) * kPartsOfWhole / step + 0.5) * step;
    if (parts >= kPartsOfWhole) {
        parts -= kPartsOfWhole;
        whole += 1.0;
    }
    ShortText text;
    if (value < 0.0 && (whole != 0.0 || parts != 0.0))
        text.Append(locale.negativeSign.View());
    text.Append(NumberText(whole, {0, false, true}, locale));
    text.Append(locale.listSeparator.View());
    text.Append(NumberText(parts, {decimals, false, true}, locale));
    return TvlString(text.View());
}
