// Regional settings that a test chooses, in the system's place as long as the object lives.
#pragma once

#include "windows/Locale.h"

#include <map>
#include <string>

namespace TvlTestKit {

/// One at a time; the system's settings are back when it goes.
class FakeLocale : public Ports::Locale {
public:
    /// Settings by what they are; one that is missing can't be read.
    using Settings = std::map<Ports::LocaleSetting, std::wstring>;

    /// English settings. @param id language id of the user's region, 0x0409 for English (United States)
    explicit FakeLocale(LCID id = 0x0409) : localeId(id), m_system(Ports::Locale::Get()) { SetForTests(this); }
    ~FakeLocale() override { SetForTests(nullptr); }

    std::optional<std::wstring> Setting(Ports::LocaleSetting setting, std::size_t capacity) const override
    {
        ++reads;
        const auto found = settings.find(setting);
        if (found == settings.end() || found->second.size() + 1 > capacity)
            return std::nullopt;
        return found->second;
    }
    std::optional<std::wstring> FormatNumber(std::wstring_view number, const Ports::NumberFormat& format) const override
    {
        return m_system.FormatNumber(number, format);
    }
    LCID UserLocaleId() const override { return localeId; }
    LANGID UserUILanguage() const override { return language; }
    bool UseLocale(const std::wstring&) override { return false; }

    /// Those of the United States, inches included.
    static Settings English()
    {
        using S = Ports::LocaleSetting;
        return {{S::ListSeparator, L","}, {S::DecimalSeparator, L"."}, {S::ThousandsSeparator, L","},
            {S::Grouping, L"3;0"}, {S::LeadingZero, L"1"}, {S::NegativeSign, L"-"}, {S::NegativeNumberOrder, L"1"},
            {S::MeasurementSystem, L"1"}};
    }
    /// Those of Germany: decimal comma, list semicolon, metric.
    static Settings German()
    {
        using S = Ports::LocaleSetting;
        Settings settings = English();
        settings[S::ListSeparator] = L";";
        settings[S::DecimalSeparator] = L",";
        settings[S::ThousandsSeparator] = L".";
        settings[S::MeasurementSystem] = L"0";
        return settings;
    }

    Settings settings = English();   ///< may be changed at any time
    LCID localeId;                   ///< of the user's region
    LANGID language = 0x0409;        ///< of the user interface
    mutable int reads = 0;           ///< how often a setting was asked for

private:
    const Ports::Locale& m_system;
};

}   // namespace TvlTestKit
