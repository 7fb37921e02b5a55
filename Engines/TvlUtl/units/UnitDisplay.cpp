// Displays of measures: one definition or a chain of them.
#include "WUnit.h"

#include "siblings/TvlResources/Resources.h"

#include <cmath>

namespace {
constexpr const wchar_t* kMinusKey = L"9ca6a3a9-dc17-4a81-8a9b-4d9054012a67";
constexpr const wchar_t* kPlainSeparatorKey = L"02ee3768-e43f-4351-b46f-482f79abeedc";
constexpr const wchar_t* kPicaSeparatorKey = L"7342124f-bd84-4359-878d-58c58d54285b";
constexpr double kCarryScale = 1e-07;   // of the conversions between the parts of a chain

/// Decimal places of a definition, changed for the length of one call.
class TemporaryDecimals {
public:
    TemporaryDecimals(WUntiDef& definition, int decimals) : m_definition(definition), m_before(definition.GetDecimals())
    {
        m_definition.SetDecimals(decimals);
    }
    ~TemporaryDecimals() { m_definition.SetDecimals(m_before); }
    TemporaryDecimals(const TemporaryDecimals&) = delete;
    TemporaryDecimals& operator=(const TemporaryDecimals&) = delete;

private:
    WUntiDef& m_definition;
    int m_before;
};
}   // namespace

void WUnitCollection::Initialise(const std::vector<WUntiDef*>& definitions, int separatorKind, int forcedDecimals)
{
    m_separator = Framework::Resources::GetString(separatorKind == 1 ? kPicaSeparatorKey : kPlainSeparatorKey);
    m_definitions = definitions;
    m_count = static_cast<std::int32_t>(definitions.size());
    if (forcedDecimals >= 0)
        m_forcedDecimals = forcedDecimals;
    m_initialised = 1;
}

WUntiDef& WUnitCollection::Definition(std::size_t index) const
{
    WUntiDef& definition = *m_definitions[index];
    if (!definition.IsLoaded())
        definition.Load();
    return definition;
}

bool WUnitCollection::Matches(const TvlString& text) const
{
    for (std::size_t i = 0; i < m_definitions.size(); ++i)
        if (Definition(i).Matches(text))
            return true;
    return false;
}

TvlString WUnitCollection::JoinedNames(unsigned form) const
{
    TvlString names;
    for (std::size_t i = 0; i < m_definitions.size(); ++i) {
        if (i > 0)
            names += m_separator;
        names += Definition(i).GetNameText(form);
    }
    return names;
}

TvlString WUnitCollection::GetUnitString(unsigned form) const { return JoinedNames(form); }
TvlString WUnitCollection::GetDisplayString(unsigned form) const { return JoinedNames(form); }

int WUnitCollection::GetDecimalPlaces() const
{
    return m_forcedDecimals != -1 ? m_forcedDecimals : Definition(m_definitions.size() - 1).GetDecimals();
}

int WUnitCollection::SetDecimalPlaces(int places) { return m_forcedDecimals = places; }
double WUnitCollection::GetIncrement(unsigned level) const { return Definition(0).GetIncrement(level); }
double WUnitCollection::ToMetres(double value, double scale) const { return Definition(0).ToMetres(value, scale); }
double WUnitCollection::FromMetres(double value, double scale) const { return Definition(0).FromMetres(value, scale); }

TvlString WUnitCollection::FormatValue(double value, unsigned form, int decimals, double precision) const
{
    TvlString text;
    if (value < 0.0) {
        value *= -1.0;
        text += Framework::Resources::GetString(kMinusKey);
    }
    for (std::size_t i = 0; i + 1 < m_definitions.size(); ++i) {
        WUntiDef& part = Definition(i);
        const double whole = std::floor(value);
        {
            const TemporaryDecimals none(part, 0);
            text += part.FormatValue(whole, form);
        }
        value = (value * precision - whole * precision) / precision;
        // The next part is not loaded for this: a chain that nothing asked before shows an infinite part, and callers
        // that ask for the names first don't meet it.
        value = m_definitions[i + 1]->FromMetres(part.ToMetres(value, kCarryScale), kCarryScale);
        text += m_separator;
    }
    return text + FormatLastPart(value, form, decimals);
}

TvlString WUnitCollection::FormatLastPart(double value, unsigned form, int decimals) const
{
    WUntiDef& part = Definition(m_definitions.size() - 1);
    const TemporaryDecimals temporary(part, decimals == -1 ? GetDecimalPlaces() : decimals);
    return part.FormatValue(value, form);
}
