// Regional settings through the Windows calls.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
class Win32Locale final : public Locale {
public:
    std::optional<std::wstring> Setting(LocaleSetting setting, std::size_t capacity) const override
    {
        std::wstring text(capacity, L'\0');
        const int length =
            GetLocaleInfoEx(Name(), static_cast<LCTYPE>(setting), text.data(), static_cast<int>(capacity));
        if (capacity == 0 || length == 0)
            return std::nullopt;
        text.resize(static_cast<std::size_t>(length) - 1);
        return text;
    }

    std::optional<std::wstring> FormatNumber(std::wstring_view number, const NumberFormat& format) const override
    {
        const std::wstring value(number);
        std::wstring decimal = format.decimalSeparator;
        std::wstring thousands = format.thousandsSeparator;
        const NUMBERFMTW form{
            format.digits, format.leadingZero, format.grouping, decimal.data(), thousands.data(), format.negativeOrder};
        std::wstring text(
            static_cast<std::size_t>(GetNumberFormatEx(Name(), 0, value.c_str(), &form, nullptr, 0)), L'\0');
        if (text.empty())
            return std::nullopt;
        const int length =
            GetNumberFormatEx(Name(), 0, value.c_str(), &form, text.data(), static_cast<int>(text.size()));
        if (length == 0)
            return std::nullopt;
        text.resize(static_cast<std::size_t>(length) - 1);
        return text;
    }

    LCID UserLocaleId() const override { return m_name.empty() ? GetUserDefaultLCID() : LocaleNameToLCID(Name(), 0); }
    LANGID UserUILanguage() const override
    {
        return m_name.empty() ? GetUserDefaultUILanguage() : LANGIDFROMLCID(UserLocaleId());
    }

    std::optional<int> UILanguageCount() const override
    {
        int count = 0;
        const auto add = [](wchar_t*, LONG_PTR counter) -> BOOL {
            ++*reinterpret_cast<int*>(counter);
            return TRUE;
        };
        if (!EnumUILanguagesW(add, 0, reinterpret_cast<LONG_PTR>(&count)))
            return std::nullopt;
        return count;
    }

    bool UseLocale(const std::wstring& name) override
    {
        if (!IsValidLocaleName(name.c_str()))
            return false;
        m_name = name;
        return true;
    }

private:
    // A null name is the user's default locale.
    const wchar_t* Name() const { return m_name.empty() ? nullptr : m_name.c_str(); }

    std::wstring m_name;
};
}   // namespace

template <>
Locale& SystemPort<Locale>()
{
    static Win32Locale locale;
    return locale;
}

}   // namespace Ports
