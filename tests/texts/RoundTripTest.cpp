// Measures that are shown and typed again, in every language with the settings of its own region.
#include "LanguageTexts.h"
#include "Languages.h"
#include "MeasureText.h"
#include "Units.h"
#include "WEqParser.h"
#include "WRegionalSupportFormat.h"
#include "WUnit.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"
#include "windows/Locale.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace {

constexpr int kDisplays = 41;
constexpr int kNoDisplays[] = {18, 19, 20, 21};
constexpr int kChains[] = {3, 12, 28, 29, 31};
constexpr int kMeasures[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 22, 23, 27, 37, 38, 39, 40};
constexpr std::size_t kSettingCapacity = 80;

template <std::size_t count>
bool Among(int id, const int (&ids)[count])
{
    return std::find(std::begin(ids), std::end(ids), id) != std::end(ids);
}

bool Holds(const TvlString& text, Ports::LocaleSetting setting)
{
    const auto separator = Ports::Locale::Get().Setting(setting, kSettingCapacity);
    return separator && !separator->empty() && text.Find(separator->front()) >= 0;
}

/// A value and how it is shown.
struct ShownMeasure {
    std::string kind;   // "display" or "measure", as the document has it
    int display;
    unsigned form;
    double value;
    TvlString text;
};

bool HasForeignPoint(const ShownMeasure& shown)
{
    return shown.text.Find(L'.') >= 0 && !Holds(L".", Ports::LocaleSetting::DecimalSeparator);
}

/// Which values a line of the document speaks of.
const std::map<std::string, bool (*)(const ShownMeasure&)> kValues = {
    {"all", [](const ShownMeasure&) { return true; }},
    {"below 0", [](const ShownMeasure& shown) { return shown.value < 0.0; }},
    {"between -1 and 0", [](const ShownMeasure& shown) { return shown.value < 0.0 && shown.value > -1.0; }},
    {"with a point, where the region has another separator", HasForeignPoint},
    {"with groups of digits", [](const ShownMeasure& shown) { return std::fabs(shown.value) >= 1000.0; }},
};

/// A line of the document: texts that don't come back.
struct Exception {
    std::string kind;
    std::vector<int> displays;
    unsigned firstForm;
    unsigned lastForm;
    bool (*speaksOf)(const ShownMeasure&);
    std::set<int> seen;   // displays on which a value failed for this reason alone

    bool Covers(const ShownMeasure& shown) const
    {
        return shown.kind == kind && std::find(displays.begin(), displays.end(), shown.display) != displays.end()
            && shown.form >= firstForm && shown.form <= lastForm && speaksOf(shown);
    }
};

std::vector<unsigned> Numbers(std::string cell)
{
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c < '0' || c > '9'; }, ' ');
    std::istringstream text(cell);
    std::vector<unsigned> numbers;
    for (unsigned number = 0; text >> number;)
        numbers.push_back(number);
    return numbers;
}

std::vector<Exception> ReadExceptions()
{
    std::vector<Exception> exceptions;
    std::ifstream document(ROUND_TRIPS);
    for (std::string line; std::getline(document, line);) {
        std::vector<std::string> cells;
        std::istringstream row(line);
        for (std::string cell; std::getline(row, cell, '|');)
            cells.push_back(cell.size() > 2 ? cell.substr(1, cell.size() - 2) : std::string());
        if (cells.size() < 6 || (cells[1] != "display" && cells[1] != "measure"))
            continue;
        const std::vector<unsigned> forms = Numbers(cells[3]);
        const std::vector<unsigned> displays = Numbers(cells[2]);
        exceptions.push_back(
            {cells[1], {displays.begin(), displays.end()}, forms.at(0), forms.back(), kValues.at(cells[4]), {}});
    }
    return exceptions;
}

/// A hundred values: what is easily got wrong, and sizes from a thousandth up, of both signs.
std::vector<double> Values()
{
    std::vector<double> values{0.0, 1.0, -1.0, 0.5, -0.5, 1000.0, -1000.0, 1234.5, -1234.5, 12345.678};
    for (double size = 0.0013; values.size() < 100; size *= 1.2)
        values.push_back(values.size() % 2 == 0 ? size : -size);
    return values;
}

class RoundTrip : public testing::Test {
protected:
    ~RoundTrip() override
    {
        Ports::Locale::Get().UseLocale(L"en-US");
        Framework::Resources::SetLanguageFolder(L"EN");
    }

    void Use(const SuiteLanguage& language, const wchar_t* region)
    {
        ASSERT_TRUE(Ports::Locale::Get().UseLocale(region)) << language.folder;
        Framework::Resources::SetLanguageFolder(TvlPlatform::FromUtf8(language.folder));
        // A change of region is taken in when a number is shown, not when one is read.
        TvlString shown;
        WRegionalSupportFormat().GetValueInLocaleFormat(L"1", shown);
    }

    /// @param units      of the language in use
    /// @param tolerance  how far the value may be off
    void Try(WUnit& units, const ShownMeasure& shown, double tolerance, const char* language)
    {
        double value = 0.0;
        const bool isBack =
            units.StringToValue(shown.display, shown.text, value, kTokensAll | kTokensUnits, DRG::Radians)
            && std::fabs(value - shown.value) <= tolerance + std::fabs(shown.value) * 1e-12;
        if (isBack)
            return;
        std::vector<Exception*> reasons;
        for (Exception& exception : m_exceptions)
            if (exception.Covers(shown))
                reasons.push_back(&exception);
        if (reasons.size() == 1)
            reasons.front()->seen.insert(shown.display);
        EXPECT_FALSE(reasons.empty()) << language << ", " << shown.kind << " " << shown.display << ", form "
                                      << shown.form << ": " << shown.value << " is shown as \""
                                      << TvlPlatform::ToUtf8(shown.text) << "\" and read as " << value;
    }

    void ExpectThatExceptionsFail(const std::string& kind) const
    {
        for (const Exception& exception : m_exceptions) {
            for (const int display : exception.displays) {
                EXPECT_TRUE(exception.kind != kind || exception.seen.contains(display))
                    << kind << " " << display << ", forms from " << exception.firstForm
                    << ", comes back in spite of line " << &exception - m_exceptions.data() + 1 << " of the document";
            }
        }
    }

    const std::vector<double> m_values = Values();

private:
    std::vector<Exception> m_exceptions = ReadExceptions();
};

/// Half of the last place that a display shows.
double DisplayTolerance(WUnit& units, int display)
{
    static const std::map<int, double> kPartsOfWhole = {{3, 12.0}, {12, 12.0}, {28, 3600.0}, {29, 60.0}, {31, 12.0}};
    const auto parts = kPartsOfWhole.find(display);
    constexpr double kFinestFraction = 1.0 / 128.0;
    constexpr double kSlack = 1.001;   // twelve didots are a little less than a cicero
    const bool showsFractions = display == 31 || display == 33 || display == 34;
    const double step = showsFractions ? kFinestFraction : std::pow(10.0, -units.GetUnitDecimalPlaces(display));
    return 0.5 * step / (parts == kPartsOfWhole.end() ? 1.0 : parts->second) * kSlack;
}

TEST_F(RoundTrip, BringsDisplayedMeasuresBackInEveryLanguage)
{
    for (const SuiteLanguage& language : kLanguages) {
        // Chains show a point everywhere: with American settings all that they say is tried too.
        for (const wchar_t* const region : {language.region, L"en-US"}) {
            Use(language, region);
            WUnit units;
            units.LoadDefaults(nullptr, 0);
            for (int display = 0; display < kDisplays; ++display) {
                if (Among(display, kNoDisplays) || (region != language.region && !Among(display, kChains)))
                    continue;
                const double tolerance = DisplayTolerance(units, display);
                for (unsigned form = kUnitTextNumber; form <= kUnitTextSymbol; ++form)
                    for (const double value : m_values)
                        Try(units, {"display", display, form, value, RegionalText(units, display, value, form, -1)},
                            tolerance, language.folder);
            }
        }
    }
    ExpectThatExceptionsFail("display");
}

TvlString MeasureText(int unit, unsigned form, double value, unsigned decimals)
{
    constexpr int kNames[] = {0, kUnitNameFirst, kUnitNameSecond, kUnitNameThird};
    const double base = UNITConvertUnitToBase(static_cast<unsigned>(unit), 0.0, value);
    const TvlString number = UNITConvToUnitAndStringEx(base, unit, 0.0, decimals, 0, 1);
    return form == 0 ? number : number + TvlString(L" ") + UNITGetUnitAsString(unit, kNames[form]);
}

TEST_F(RoundTrip, BringsMeasureTextsBackInEveryLanguage)
{
    constexpr unsigned kChainDecimals = 3;
    for (const SuiteLanguage& language : kLanguages) {
        Use(language, language.region);
        WUnit units;
        units.LoadDefaults(nullptr, 0);
        for (const int unit : kMeasures) {
            const unsigned decimals = Among(unit, kChains) ? kChainDecimals : UNITGetDefDecimalPrecision(unit);
            // The whole of the last place: a negative value below it is shown as 0.
            const double tolerance = std::pow(10.0, -static_cast<double>(decimals)) * 1.001;
            for (unsigned form = 0; form <= 3; ++form)
                for (const double value : m_values)
                    Try(units, {"measure", unit, form, value, MeasureText(unit, form, value, decimals)}, tolerance,
                        language.folder);
        }
    }
    ExpectThatExceptionsFail("measure");
}

/// What a function word makes of a value.
double Evaluate(const std::string& function)
{
    double value = 0.0;
    WEqParser parser(TvlPlatform::FromUtf8(function + "(0.5)"), kTokensAll, DRG::Radians);
    EXPECT_TRUE(parser.GetValue(value)) << function;
    return value;
}

TEST_F(RoundTrip, FunctionsAreTypedInTheWordsOfTheLanguage)
{
    const auto languages = TvlUtils::SystemIO::ToFilePath(TvlConfig::GetSuiteDir()) / "Languages";
    LanguageFaults faults;
    const auto english = ReadLanguageTexts(languages / "EN", faults).at("parser.json");
    std::map<std::string, double> values;
    for (const auto& [key, word] : english)
        if (std::isalpha(static_cast<unsigned char>(word.front())))
            values[key] = Evaluate(word);
    EXPECT_EQ(values.size(), 18u);
    for (const SuiteLanguage& language : kLanguages) {
        // With a point for the value itself.
        Use(language, L"en-US");
        const auto words = ReadLanguageTexts(languages / language.folder, faults).at("parser.json");
        for (const auto& [key, expected] : values)
            EXPECT_THAT(Evaluate(words.at(key)), testing::NanSensitiveDoubleEq(expected)) << language.folder;
    }
}
}   // namespace
