// Where a parser's own tokens come from: tried as a whole, and made one by one when a text needs them.
#pragma once

#include "WEqParser.h"

/// What the parser asks of a token's type.
enum TokenKind : unsigned {
    kKindValue = 1,
    kKindFraction = 2,   // with kKindValue
    kKindOpen = 4,
    kKindClosed = 8,
    kKindTrig = 16,
    kKindRevTrig = 32,
    kKindNull = 64,
    kKindUnit = 128,
    kKindSeparator = 256,
    kKindMinus = 512,      // between values
    kKindParen = 0x1000,   // with kKindOpen or kKindClosed
    kKindBracket = 0x2000,
    kKindBrace = 0x4000,
    kKindAnyBracket = 0x7000,
    // How a token's text is matched.
    kMatchUnarySign = 0x10000,
    kMatchBinarySign = 0x20000,
};

/// A match in a source.
struct TokenMatch {
    int length = 0;          // characters; 0 for none
    std::size_t token = 0;   // place in the source
};

/// A row of tokens of one size. Outlives the parsers that use it.
class WTokenSource {
public:
    virtual std::size_t Count() const = 0;
    /// Bytes from one token to the next.
    virtual std::size_t Stride() const = 0;
    virtual unsigned Kind(std::size_t token) const = 0;
    virtual WToken* Make(std::size_t token, void* memory) const = 0;
    /// The longest match at the front of a text that is not empty, of equal ones the first; `valueBefore` is read and
    /// written as if each token's Match ran in turn.
    virtual TokenMatch Match(std::wstring_view text, wchar_t decimalSeparator, int& valueBefore) const = 0;
    /// The number of a matched text; for values alone.
    virtual double Evaluate(std::size_t token, std::wstring_view text, wchar_t decimalSeparator) const = 0;

protected:
    ~WTokenSource() = default;
};
