// Expressions with unit words, parts of a measure joined by the list separator, and angles by the target unit.
#pragma once

#include "UnitWords.h"
#include "WEqParser.h"

/// A unit word: multiplies the value before it by the unit's ratio to the target unit.
class WTokenUnit : public WToken {
public:
    /// @param factor     target units per unit
    /// @param definition names of the unit; not owned
    WTokenUnit(double factor, const WUntiDef* definition);
    int Execute(WValueStack& values) override;
    int Match(const TvlString& text, int& length, int& valueBefore) override;

private:
    double m_factor;
    const WUntiDef* m_definition;
};

/// Joins two parts of one measure: the sign of the first rules the whole.
class WTokenSeparator : public WToken {
public:
    explicit WTokenSeparator(const TvlString& text) : WToken(1, 2, text) { }
    int Execute(WValueStack& values) override;
};

/// Evaluates to a value in a target unit.
class WUnitParser : public WEqParser {
public:
    WUnitParser(int targetUnit, DRG angleMode) : m_targetUnit(targetUnit) { m_angleMode = angleMode; }

    int GetValue(double& result) override;

    /// Tokens that are tried behind those that are there; the source outlives the parser.
    void AddTokens(const WTokenSource& source) { AddSegment(source); }
    /// The place from which on blanks were taken out of the equation; beyond its end when none were.
    std::size_t GetJoinedTail() const { return m_joinedTail; }
    using WEqParser::LoadEquation;
    using WEqParser::PushFloor;

protected:
    int ExecuteOperation(WToken* token) override;

private:
    bool DividesByTwelve() const;
    void JoinTail();
    int JoinParts();

    int m_targetUnit;
    std::size_t m_joinedTail = static_cast<std::size_t>(-1);   // from where on blanks were taken out
};

/// Whether a character is taken out behind a unit word of picas or ciceros.
bool IsJoinedBlank(wchar_t c);
