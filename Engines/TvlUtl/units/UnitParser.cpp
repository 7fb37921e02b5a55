#include "UnitParser.h"

#include "NumberText.h"

#include "windows/Locale.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <optional>
#include <string>
#include <utility>

namespace {
constexpr int kPicasAndPoints = 3;
constexpr int kDegree = 11;
constexpr int kCicerosAndDidots = 12;
constexpr int kArcMinute = 26;
constexpr int kArcSecond = 27;
constexpr int kRadian = 32;
constexpr int kPlainCount = 40;

constexpr double kPi = 3.141592653589793;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kRadiansPerArcMinute = 0.0002908882086657216;
constexpr double kRadiansPerArcSecond = 4.84813681109536e-06;
constexpr int kUnitPriority = 7;
}   // namespace

bool IsJoinedBlank(wchar_t c) { return std::iswspace(static_cast<std::wint_t>(c)) != 0; }

WTokenUnit::WTokenUnit(double factor, const WUntiDef* definition)
    : WToken(kUnitPriority, kUnitPriority, TvlString()), m_factor(factor), m_definition(definition)
{
}

int WTokenUnit::Execute(WValueStack& values)
{
    if (values.empty())
        return 0;
    values.front() *= m_factor;
    return 1;
}

int WTokenUnit::Match(const TvlString& text, int& length, int& valueBefore)
{
    length = 0;
    if (valueBefore == 0)
        return 0;
    for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form) {
        const TvlString name = m_definition->GetNameText(form);
        if (name.GetLength() > length && name.CompareNoCase(text.Left(name.GetLength())) == 0)
            length = name.GetLength();
    }
    if (length > 0)
        valueBefore = 1;
    return length > 0 ? 1 : 0;
}

int WTokenSeparator::Execute(WValueStack& values)
{
    if (values.empty())
        return 0;
    const double last = values.front();
    values.pop_front();
    if (values.empty()) {
        values.push_front(last);
        return 1;
    }
    double& first = values.front();
    first = std::fabs(last) * (first < 0.0 ? -1.0 : 1.0) + first;
    return 1;
}

/// Whether the part behind the separator counts twelfths: points of a pica, didots of a cicero.
bool WUnitParser::DividesByTwelve() const
{
    return m_targetUnit == kPicasAndPoints || m_targetUnit == kCicerosAndDidots;
}

/// Behind the first unit word nothing separates the parts but the word itself: blanks there are taken out.
void WUnitParser::JoinTail()
{
    static constexpr const wchar_t* kPicaWords[] = {L"pc", L"picas", L"pica"};
    static constexpr const wchar_t* kCiceroWords[] = {L"cc", L"cicero", L"ciceros"};
    for (const wchar_t* const word : m_targetUnit == kPicasAndPoints ? kPicaWords : kCiceroWords) {
        const int at = m_equation.Find(word);
        if (at < 0)
            continue;
        std::wstring text = m_equation.Std();
        text.erase(std::remove_if(text.begin() + at, text.end(), IsJoinedBlank), text.end());
        m_joinedTail = static_cast<std::size_t>(at);
        m_equation = std::move(text);
        return;
    }
}

/// Puts the separator between two parts that stand side by side.
int WUnitParser::JoinParts()
{
    const auto separators = std::find_if(m_segments.begin(), m_segments.end(),
        [](const Segment& segment) { return segment.count > 0 && segment.source->Kind(0) == kKindSeparator; });
    if (separators == m_segments.end())
        return Fail(WParseProblem::OperatorExpected);
    WToken* const current = std::exchange(m_current, TokenAt(separators->first));
    const int processed = ProcessToken(m_current);
    m_current = current;
    return processed ? 1 : Fail(WParseProblem::ValueExpected);
}

int WUnitParser::GetValue(double& result)
{
    // The whole setting: a part behind the first character of a longer one is none of the separator's.
    constexpr std::size_t kSeparatorCapacity = 80;
    std::optional<std::wstring> listSeparator;
    if (DividesByTwelve())
        listSeparator = Ports::Locale::Get().Setting(Ports::LocaleSetting::ListSeparator, kSeparatorCapacity);
    if (IsBlank())
        m_values.push_front(0.0);
    if (DividesByTwelve() && !m_equation.IsEmpty())
        JoinTail();
    for (;;) {
        m_previous = m_current;
        m_current = GetToken();
        if (!m_current)
            return 0;
        const unsigned kind = KindOf(m_current);
        const unsigned before = m_previous ? KindOf(m_previous) : 0;
        if (m_previous && (kind & kKindValue) && listSeparator && !listSeparator->empty()
            && m_previous->GetText() == TvlString(*listSeparator))
            m_currentValue /= 12.0;
        if ((kind & kKindClosed) && (!m_previous || (before & kKindOpen)))
            return Fail(m_previous ? WParseProblem::ValueExpected : WParseProblem::BracketNotOpened);
        if ((kind & (kKindOpen | kKindValue)) && (before & (kKindClosed | kKindUnit)) && !JoinParts())
            return 0;
        if (RepeatsValue())
            return Fail(WParseProblem::OperatorExpected);
        if (!ProcessToken(m_current))
            return 0;
        if (kind & kKindNull)
            return Finish(result, m_targetUnit == kPlainCount);
    }
}

int WUnitParser::ExecuteOperation(WToken* token)
{
    const unsigned kind = KindOf(token);
    if ((kind & kKindOpen) || m_values.empty())
        return 0;
    const bool degrees = m_targetUnit == kDegree || (m_angleMode == DRG::Degrees && m_targetUnit != kRadian);
    if (kind & kKindTrig) {
        double& value = m_values.front();
        if (m_targetUnit == kArcMinute)
            value = value * kPi / 180.0 / 60.0;
        else if (m_targetUnit == kArcSecond)
            value = value * kPi / 180.0 / 60.0 / 60.0;
        else if (degrees)
            value = value * kPi / 180.0;
    }
    if (!token->Execute(m_values))
        return 0;
    m_operators.pop_front();
    if (kind & kKindRevTrig) {
        double& value = m_values.front();
        if (m_targetUnit == kArcMinute)
            value /= kRadiansPerArcMinute;
        else if (m_targetUnit == kArcSecond)
            value /= kRadiansPerArcSecond;
        else if (degrees)
            value /= kRadiansPerDegree;
    }
    return 1;
}
