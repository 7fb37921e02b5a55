#include "Tokens.h"

#include "NumberText.h"
#include "TokenPrototypes.h"

int WToken::Execute(WValueStack&) { return 1; }

int WToken::Match(const TvlString& text, int& length, int& valueBefore)
{
    const std::wstring_view view = text;
    length = !m_text.IsEmpty() && view.starts_with(std::wstring_view(m_text)) ? m_text.GetLength() : 0;
    if (length > 0)
        valueBefore = 0;
    return length > 0 ? 1 : 0;
}

double WToken::Evaluate(const TvlString&) { return 0.0; }

int WTokenValue::Match(const TvlString& text, int& length, int& valueBefore)
{
    // Match or not: the signs, which are tried behind, are to take themselves for operators.
    valueBefore = 1;
    length = MatchValue(text, DecimalSeparator());
    return length > 0 ? 1 : 0;
}

double WTokenValue::Evaluate(const TvlString& text) { return ValueOf(text, DecimalSeparator()); }

int WTokenFraction::Match(const TvlString& text, int& length, int&)
{
    length = MatchFraction(text, TokenPrototypesFor(0).GetDivide());
    return length > 0 ? 1 : 0;
}

double WTokenFraction::Evaluate(const TvlString& text)
{
    return FractionOf(text, TokenPrototypesFor(0).GetDivide(), DecimalSeparator());
}

int WTokenClosed::Match(const TvlString& text, int& length, int& valueBefore)
{
    const int matched = WToken::Match(text, length, valueBefore);
    if (matched)
        valueBefore = 1;
    return matched;
}

int WTokenUnarySign::Match(const TvlString& text, int& length, int& valueBefore)
{
    length = 0;
    return valueBefore == 0 ? WToken::Match(text, length, valueBefore) : 0;
}

int WTokenBinarySign::Match(const TvlString& text, int& length, int& valueBefore)
{
    length = 0;
    return valueBefore != 0 ? WToken::Match(text, length, valueBefore) : 0;
}

namespace {
double Pop(WValueStack& values)
{
    const double value = values.front();
    values.pop_front();
    return value;
}

/// Pops x and then y and pushes what they make; 0 when one is missing, with the other lost.
template <class Operation>
int ExecuteBinary(WValueStack& values, Operation operation)
{
    if (values.empty())
        return 0;
    const double x = Pop(values);
    if (values.empty())
        return 0;
    values.front() = operation(values.front(), x);
    return 1;
}
}   // namespace

int WTokenUnaryMinus::Execute(WValueStack& values)
{
    if (values.empty())
        return 0;
    values.front() *= -1.0;
    return 1;
}

int WTokenOpPlus::Execute(WValueStack& values)
{
    return ExecuteBinary(values, [](double y, double x) { return y + x; });
}

int WTokenOpMinus::Execute(WValueStack& values)
{
    if (values.empty())
        return 0;
    const double x = Pop(values);
    const double y = values.empty() ? 0.0 : Pop(values);
    values.push_front(y - x);
    return 1;
}

int WTokenOpMultiply::Execute(WValueStack& values)
{
    return ExecuteBinary(values, [](double y, double x) { return y * x; });
}

int WTokenOpDivide::Execute(WValueStack& values)
{
    return ExecuteBinary(values, [](double y, double x) { return y / x; });
}

int WTokenOpExp::Execute(WValueStack& values)
{
    return ExecuteBinary(values, [](double y, double x) { return std::pow(y, x); });
}
