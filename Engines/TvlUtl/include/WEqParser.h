// Evaluation of the expressions that people type into numeric fields.
#pragma once

#include "AngleMode.h"
#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory_resource>
#include <string_view>
#include <vector>

class WTokenSource;

using WValueStack = std::pmr::list<double>;   ///< front is top

/// What WEqParser::LoadTokens takes, and WUnit::StringToValue.
enum WTokenFlags : unsigned {
    kTokensArithmetic = 1,     ///< + - * / ^ and three kinds of brackets
    kTokensFractions = 2,      ///< "1/2" and "3 1/2" as one number
    kTokensLogarithms = 4,     ///< log, ln, sqrt
    kTokensTrigonometry = 8,   ///< sin to acot
    kTokensHyperbolic = 16,    ///< sinh, cosh, tanh
    kTokensAll = 31,           ///< all of these; no unit words
    kTokensUnits = 256,        ///< unit words and the list separator; StringToValue alone
};

/// A piece of an expression: what it looks like, how strongly it binds and what it does to the values.
class TVLUTL_API WToken {
public:
    /// `text` is what Match looks for unless it is overridden. Tokens that wait with a higher stack priority than the
    /// input priority of one that arrives are applied first; an equal one leaves the text without a value.
    WToken(int inputPriority, int stackPriority, const TvlString& text)
        : m_inputPriority(inputPriority), m_stackPriority(stackPriority), m_text(text)
    {
    }
    virtual ~WToken() = default;
    /// Applies the token to the values; 0 when they are too few. Operands that were popped by then are lost.
    virtual int Execute(WValueStack& values);
    /// Whether the token begins `text`; `length` becomes the number of its characters, 0 for no match. `valueBefore`
    /// tells whether a value stands before, and is written for the tokens that are tried behind this one.
    virtual int Match(const TvlString& text, int& length, int& valueBefore);
    /// The number of a matched text.
    virtual double Evaluate(const TvlString& text);

    /// Weight as the token arrives: tokens that wait with a higher one are applied first.
    int GetInputPriority() const { return m_inputPriority; }
    /// Weight while the token waits on the operator stack, compared with the input priority of those that arrive.
    int GetStackPriority() const { return m_stackPriority; }
    /// How the token is written.
    const TvlString& GetText() const { return m_text; }

protected:
    std::int32_t m_inputPriority;   // weight as it arrives
    std::int32_t m_stackPriority;   // weight while it waits on the operator stack
    TvlString m_text;               // how it is written
};

// Groups that the parser tells apart by their run-time type. Tokens of a caller may belong to them.

/// A number. It has run its Match before the signs are tried, which thereby see a value before them.
class TVLUTL_API WTokenValue : public WToken {
public:
    using WToken::WToken;   ///< as WToken's
    int Match(const TvlString& text, int& length, int& valueBefore) override;
    double Evaluate(const TvlString& text) override;
};

/// An opening bracket.
class TVLUTL_API WTokenOpen : public WToken {
public:
    using WToken::WToken;   ///< as WToken's
};

/// A closing bracket.
class TVLUTL_API WTokenClosed : public WToken {
public:
    using WToken::WToken;   ///< as WToken's
    int Match(const TvlString& text, int& length, int& valueBefore) override;
};

/// A function of an angle.
class TVLUTL_API WTokenTrig : public WToken {
public:
    using WToken::WToken;   ///< as WToken's
};

/// A function whose result is an angle.
class TVLUTL_API WTokenRevTrig : public WToken {
public:
    using WToken::WToken;   ///< as WToken's
};

/// Why a text has no value.
enum class WParseProblem : int {
    None = 0,           ///< it has a value
    UnknownText,        ///< no token begins here
    ValueExpected,      ///< an operator, function or bracket has nothing to work on
    OperatorExpected,   ///< a value stands behind a value
    BracketNotOpened,   ///< a closing bracket without its opening one, or of another kind
    BracketNotClosed,   ///< an opening bracket without its closing one
    TwoUnits,           ///< a unit behind a unit
    OutOfRange,         ///< the result is infinite
};

/// Where a text went wrong.
struct WParseDiagnosis {
    WParseProblem problem = WParseProblem::None;   ///< None for a text that has a value
    std::size_t position = 0;                      ///< characters before the place, in the text that was evaluated
};

/// What a problem means, in plain English, such as "a value is expected here"; empty for None.
TVLUTL_API TvlString DescribeParseProblem(WParseProblem problem);

/// Room for the tokens of a parser and the nodes of its stacks; a long text takes more from the heap. A base, so that it
/// outlives them.
struct WParserMemory {
    alignas(std::max_align_t) std::byte nodes[768];                      ///< room within the parser
    std::pmr::monotonic_buffer_resource resource{nodes, sizeof nodes};   ///< takes from `nodes` first
};

/// Evaluates one text to one number: a pass over the text with a stack of operators and a stack of values. Make one for
/// each text; after a failure a parser is not to be used again. Private to its caller.
class TVLUTL_API WEqParser : private WParserMemory {
public:
    /// @param flags bits of WTokenFlags up to 16
    WEqParser(TvlString equation, unsigned flags, DRG angleMode);
    /// With `count` further tokens, which the parser then owns and deletes. They are tried behind the others.
    WEqParser(TvlString equation, WToken* const* extra, int count, unsigned flags, DRG angleMode);
    /// Copies refer to the tokens of their source, which must outlive them.
    WEqParser(const WEqParser& other);
    /// Shares the tokens in the same way; own ones are given up.
    WEqParser& operator=(const WEqParser& other);

    /// Adds the tokens of `flags`; always 1.
    int LoadTokens(unsigned flags);
    /// 1 and the number, which may be a NaN; 0 for a text without a number. An empty or blank text is 0.0.
    /// `result` is 0.0 when the evaluation failed at its end, and left alone when it failed before.
    virtual int GetValue(double& result);

    /// Why GetValue gave 0. Does not take part in the evaluation.
    WParseDiagnosis GetDiagnosis() const { return m_diagnosis; }

    ~WEqParser();

protected:
    /// Without a text and tokens, for derived classes to load.
    WEqParser();
    /// The next token, cut from the equation; null for a text that no token knows.
    virtual WToken* GetToken();
    /// Applies a waiting token to the values and takes it from the stack; 0 when it can't be.
    virtual int ExecuteOperation(WToken* token);
    /// Puts a token that arrives in its place; 0 when it can't stand there.
    virtual int ProcessToken(WToken* token);

    /// Takes a text to evaluate, from its start.
    void LoadEquation(TvlString equation);
    /// Ends the preparation: nothing stands before, and the table's first token lies under the operators.
    void PushFloor();
    /// Takes a caller's token behind the others; owned from now on.
    void AddToken(WToken* token);
    /// Notes the first problem with the place of the present token. Always 0, for the caller to return.
    int Fail(WParseProblem problem);
    /// What GetValue does once the last token has been processed.
    int Finish(double& result, bool resultIsCurrentValue);
    /// Whether a number stands directly behind a number.
    bool RepeatsValue() const;
    /// Whether the equation has nothing but blanks.
    bool IsBlank() const;
    /// What has not been read yet.
    std::wstring_view Rest() const { return std::wstring_view(m_equation).substr(m_offset); }

    DRG m_angleMode = DRG::Radians;   // what the functions of angles count in
    WToken* m_current = nullptr;      // the token that is being processed; null before the first
    WToken* m_previous = nullptr;     // the token before it; null before the second
    TvlString m_equation;             // the text that is evaluated
    double m_currentValue = 0.0;      // number of the last value token
    std::int32_t m_valueBefore = 0;   // 1 when a value stands before the next token
    std::size_t m_tokenCount = 0;     // tokens that were read
    // In the order in which they are tried; own ones are made when they win.
    mutable std::pmr::vector<WToken*> m_tokens;   // all tokens, by place; null for own ones that have not been made
    std::pmr::list<WToken*> m_operators;          // waiting operators, the latest in front
    WValueStack m_values;                         // operands and intermediate results
    std::size_t m_offset = 0;                     // characters of the equation that have been read
    std::size_t m_tokenStart = 0;                 // where the current token began
    WParseDiagnosis m_diagnosis;                  // the first problem

private:
    friend class WUnitParser;

    /// @cond
    /// Own tokens that stand one behind the other in the table and in memory.
    struct Segment {
        const WTokenSource* source;
        std::byte* memory;
        std::size_t first;   // place in the table
        std::size_t count;
    };
    /// @endcond

    void AddSegment(const WTokenSource& source);
    /// The block that a token lies in; null for a caller's token.
    const Segment* FindSegment(const WToken* token) const;
    unsigned KindOf(const WToken* token) const;
    /// The token at a place of the table, made if need be.
    WToken* TokenAt(std::size_t place) const;
    int CloseBracket(unsigned bracket);
    void DestroyTokens();

    std::pmr::vector<Segment> m_segments;
    wchar_t m_decimalSeparator = 0;   // 0 for none
    bool m_localeRead = false;
    std::size_t m_ownedFrom = 0;   // place of the first token of this parser; those of a copy's source stand before
};
