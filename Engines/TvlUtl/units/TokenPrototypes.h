// The parser's own tokens in the user's language.
#pragma once

#include "WTokenSource.h"

#include <array>
#include <cstdint>
#include <vector>

/// One row of the token table, with its text.
struct TokenPrototype {
    WToken* (*make)(void* memory, int inputPriority, int stackPriority, const TvlString& text);
    int inputPriority;
    int stackPriority;
    unsigned kind;
    TvlString text;
};

/// The tokens of one set of flags, in table order.
class TokenPrototypeSet final : public WTokenSource {
public:
    explicit TokenPrototypeSet(unsigned flags);
    std::size_t Count() const override { return m_tokens.size(); }
    std::size_t Stride() const override { return sizeof(WToken); }
    unsigned Kind(std::size_t token) const override { return m_tokens[token].kind; }
    WToken* Make(std::size_t token, void* memory) const override;
    TokenMatch Match(std::wstring_view text, wchar_t decimalSeparator, int& valueBefore) const override;
    double Evaluate(std::size_t token, std::wstring_view text, wchar_t decimalSeparator) const override;

    /// First character of the divide sign, which separates the parts of a fraction; 0 for none.
    wchar_t GetDivide() const { return m_divide; }

private:
    int MatchOne(std::size_t token, std::wstring_view text, int& valueBefore) const;

    std::vector<TokenPrototype> m_tokens;
    std::size_t m_fraction = 0;   // place of the fraction token, 0 for none
    wchar_t m_divide = 0;
    // Tokens with a text by its first character, in table order; those of characters beyond ASCII are in the last list.
    std::array<std::vector<std::uint8_t>, 129> m_byFirst;
};

/// The set of some flags in the current language. Lives to the end of the process.
const TokenPrototypeSet& TokenPrototypesFor(unsigned flags);
