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

namespace {
/// The place of a text that is the place `position` of the text without what is left away.
template <class IsLeftAway>
std::size_t OriginalPosition(std::wstring_view text, std::size_t position, IsLeftAway isLeftAway)
{
    std::size_t kept = 0;
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        if (isLeftAway(at, text[at]))
            continue;
        if (kept == position)
            break;
        ++kept;
    }
    return at;
}
}   // namespace

int WUnit::Evaluate(
    int id, const TvlString& text, double& value, unsigned flags, DRG angleMode, WParseDiagnosis* diagnosis)
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
    TvlString equation = text;
    // Picas and ciceros may have the thousands separator between their parts.
    if (id != kPicasAndPoints && id != kCicerosAndDidots)
        WRegionalSupportFormatImpl::GetInstance().RemoveThousandSeptFromValue(text, equation);
    const bool isWhole = equation.GetLength() == text.GetLength();
    parser.LoadEquation(std::move(equation));
    parser.PushFloor();
    const int result = parser.GetValue(value);
    if (diagnosis) {
        *diagnosis = parser.GetDiagnosis();
        const std::size_t tail = parser.GetJoinedTail();
        diagnosis->position = isWhole ? OriginalPosition(text, diagnosis->position,
                                  [tail](std::size_t at, wchar_t c) { return at >= tail && IsJoinedBlank(c); })
                                      : OriginalPosition(text, diagnosis->position, [](std::size_t, wchar_t c) {
                                            return WRegionalSupportFormatImpl::GetInstance().IsThousandsSeparator(c);
                                        });
    }
    return result;
}

int WUnit::StringToValue(int id, TvlString text, double& value, unsigned flags, DRG angleMode)
{
    return Evaluate(id, text, value, flags, angleMode, nullptr);
}

WParseDiagnosis WUnit::DiagnoseText(int id, const TvlString& text, unsigned flags, DRG angleMode)
{
    WParseDiagnosis diagnosis;
    double value = 0.0;
    return Evaluate(id, text, value, flags, angleMode, &diagnosis) ? WParseDiagnosis() : diagnosis;
}
