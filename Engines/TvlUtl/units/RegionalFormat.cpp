#include "RegionalFormat.h"

#include "LocaleCache.h"
#include "WRegionalSupportFormat.h"
#include "siblings/TvlCharacter/CGlbLang.h"
#include "siblings/TvlPlatform/TvlLocale.h"

#include <algorithm>
#include <iterator>

namespace {
constexpr std::size_t kSettingCapacity = 80;   // characters of the longest setting of Windows, end mark included
constexpr unsigned kMostDigits = 9;
// Orders of sign and digits as a right-to-left reader sees them.
constexpr UINT kMirroredOrders[] = {0, 3, 4, 1, 2};

constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

std::wstring Read(Ports::LocaleSetting setting)
{
    return Ports::Locale::Get().Setting(setting, kSettingCapacity).value_or(std::wstring());
}

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
    m_format = {};
    m_format.leadingZero = ReadNumber(Ports::LocaleSetting::LeadingZero);
    m_format.grouping = ReadNumber(Ports::LocaleSetting::Grouping);
    m_format.decimalSeparator = Read(Ports::LocaleSetting::DecimalSeparator);
    m_format.thousandsSeparator = Read(Ports::LocaleSetting::ThousandsSeparator);
    m_format.negativeOrder = ReadNumber(Ports::LocaleSetting::NegativeNumberOrder);
    CGlbLang language;
    language.SetFromWinLangID(Ports::Locale::Get().UserUILanguage());
    if (language.IsRTL() && m_format.negativeOrder < std::size(kMirroredOrders))
        m_format.negativeOrder = kMirroredOrders[m_format.negativeOrder];
    FillLocaleCache();
}

wchar_t WRegionalSupportFormatImpl::ThousandsSeparator() const
{
    return m_format.thousandsSeparator.empty() ? L'\0' : m_format.thousandsSeparator.front();
}

wchar_t WRegionalSupportFormatImpl::DecimalSeparator() const
{
    return m_format.decimalSeparator.empty() ? L'\0' : m_format.decimalSeparator.front();
}

bool WRegionalSupportFormatImpl::RemoveThousandSeptFromValue(const TvlString& text, TvlString& out) const
{
    const wchar_t separator = ThousandsSeparator();
    if (separator == 0 || text.Find(separator) < 0)
        return false;
    TvlString plain = text;
    plain.Remove(separator);
    out = plain;
    return true;
}

bool WRegionalSupportFormatImpl::GetValueInLocaleFormat(const TvlString& text, TvlString& out)
{
    Refresh();
    if (text.IsEmpty())
        return false;
    const wchar_t decimal = DecimalSeparator();
    const wchar_t thousands = ThousandsSeparator();
    const std::wstring& all = text.Std();
    const auto last = std::find_if(all.rbegin(), all.rend(),
        [=](wchar_t c) { return IsDigit(c) || (c != 0 && (c == decimal || c == thousands)); });
    if (last == all.rend()) {
        out = text;
        return false;
    }
    const auto end = static_cast<std::size_t>(all.rend() - last);
    const std::wstring tail = all.substr(end);
    std::wstring number = all.substr(0, end);
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
    out = formatted.value_or(number) + tail;
    return formatted.has_value();
}

bool WRegionalSupportFormat::GetValueInLocaleFormat(TvlString text, TvlString& out)
{
    return WRegionalSupportFormatImpl::GetInstance().GetValueInLocaleFormat(text, out);
}

bool WRegionalSupportFormat::RemoveThousandSeptFromValue(TvlString text, TvlString& out)
{
    return WRegionalSupportFormatImpl::GetInstance().RemoveThousandSeptFromValue(text, out);
}

void WRegionalSupportFormat::SetNumFractionalDigit(unsigned digits)
{
    WRegionalSupportFormatImpl::GetInstance().SetNumFractionalDigit(digits);
}
