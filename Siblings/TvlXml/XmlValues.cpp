#include "TvlXml/XmlValues.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Without a sign that the readers of the standard library don't take.
std::string_view WithoutPlus(std::string_view text)
{
    return text.substr(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
}

/// Whether a text begins as a number does, and not as the words for what is no number.
bool BeginsAsNumber(std::string_view text)
{
    text = text.substr(text.starts_with('-') ? 1 : 0);
    return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}
/// Whether a number, which has no sign, is below 1: decides between nothing and infinity where a number is out of range.
bool IsBelowOne(std::string_view number)
{
    const std::size_t mantissaSize = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mantissaSize);
    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto leading = static_cast<long long>(mantissa.find_first_of("123456789"));
    const std::string_view text = WithoutPlus(number.substr(std::min(mantissaSize + 1, number.size())));
    long long exponent = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec == std::errc::result_out_of_range)
        return text.starts_with('-');
    return exponent < leading - point + (leading < point ? 1 : 0);
}
}   // namespace

std::optional<int> ToInt(std::string_view value)
{
    const std::string_view text = WithoutPlus(Trimmed(value));
    const char* const end = text.data() + text.size();
    int number = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::optional<double> ToDouble(std::string_view value)
{
    const std::string_view text = WithoutPlus(Trimmed(value));
    if (!BeginsAsNumber(text))
        return std::nullopt;
    const char* const end = text.data() + text.size();
    double number = 0.0;
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        const bool isNegative = text.starts_with('-');
        number = IsBelowOne(text.substr(isNegative ? 1 : 0)) ? 0.0 : std::numeric_limits<double>::infinity();
        number = isNegative ? -number : number;
    }
    return number;
}

std::optional<bool> ToBool(std::string_view value)
{
    const std::string_view text = Trimmed(value);
    if (text == "true" || text == "1")
        return true;
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}
