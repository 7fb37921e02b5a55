// Definitions of measures.
#include "UnitTables.h"
#include "UnitWords.h"

#include "siblings/TvlResources/Resources.h"
#include "windows/Locale.h"

#include <cmath>

namespace {
constexpr double kDefaultResolution = 11811024.0;   // 300 pixels per inch, per kilometre
constexpr double kLeastResolution = 1e-06;
constexpr std::size_t kSeparatorCapacity = 16;

unsigned namesGeneration = 0;

double Resolution()
{
    return kLeastResolution >= WUnit::m_dScreenResolution ? kDefaultResolution : WUnit::m_dScreenResolution;
}

/// Cuts the zeros at a number's end, and the system's decimal separator when nothing is left behind it.
void TrimZeros(TvlString& text)
{
    int position = text.GetLength() - 1;
    while (position > 0 && text.GetAt(position) == L'0')
        --position;
    const auto separator = Ports::Locale::Get().Setting(Ports::LocaleSetting::DecimalSeparator, kSeparatorCapacity);
    if (position > 0 && separator && !separator->empty() && text.GetAt(position) == separator->front())
        --position;
    text = text.Left(position + 1);
}
}   // namespace

unsigned UnitNamesGeneration() { return namesGeneration; }

void WUntiDef::Load()
{
    if (const DefinitionRow* const row = FindDefinitionRow(m_id))
        Define(row->decimals, row->increments[0], row->increments[1], row->increments[2], row->keys[0], row->keys[1],
            row->keys[2], row->keys[3], row->factor);
}

void WUntiDef::Define(int decimals, double inc0, double inc1, double inc2, const TvlString& name1,
    const TvlString& name2, const TvlString& name3, const TvlString&, double factor)
{
    m_decimals = decimals;
    m_increments[0] = inc0;
    m_increments[1] = inc1;
    m_increments[2] = inc2;
    m_names[0] = Framework::Resources::GetString(name1);
    m_names[1] = Framework::Resources::GetString(name2);
    m_names[2] = Framework::Resources::GetString(name3);
    m_factor = factor;
    m_loaded = 1;
    ++namesGeneration;
}

bool WUntiDef::Matches(const TvlString& text) const
{
    for (const TvlString& name : m_names)
        if (!name.IsEmpty() && name.Compare(text, CompareCase::Sensitive) == 0)
            return true;
    return false;
}

const TvlString& WUntiDef::PlainName(unsigned form) const
{
    static const TvlString none;
    switch (form) {
    case kUnitTextFirstName:
    case kUnitTextSecondName:
    case kUnitTextThirdName:
        return m_names[form - kUnitTextFirstName];
    case kUnitTextSymbol:
        return m_names[2];
    default:
        return none;
    }
}

TvlString WUntiDef::GetNameText(unsigned form) const { return PlainName(form); }
double WUntiDef::GetIncrement(unsigned level) const { return level < 3 ? m_increments[level] : -1.0; }

double WUntiDef::ToMetres(double value, double scale) const { return ToMetres(value, scale, m_factor); }
double WUntiDef::FromMetres(double value, double scale) const { return FromMetres(value, scale, m_factor); }

TvlString WUntiDef::FormatValue(double value, unsigned form) const
{
    const double power = std::pow(10.0, m_decimals);
    value = std::floor(power * value + 0.5) / power;
    TvlString text;
    text.Format(TvlString().Format(L"%%0.%df", m_decimals).c_str(), value);
    if (m_decimals != 0)
        TrimZeros(text);
    if (form >= kUnitTextFirstName && form <= kUnitTextSymbol) {
        text += L' ';
        text += PlainName(form);
    }
    return text;
}

void WUnitWithSymbol::Load() { WUntiDef::Load(); }

void WUnitWithSymbol::Define(int decimals, double inc0, double inc1, double inc2, const TvlString& name1,
    const TvlString& name2, const TvlString& name3, const TvlString& symbol, double factor)
{
    WUntiDef::Define(decimals, inc0, inc1, inc2, name1, name2, name3, symbol, factor);
    m_symbol = Framework::Resources::GetString(symbol);
    ++namesGeneration;
}

bool WUnitWithSymbol::Matches(const TvlString& text) const
{
    return (!m_symbol.IsEmpty() && m_symbol.Compare(text, CompareCase::Sensitive) == 0) || WUntiDef::Matches(text);
}

TvlString WUnitWithSymbol::GetNameText(unsigned form) const
{
    return form == kUnitTextSymbol ? m_symbol : WUntiDef::GetNameText(form);
}

TvlString WUnitWithSymbol::FormatValue(double value, unsigned form) const
{
    if (form != kUnitTextSymbol)
        return WUntiDef::FormatValue(value, form);
    return WUntiDef::FormatValue(value, kUnitTextNumber) + m_symbol;
}

double WUnitPixel::ToMetres(double value, double scale) const
{
    const double s = ScaleOrOne(scale);
    return (value / s) * m_factor / Resolution() * s;
}

double WUnitPixel::FromMetres(double value, double scale) const
{
    const double s = ScaleOrOne(scale);
    return (value / s) * Resolution() / m_factor * s;
}
