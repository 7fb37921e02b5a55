#include "MeasureText.h"

#include "RegionalFormat.h"
#include "X64Integers.h"

#include <algorithm>
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

void AppendNarrow(ShortText& text, const char* begin, const char* end)
{
    wchar_t wide[ShortText::kRoom];
    const auto count = std::min<std::size_t>(static_cast<std::size_t>(end - begin), ShortText::kRoom);
    std::copy_n(begin, count, wide);
    text.Append({wide, count});
}

/// A whole number that is not negative, as "%.0f" writes it.
void AppendWhole(ShortText& text, double whole)
{
    constexpr double kFastBelow = 9007199254740992.0;
    char digits[kLongestWhole];
    if (whole < kFastBelow)
        return AppendNarrow(
            text, digits, std::to_chars(digits, std::end(digits), static_cast<unsigned long long>(whole)).ptr);
    if (std::isnan(whole))
        return text.Append(L"nan");
    AppendNarrow(text, digits, std::to_chars(digits, std::end(digits), whole, std::chars_format::fixed, 0).ptr);
}

/// Digits with zeros before them.
void AppendFraction(ShortText& text, unsigned long long fraction, unsigned decimals)
{
    char digits[24];
    const char* const end = std::to_chars(digits, std::end(digits), fraction).ptr;
    const auto count = static_cast<std::size_t>(end - digits);
    text.Append(L'0', decimals > count ? decimals - count : 0);
    AppendNarrow(text, digits, end);
}

/// A number without its sign.
struct Digits {
    ShortText text;
    bool isZero = false;
};

Digits WholeDigits(double value)
{
    Digits digits;
    const double rounded = std::trunc(value + 0.5);
    digits.isZero = rounded == 0.0;
    AppendWhole(digits.text, rounded);
    return digits;
}

Digits DecimalDigits(double value, unsigned decimals, bool trim, const LocaleCache& locale)
{
    Digits digits;
    const double power = PowerOfTen(decimals);
    const double rounded = 0.5 / power + value;
    const double whole = std::floor(rounded);
    // A NaN becomes 2 to the power 63 here, as it always has.
    unsigned long long fraction = ToUInt64AsX64(std::floor((rounded - whole) * power));
    if (trim) {
        for (; fraction > 0 && fraction % 10 == 0; fraction /= 10)
            --decimals;
        if (fraction == 0)
            decimals = 1;
    }
    digits.isZero = whole == 0.0 && fraction == 0;
    if (whole != 0.0 || locale.leadingZero)
        AppendWhole(digits.text, whole);
    digits.text.Append(locale.decimalSeparator.View());
    AppendFraction(digits.text, fraction, decimals);
    return digits;
}

TvlString Join(std::wstring_view sign, std::wstring_view digits)
{
    ShortText text;
    text.Append(sign);
    text.Append(digits);
    return TvlString(text.View());
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

void ShortText::Append(wchar_t c, std::size_t count)
{
    count = std::min(count, kRoom - m_length);
    std::fill_n(m_text + m_length, count, c);
    m_length += count;
}

TvlString NumberText(double value, const NumberStyle& style, const LocaleCache& locale)
{
    const unsigned decimals = std::min(style.decimals, kMostDecimals);
    const double size = value < 0.0 ? -value : value;
    const Digits digits = decimals < 1 ? WholeDigits(size) : DecimalDigits(size, decimals, style.trim, locale);
    const bool isNegative = value < 0.0 && !digits.isZero;
    if (style.regional) {
        // With the plain sign: the form drops every other, and sets the region's own in its place.
        ShortText text;
        if (isNegative)
            text.Append(kPlainSign);
        text.Append(digits.text.View());
        TvlString formatted;
        if (WRegionalSupportFormatImpl::GetInstance().Format(text.View(), formatted))
            return formatted;
    }
    return Join(isNegative ? locale.negativeSign.View() : std::wstring_view(), digits.text.View());
}

TvlString PreciseNumberText(double value, NumberStyle style, const LocaleCache& locale)
{
    if (value > -1.0 && value < 1.0 && value != 0.0) {
        unsigned first = 1;   // place of the first digit that is not 0
        while (std::fabs(PowerOfTen(first) * value) < 1.0)
            ++first;
        if (first >= style.decimals)
            style.decimals = first + 1;
    }
    return NumberText(value, style, locale);
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
