// The port of regional settings on the system's own data: both targets give the same texts.
#include "windows/Locale.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>

namespace {

using Ports::Locale;
using Ports::LocaleSetting;
using Ports::NumberFormat;

class SystemLocale : public testing::Test {
protected:
    ~SystemLocale() override { Locale::Get().UseLocale(L"en-US"); }
};

TEST_F(SystemLocale, KnowsTheUsualSeparators)
{
    struct Row {
        const wchar_t* name;
        LCID id;
        const wchar_t* decimal;
        const wchar_t* thousands;
        const wchar_t* grouping;
        const wchar_t* list;
        const wchar_t* measurement;
    };
    constexpr Row kRows[] = {
        {L"en-US", 0x0409, L".", L",", L"3;0", L",", L"1"},
        {L"de-DE", 0x0407, L",", L".", L"3;0", L";", L"0"},
        {L"pt-BR", 0x0416, L",", L".", L"3;0", L";", L"0"},
        {L"ja-JP", 0x0411, L".", L",", L"3;0", L",", L"0"},
        {L"hi-IN", 0x0439, L".", L",", L"3;2;0", L",", L"0"},
    };
    constexpr std::size_t kRoom = 80;
    Locale& locale = Locale::Get();
    for (const Row& row : kRows) {
        ASSERT_TRUE(locale.UseLocale(row.name)) << row.name;
        EXPECT_EQ(locale.UserLocaleId(), row.id) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::DecimalSeparator, kRoom), row.decimal) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::ThousandsSeparator, kRoom), row.thousands) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::Grouping, kRoom), row.grouping) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::ListSeparator, kRoom), row.list) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::MeasurementSystem, kRoom), row.measurement) << row.name;
        EXPECT_EQ(locale.Setting(LocaleSetting::DecimalSeparator, 1), std::nullopt) << "no room for the end mark";
    }
    EXPECT_FALSE(locale.UseLocale(L"no such locale"));
    EXPECT_EQ(locale.UserLocaleId(), 0x0439u) << "an unknown name changes nothing";
}

TEST_F(SystemLocale, WritesNumbersInTheGivenForm)
{
    struct Row {
        const wchar_t* number;
        NumberFormat format;
        const wchar_t* text;
    };
    const Row kRows[] = {
        {L"1234567.891", {2, 1, 3, L".", L",", 1}, L"1,234,567.89"},
        {L"1234567.895", {2, 1, 3, L",", L".", 1}, L"1.234.567,90"},
        {L"12345678", {0, 1, 32, L".", L",", 1}, L"1,23,45,678"},
        {L"12345678", {0, 1, 0, L".", L",", 1}, L"12345678"},
        {L"0.5", {1, 1, 3, L".", L",", 1}, L"0.5"},
        {L"0.5", {1, 0, 3, L".", L",", 1}, L".5"},
        {L"0.5", {0, 0, 3, L".", L",", 1}, L"1"},
        {L"1999.999", {2, 1, 3, L".", L",", 1}, L"2,000.00"},
        {L"-12", {0, 1, 3, L".", L",", 0}, L"(12)"},
        {L"-12", {0, 1, 3, L".", L",", 1}, L"-12"},
        {L"-12", {0, 1, 3, L".", L",", 2}, L"- 12"},
        {L"-12", {0, 1, 3, L".", L",", 3}, L"12-"},
        {L"-12", {0, 1, 3, L".", L",", 4}, L"12 -"},
        {L"007", {0, 1, 3, L".", L",", 1}, L"7"},
        {L"123456", {3, 1, 4, L"::", L"__", 1}, L"12__3456::000"},
    };
    ASSERT_TRUE(Locale::Get().UseLocale(L"en-US"));
    for (const Row& row : kRows) {
        const auto text = Locale::Get().FormatNumber(row.number, row.format);
        EXPECT_EQ(text, row.text) << TvlPlatform::ToUtf8(row.number) << " is "
                                  << TvlPlatform::ToUtf8(text.value_or(L"nothing"));
    }
    for (const wchar_t* number : {L"1.2.3", L"a", L"1,2", L"--1", L"1e5"})
        EXPECT_EQ(Locale::Get().FormatNumber(number, {0, 1, 3, L".", L",", 1}), std::nullopt) << number;
}

}   // namespace
