#include "RegionalFormat.h"

#include "LocaleCache.h"
#include "WRegionalSupportFormat.h"
#include "siblings/TvlCharacter/CGlbLang.h"
#include "siblings/TvlPlatform/TvlLocale.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {
constexpr std::size_t kSettingCapacity = 80;   // characters of the longest setting of Windows, end mark included
constexpr unsigned kMostDigits = 9;
constexpr std::size_t kMostPlainDigits = 64;   // before the separator
constexpr UINT kSignBefore = 1;                // the negative order "-1"
// Orders of sign and digits as a right-to-left reader sees them.
constexpr UINT kMirroredOrders[] = {0, 3, 4, 1, 2};

constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

std::wstring Read(Ports::LocaleSetting setting)
{
    return Ports::Locale::Get().Setting(setting, kSettingCapacity).value_or(std::wstring());
}

wchar_t FirstOf(const std::wstring& text) { return text.empty() ? L'\0' : text.front(); }

/// The digits that a setting begins with, so that a grouping of "3;2;0" counts as 3.
UINT ReadNumber(Ports::LocaleSetting setting)
{
    UINT number = 0;
    for (const wchar_t c : Read(setting)) {
        if (!IsDigit(c))
            break;
        number = std::min<UINT>(number * 10 + static_cast<UINT>(c - L'0'), 1000);
    }
    return number;
}
}   // namespace

void WRegionalSupportFormatImpl::Refresh()
{
    const LCID locale = TvlLocale::GetUserLocaleID();
    if (m_localeId == locale)
        return;
    m_localeId = locale;
    ReadSettings();
    FillLocaleCache();
}

void WRegionalSupportFormatImpl::ReadSettings()
{
    m_isPlain = false;
    m_format = {};
    m_format.leadingZero = ReadNumber(Ports::LocaleSetting::LeadingZero);
    m_format.grouping = ReadNumber(Ports::LocaleSetting::Grouping);
    m_format.decimalSeparator = Read(Ports::LocaleSetting::DecimalSeparator);
    m_format.thousandsSeparator = Read(Ports::LocaleSetting::ThousandsSeparator);
    m_decimal = FirstOf(m_format.decimalSeparator);
    m_thousands = FirstOf(m_format.thousandsSeparator);
    m_format.negativeOrder = ReadNumber(Ports::LocaleSetting::NegativeNumberOrder);
    CGlbLang language;
    language.SetFromWinLangID(Ports::Locale::Get().UserUILanguage());
    if (language.IsRTL() && m_format.negativeOrder < std::size(kMirroredOrders))
        m_format.negativeOrder = kMirroredOrders[m_format.negativeOrder];
    m_isPlain = m_format.grouping >= 2 && m_format.grouping <= 9 && m_format.leadingZero == 1
        && m_format.negativeOrder == kSignBefore && Read(Ports::LocaleSetting::NegativeSign) == L"-" && m_decimal != 0
        && m_format.decimalSeparator.size() == 1 && m_format.thousandsSeparator.size() == 1
        && m_format.decimalSeparator != m_format.thousandsSeparator;
}

bool WRegionalSupportFormatImpl::RemoveThousandSeptFromValue(const TvlString& text, TvlString& out) const
{
    if (m_thousands == 0 || text.Find(m_thousands) < 0)
        return false;
    TvlString plain = text;
    plain.Remove(m_thousands);
    out = plain;
    return true;
}

bool PlainNumber::HasSystemForm() const
{
    if (whole.empty() || whole.size() > kMostPlainDigits || fraction.size() > kMostDigits)
        return false;
    if (whole.front() != L'0')
        return true;
    return whole.size() == 1 && !(isNegative && fraction.find_first_not_of(L'0') == std::wstring_view::npos);
}

namespace {
const wchar_t* SkipDigits(const wchar_t* at)
{
    while (IsDigit(*at))
        ++at;
    return at;
}

void Append(std::wstring_view text, TvlString& out) { out.Append(text.data(), static_cast<int>(text.size())); }

std::wstring_view Between(const wchar_t* begin, const wchar_t* end)
{
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// The number at the front of a text, and what follows it. The zero behind the text ends every search.
std::pair<PlainNumber, std::wstring_view> ReadPlainNumber(const std::wstring& text, wchar_t decimalSeparator)
{
    PlainNumber number;
    const wchar_t* begin = text.c_str();
    number.isNegative = *begin == L'-';
    begin += number.isNegative;   // without a branch, which signs that alternate would mislead
    const wchar_t* at = SkipDigits(begin);
    number.whole = Between(begin, at);
    if (*at == decimalSeparator) {
        begin = ++at;
        at = SkipDigits(begin);
        number.fraction = Between(begin, at);
    }
    return {number, Between(at, text.c_str() + text.size())};
}
}   // namespace

inline bool WRegionalSupportFormatImpl::FormatPlain(TvlString& text, TvlString& out) const
{
    const wchar_t decimal = m_decimal;
    const wchar_t thousands = m_thousands;
    const auto [number, tail] = ReadPlainNumber(text.Std(), decimal);
    if (!number.HasSystemForm() || std::any_of(tail.begin(), tail.end(), [=](wchar_t c) {
            return IsDigit(c) || c == decimal || c == thousands;
        }))
        return false;
    const bool endsInSeparator = number.fraction.empty() && tail.data() != number.whole.data() + number.whole.size();
    if (number.whole.size() > m_format.grouping || endsInSeparator)
        Compose(number, tail, out);
    else
        out = std::move(text);   // has its form already
    return true;
}

/// In line: its callers have the number in registers.
[[gnu::always_inline]] inline void WRegionalSupportFormatImpl::Compose(
    const PlainNumber& number, std::wstring_view tail, TvlString& out) const
{
    constexpr std::size_t kRoom = 2 * kMostPlainDigits + kMostDigits + 2;
    wchar_t formatted[kRoom];
    wchar_t* at = formatted + kRoom;   // from the back: groups count from there
    if (!number.fraction.empty()) {
        for (auto digit = number.fraction.rbegin(); digit != number.fraction.rend(); ++digit)
            *--at = *digit;
        *--at = m_decimal;
    }
    UINT left = m_format.grouping;
    for (auto digit = number.whole.rbegin(); digit != number.whole.rend(); ++digit, --left) {
        if (left == 0) {
            *--at = m_thousands;
            left = m_format.grouping;
        }
        *--at = *digit;
    }
    at[-1] = L'-';
    at -= number.isNegative;
    out.Empty();
    out.Append(at, static_cast<int>(formatted + kRoom - at));
    if (!tail.empty())
        Append(tail, out);
}

bool WRegionalSupportFormatImpl::FormatNumber(
    const PlainNumber& number, std::wstring_view decimalSeparator, TvlString& out)
{
    Refresh();
    const bool isKnown = decimalSeparator.size() == 1 && decimalSeparator.front() == m_decimal;
    if (!m_isPlain || !isKnown || !number.HasSystemForm())
        return false;
    Compose(number, std::wstring_view(), out);
    return true;
}

bool WRegionalSupportFormatImpl::Format(TvlString&& ready, TvlString& out)
{
    Refresh();
    if (ready.IsEmpty())
        return false;
    if (m_isPlain && FormatPlain(ready, out))
        return true;
    const std::wstring_view text = ready;
    const wchar_t decimal = m_decimal;
    const wchar_t thousands = m_thousands;
    const auto last = std::find_if(text.rbegin(), text.rend(),
        [=](wchar_t c) { return IsDigit(c) || (c != 0 && (c == decimal || c == thousands)); });
    if (last == text.rend()) {
        out = TvlString(text);
        return false;
    }
    const auto end = static_cast<std::size_t>(text.rend() - last);
    return FormatBySystem(text.substr(0, end), text.substr(end), out);
}

bool WRegionalSupportFormatImpl::FormatBySystem(std::wstring_view text, std::wstring_view tail, TvlString& out)
{
    const wchar_t decimal = m_decimal;
    const wchar_t thousands = m_thousands;
    std::wstring number(text);
    if (thousands != 0)
        std::erase(number, thousands);
    const std::size_t separator = decimal == 0 ? std::wstring::npos : number.find(decimal);
    if (separator != std::wstring::npos)
        number[separator] = L'.';
    std::erase_if(number, [](wchar_t c) { return !IsDigit(c) && c != L'-' && c != L'.'; });

    m_format.digits = 0;
    if (const std::size_t point = number.find(L'.'); separator != std::wstring::npos && point != std::wstring::npos)
        m_format.digits = static_cast<UINT>(std::min<std::size_t>(number.size() - point - 1, kMostDigits));
    const auto formatted = Ports::Locale::Get().FormatNumber(number, m_format);
    out = formatted.value_or(number) + std::wstring(tail);
    return formatted.has_value();
}

bool WRegionalSupportFormat::GetValueInLocaleFormat(TvlString text, TvlString& out)
{
    return WRegionalSupportFormatImpl::GetInstance().Format(std::move(text), out);
}

bool WRegionalSupportFormat::RemoveThousandSeptFromValue(TvlString text, TvlString& out)
{
    return WRegionalSupportFormatImpl::GetInstance().RemoveThousandSeptFromValue(text, out);
}

void WRegionalSupportFormat::SetNumFractionalDigit(unsigned digits)
{
    WRegionalSupportFormatImpl::GetInstance().SetNumFractionalDigit(digits);
}
