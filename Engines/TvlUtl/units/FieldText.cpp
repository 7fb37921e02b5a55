// From the text of a field to a value in a unit.
#include "NumberText.h"
#include "RegionalFormat.h"
#include "UnitParser.h"
#include "WUnit.h"

namespace {
constexpr int kPicasAndPoints = 3;
constexpr int kCicerosAndDidots = 12;
constexpr double kTenthMicronsPerMetre = 10000000.0;
}   // namespace

const UnitWords& WUnit::Words()
{
    for (WUntiDef* const definition : m_definitions)
        if (!definition->IsLoaded())
            definition->Load();
    if (!m_words || !m_words->IsCurrent(m_definitions)) {
        delete m_words;
        m_words = nullptr;
        m_words = new UnitWords(m_definitions);
    }
    return *m_words;
}

int WUnit::StringToValue(int id, TvlString text, double& value, unsigned flags, DRG angleMode)
{
    const double target = ConvertFromUnitTo10thMicron(id, 1.0, -1.0) / kTenthMicronsPerMetre;
    const UnitTokenSource units(Words(), m_definitions, target);
    const SeparatorSource separator(ListSeparator());
    WUnitParser parser(id, angleMode);
    parser.LoadTokens(flags);
    if (flags & kTokensUnits) {
        parser.AddTokens(units);
        parser.AddTokens(separator);
    }
    // Picas and ciceros may have the thousands separator between their parts.
    if (id != kPicasAndPoints && id != kCicerosAndDidots)
        WRegionalSupportFormatImpl::GetInstance().RemoveThousandSeptFromValue(text, text);
    parser.LoadEquation(std::move(text));
    parser.PushFloor();
    return parser.GetValue(value);
}
