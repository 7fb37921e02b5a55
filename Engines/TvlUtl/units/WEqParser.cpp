#include "WEqParser.h"

#include "NumberText.h"
#include "TokenPrototypes.h"
#include "Tokens.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace {
constexpr double kPi = 3.141592653589793;
constexpr double kRadiansPerDegree = 0.017453292519943295;
// Tokens and rows of tokens of a field text with all flags, so that no list grows.
constexpr std::size_t kUsualTokens = 64;
constexpr std::size_t kUsualSegments = 4;

unsigned KindOfForeign(const WToken* token)
{
    struct Group {
        bool (*holds)(const WToken*);
        unsigned kind;
    };
    static constexpr Group kGroups[] = {
        {[](const WToken* t) { return dynamic_cast<const WTokenValue*>(t) != nullptr; }, kKindValue},
        {[](const WToken* t) { return dynamic_cast<const WTokenOpen*>(t) != nullptr; }, kKindOpen},
        {[](const WToken* t) { return dynamic_cast<const WTokenClosed*>(t) != nullptr; }, kKindClosed},
        {[](const WToken* t) { return dynamic_cast<const WTokenTrig*>(t) != nullptr; }, kKindTrig},
        {[](const WToken* t) { return dynamic_cast<const WTokenRevTrig*>(t) != nullptr; }, kKindRevTrig},
    };
    for (const Group& group : kGroups)
        if (group.holds(token))
            return group.kind;
    return 0;
}
}   // namespace

WEqParser::WEqParser() : m_tokens(&resource), m_operators(&resource), m_values(&resource), m_segments(&resource)
{
    m_tokens.reserve(kUsualTokens);
    m_segments.reserve(kUsualSegments);
}

WEqParser::WEqParser(TvlString equation, unsigned flags, DRG angleMode)
    : WEqParser(std::move(equation), nullptr, 0, flags, angleMode)
{
}

WEqParser::WEqParser(TvlString equation, WToken* const* extra, int count, unsigned flags, DRG angleMode) : WEqParser()
{
    m_angleMode = angleMode;
    LoadTokens(flags);
    for (int i = 0; i < count; ++i)
        AddToken(extra[i]);
    LoadEquation(std::move(equation));
    PushFloor();
}

WEqParser::WEqParser(const WEqParser& other) : WEqParser() { *this = other; }

WEqParser& WEqParser::operator=(const WEqParser& other)
{
    if (this == &other)
        return *this;
    // Made there and now, so that no two parsers make one token: its memory is the source's.
    for (std::size_t place = 0; place < other.m_tokens.size(); ++place)
        other.TokenAt(place);
    DestroyTokens();
    m_angleMode = other.m_angleMode;
    m_current = other.m_current;
    m_previous = other.m_previous;
    m_equation = other.m_equation;
    m_currentValue = other.m_currentValue;
    m_valueBefore = other.m_valueBefore;
    m_tokenCount = other.m_tokenCount;
    m_tokens = other.m_tokens;
    m_operators = other.m_operators;
    m_values = other.m_values;
    m_offset = other.m_offset;
    m_tokenStart = other.m_tokenStart;
    m_diagnosis = other.m_diagnosis;
    m_segments = other.m_segments;
    m_ownedFrom = m_tokens.size();
    m_decimalSeparator = other.m_decimalSeparator;
    m_localeRead = other.m_localeRead;
    return *this;
}

WEqParser::~WEqParser() { DestroyTokens(); }

void WEqParser::DestroyTokens()
{
    // Own tokens lie in the parser's memory, callers' on the heap.
    for (const Segment& segment : m_segments) {
        for (std::size_t i = std::max(segment.first, m_ownedFrom); i < segment.first + segment.count; ++i)
            if (WToken* const token = std::exchange(m_tokens[i], nullptr))
                token->~WToken();
    }
    for (std::size_t i = m_ownedFrom; i < m_tokens.size(); ++i)
        delete m_tokens[i];
}

int WEqParser::LoadTokens(unsigned flags)
{
    AddSegment(TokenPrototypesFor(flags));
    return 1;
}

void WEqParser::AddSegment(const WTokenSource& source)
{
    const std::size_t count = source.Count();
    auto* const memory = static_cast<std::byte*>(resource.allocate(count * source.Stride() + 1));
    m_segments.push_back({&source, memory, m_tokens.size(), count});
    m_tokens.resize(m_tokens.size() + count);
    m_tokenCount = m_tokens.size();
}

WToken* WEqParser::TokenAt(std::size_t place) const
{
    if (!m_tokens[place]) {
        for (const Segment& segment : m_segments) {
            const std::size_t token = place - segment.first;
            if (place >= segment.first && token < segment.count)
                m_tokens[place] = segment.source->Make(token, segment.memory + token * segment.source->Stride());
        }
    }
    return m_tokens[place];
}

void WEqParser::AddToken(WToken* token)
{
    m_tokens.push_back(token);
    m_tokenCount = m_tokens.size();
}

void WEqParser::LoadEquation(TvlString equation)
{
    m_equation = std::move(equation);
    m_offset = 0;
}

void WEqParser::PushFloor()
{
    m_valueBefore = 0;
    m_current = m_previous = nullptr;
    m_operators.push_front(TokenAt(0));
}

const WEqParser::Segment* WEqParser::FindSegment(const WToken* token) const
{
    const auto* const address = reinterpret_cast<const std::byte*>(token);
    for (const Segment& segment : m_segments) {
        const std::byte* const end = segment.memory + segment.count * segment.source->Stride();
        if (!std::less<>()(address, segment.memory) && std::less<>()(address, end))
            return &segment;
    }
    return nullptr;
}

unsigned WEqParser::KindOf(const WToken* token) const
{
    const Segment* const segment = FindSegment(token);
    if (!segment)
        return KindOfForeign(token);
    const auto offset = static_cast<std::size_t>(reinterpret_cast<const std::byte*>(token) - segment->memory);
    return segment->source->Kind(offset / segment->source->Stride());
}

int WEqParser::Fail(WParseProblem problem)
{
    if (m_diagnosis.problem == WParseProblem::None)
        m_diagnosis = {problem, m_tokenStart};
    return 0;
}

bool WEqParser::IsBlank() const { return m_equation.Std().find_first_not_of(L' ') == std::wstring::npos; }
bool WEqParser::RepeatsValue() const { return m_current == m_previous && (KindOf(m_current) & kKindValue); }

int WEqParser::GetValue(double& result)
{
    if (IsBlank())
        m_values.push_front(0.0);
    for (;;) {
        m_previous = m_current;
        m_current = GetToken();
        if (!m_current)
            return 0;
        const unsigned kind = KindOf(m_current);
        if ((kind & kKindClosed) && (!m_previous || (KindOf(m_previous) & kKindOpen)))
            return Fail(m_previous ? WParseProblem::ValueExpected : WParseProblem::BracketNotOpened);
        if (RepeatsValue())
            return Fail(WParseProblem::OperatorExpected);
        if (!ProcessToken(m_current))
            return 0;
        if (kind & kKindNull)
            return Finish(result, false);
    }
}

int WEqParser::Finish(double& result, bool resultIsCurrentValue)
{
    result = 0.0;
    if (m_values.empty() || m_operators.empty() || !(KindOf(m_operators.front()) & kKindNull))
        return Fail(WParseProblem::ValueExpected);
    const double value = resultIsCurrentValue ? m_currentValue : m_values.front();
    m_values.pop_front();
    if (!m_values.empty())
        return Fail(WParseProblem::OperatorExpected);
    // Two ordered comparisons, so that a NaN passes: callers test for it.
    constexpr double kGreatest = std::numeric_limits<double>::max();
    if (value > kGreatest || value < -kGreatest)
        return Fail(WParseProblem::OutOfRange);
    result = value;
    return 1;
}

WToken* WEqParser::GetToken()
{
    if (!m_localeRead) {
        m_decimalSeparator = DecimalSeparator();
        m_localeRead = true;
    }
    m_offset = std::min(m_equation.Std().find_first_not_of(L' ', m_offset), m_equation.Std().size());
    m_tokenStart = m_offset;
    const std::wstring_view text = Rest();
    if (text.empty())
        return TokenAt(0);

    TokenMatch best;
    const Segment* origin = nullptr;   // of the best match; null for a caller's token
    auto segment = m_segments.begin();
    for (std::size_t place = 0; place < m_tokens.size();) {
        TokenMatch match;
        const bool isOwn = segment != m_segments.end() && segment->first == place;
        if (isOwn) {
            match = segment->source->Match(text, m_decimalSeparator, m_valueBefore);
            match.token += place;
        } else {
            // A caller's token gets a text of its own.
            const int matched = m_tokens[place]->Match(TvlString(text), match.length, m_valueBefore);
            match.length = matched ? std::min<int>(match.length, static_cast<int>(text.size())) : 0;
            match.token = place;
        }
        if (match.length > best.length) {
            best = match;
            origin = isOwn ? &*segment : nullptr;
        }
        place += isOwn ? segment++->count : 1;
    }
    if (best.length == 0) {
        Fail(WParseProblem::UnknownText);
        return nullptr;
    }
    m_offset += static_cast<std::size_t>(best.length);
    WToken* const token = TokenAt(best.token);
    if (KindOf(token) & kKindValue) {
        const std::wstring_view number = text.substr(0, static_cast<std::size_t>(best.length));
        m_currentValue = origin ? origin->source->Evaluate(best.token - origin->first, number, m_decimalSeparator)
                                : token->Evaluate(TvlString(number));
        m_valueBefore = 1;
    }
    return token;
}

int WEqParser::CloseBracket(unsigned bracket)
{
    for (;;) {
        if (m_operators.empty())
            return Fail(WParseProblem::BracketNotOpened);
        WToken* const top = m_operators.front();
        const unsigned kind = KindOf(top);
        if ((kind & kKindOpen) && (kind & kKindAnyBracket) == bracket) {
            m_operators.pop_front();
            return 1;
        }
        if (kind & kKindNull)
            return Fail(WParseProblem::BracketNotOpened);
        if (!ExecuteOperation(top))
            return Fail(kind & kKindOpen ? WParseProblem::BracketNotOpened : WParseProblem::ValueExpected);
    }
}

int WEqParser::ProcessToken(WToken* token)
{
    const unsigned kind = KindOf(token);
    if (kind & kKindValue) {
        m_values.push_front(m_currentValue);
        return 1;
    }
    if ((kind & kKindClosed) && (kind & kKindAnyBracket))
        return CloseBracket(kind & kKindAnyBracket);

    const int weight = token->GetInputPriority();
    while (!m_operators.empty() && weight < m_operators.front()->GetStackPriority())
        if (!ExecuteOperation(m_operators.front()))
            return Fail(WParseProblem::ValueExpected);
    if (!m_operators.empty() && weight == m_operators.front()->GetStackPriority())
        return Fail(
            KindOf(m_operators.front()) & kKindOpen ? WParseProblem::BracketNotClosed : WParseProblem::TwoUnits);
    // Behind an opening bracket a minus has no left side: what stands before the bracket is not to be taken for it.
    if ((kind & kKindMinus) && m_previous && (KindOf(m_previous) & kKindOpen))
        m_values.push_front(0.0);
    if (!(kind & kKindNull))
        m_operators.push_front(token);
    return 1;
}

int WEqParser::ExecuteOperation(WToken* token)
{
    const unsigned kind = KindOf(token);
    if ((kind & kKindOpen) || m_values.empty())
        return 0;
    const bool degrees = m_angleMode == DRG::Degrees;
    if ((kind & kKindTrig) && degrees)
        m_values.front() = m_values.front() * kPi / 180.0;
    if (!token->Execute(m_values))
        return 0;
    m_operators.pop_front();
    if ((kind & kKindRevTrig) && degrees)
        m_values.front() = m_values.front() / kRadiansPerDegree;
    return 1;
}

TvlString DescribeParseProblem(WParseProblem problem)
{
    static constexpr const wchar_t* kDescriptions[] = {
        L"",
        L"this is no number, operator, function or unit",
        L"a value is expected here",
        L"an operator is expected here",
        L"no bracket of this kind was opened",
        L"a bracket is not closed",
        L"a unit may not follow a unit",
        L"the result is out of range",
    };
    const auto row = static_cast<std::size_t>(problem);
    return kDescriptions[row < std::size(kDescriptions) ? row : 0];
}
