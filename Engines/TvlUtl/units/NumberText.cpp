// Numbers in the text of an expression.
#include "NumberText.h"

#include "windows/Locale.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace {
constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
constexpr std::size_t kSeparatorCapacity = 16;   // characters of a separator's setting, end mark included

std::size_t CountDigits(std::wstring_view text, std::size_t from)
{
    std::size_t end = from;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end - from;
}

std::size_t SkipBlanks(std::wstring_view text, std::size_t from)
{
    return std::min(text.find_first_not_of(L' ', from), text.size());
}

/// Digits with at most one point, converted as the C runtime does: beyond the range to infinity, too small to 0.
double Convert(const std::string& digits)
{
    double value = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    const std::size_t whole = digits.find_first_not_of('0');
    const bool isLarge = whole != std::string::npos && digits[whole] != '.' && digits.find('.') != whole;
    return isLarge ? std::numeric_limits<double>::infinity() : 0.0;
}

wchar_t FirstCharacter(Ports::LocaleSetting setting)
{
    const auto text = Ports::Locale::Get().Setting(setting, kSeparatorCapacity);
    return text && !text->empty() ? text->front() : L'\0';
}
}   // namespace

wchar_t DecimalSeparator() { return FirstCharacter(Ports::LocaleSetting::DecimalSeparator); }
wchar_t ListSeparator() { return FirstCharacter(Ports::LocaleSetting::ListSeparator); }

int MatchValue(std::wstring_view text, wchar_t decimalSeparator)
{
    bool separated = false;
    std::size_t length = 0;
    for (; length < text.size(); ++length) {
        const wchar_t c = text[length];
        if (IsDigit(c))
            continue;
        if (c != decimalSeparator || decimalSeparator == 0 || separated)
            break;
        separated = true;
    }
    return static_cast<int>(length);
}

double ValueOf(std::wstring_view text, wchar_t decimalSeparator)
{
    // What stands behind the number does not count, and blanks before it neither.
    text.remove_prefix(SkipBlanks(text, 0));
    std::string digits;
    bool separated = false;
    for (const wchar_t c : text) {
        const bool isPoint = !separated && decimalSeparator != 0 && c == decimalSeparator;
        if (!IsDigit(c) && !isPoint)
            break;
        separated |= isPoint;
        digits += isPoint ? '.' : static_cast<char>(c);
    }
    return Convert(digits);
}

int MatchFraction(std::wstring_view text, wchar_t divide)
{
    std::size_t at = CountDigits(text, 0);
    if (at == 0 || at == text.size() || divide == 0)
        return 0;
    if (text[at] != divide && text[at] != L' ')
        return 0;
    if (text[at] == L' ')
        while (at < text.size() && (IsDigit(text[at]) || text[at] == L' '))
            ++at;
    if (at == text.size() || text[at] != divide)
        return 0;
    at = SkipBlanks(text, at + 1);
    const std::size_t digits = CountDigits(text, at);
    return digits > 0 ? static_cast<int>(at + digits) : 0;
}

double FractionOf(std::wstring_view text, wchar_t divide, wchar_t decimalSeparator)
{
    const std::size_t leading = CountDigits(text, 0);
    if (leading == text.size())
        return -1.0;
    double whole = 0.0;
    std::wstring_view numerator = text.substr(0, leading);
    std::wstring_view rest = text.substr(leading);
    if (rest.front() == L' ') {
        const std::size_t at = rest.find_first_not_of(L" 0123456789");
        if (at == std::wstring_view::npos || rest[at] != divide)
            return -1.0;
        // Blanks alone before the sign: the digits before them are the numerator then.
        if (rest.substr(0, at).find_first_not_of(L' ') != std::wstring_view::npos) {
            whole = ValueOf(numerator, decimalSeparator);
            numerator = rest.substr(0, at);
        }
        rest.remove_prefix(at);
    }
    // A blank behind the sign leaves no digits at the denominator's place, which is 0.0 then.
    const std::wstring_view denominator = rest.substr(1, CountDigits(rest, 1));
    return ValueOf(numerator, decimalSeparator) / ValueOf(denominator, decimalSeparator) + whole;
}
