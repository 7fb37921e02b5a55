#include "siblings/TvlUtils/String.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <string>

namespace TvlUtils::String {

namespace {
bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r') || c == 0x00A0; }

/// Whether a number beyond the range of a double is too large for it, and not too small.
bool IsLarge(std::string_view number)
{
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const std::size_t first = mantissa.find_first_of("123456789");
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    long long place = static_cast<long long>(point) - static_cast<long long>(first);
    std::string_view exponent = number.substr(std::min(mantissaEnd + 1, number.size()));
    if (exponent.starts_with('+'))
        exponent.remove_prefix(1);
    int power = 0;
    if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), power).ec == std::errc::result_out_of_range)
        return !exponent.starts_with('-');
    place += power;
    return place > 0;
}
}   // namespace

TvlString ToStringW(bool value) { return value ? L"true" : L"false"; }

TvlString ToStringW(int value) { return std::to_wstring(value); }

TvlString ToStringW(double value)
{
    char text[32];   // the longest has 24 characters
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value);
    return error == std::errc() ? std::wstring(text, end) : std::wstring();
}

double DblFromString(const TvlString& text)
{
    std::wstring_view rest = text;
    while (!rest.empty() && IsBlank(rest.front()))
        rest.remove_prefix(1);
    // What may stand in a number: other letters end it, "inf" and "nan" with them.
    const std::wstring_view wide = rest.substr(0, rest.find_first_not_of(L"0123456789.+-eE"));
    std::string number(wide.begin(), wide.end());
    if (number.starts_with('+') && !number.starts_with("+-"))
        number.erase(0, 1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    number.resize(static_cast<std::size_t>(end - number.data()));
    if (!IsLarge(number))
        return 0.0;
    return number.starts_with('-') ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

bool ConsistsOnlyOf(const TvlString& text, CharacterSet set, const TvlString& extra)
{
    struct Range {
        CharacterSet set;
        wchar_t first, last;
    };
    static constexpr Range kRanges[] = {
        {CharacterSet::CapitalLetters, L'A', L'Z'},
        {CharacterSet::SmallLetters, L'a', L'z'},
        {CharacterSet::Digits, L'0', L'9'},
    };
    const auto allowed = [&](wchar_t c) {
        return extra.Find(c) >= 0 || std::any_of(std::begin(kRanges), std::end(kRanges), [&](const Range& range) {
            const bool chosen = (static_cast<unsigned>(set) & static_cast<unsigned>(range.set)) != 0;
            return chosen && c >= range.first && c <= range.last;
        });
    };
    return std::all_of(text.Std().begin(), text.Std().end(), allowed);
}

}   // namespace TvlUtils::String
