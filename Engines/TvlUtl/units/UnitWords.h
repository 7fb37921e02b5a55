// The words of a WUnit's definitions, ready to be looked up in a text.
#pragma once

#include "WTokenSource.h"
#include "WUnit.h"

#include <array>
#include <string>
#include <vector>

/// Names of definitions, without regard to case, by their first character. Good as long as no definition changes.
class UnitWords {
public:
    explicit UnitWords(const std::vector<WUntiDef*>& definitions);

    bool IsCurrent(const std::vector<WUntiDef*>& definitions) const;
    /// The longest name at the front of a text that is not empty, of equal ones that of the first definition.
    TokenMatch Match(std::wstring_view text) const;

private:
    struct Word {
        std::wstring folded;
        std::size_t definition;
    };

    void Add(const TvlString& name, std::size_t definition);
    const std::vector<Word>& WordsAt(wchar_t folded) const;

    // By first character, longest first; those of characters beyond ASCII are in the last list.
    std::array<std::vector<Word>, 129> m_byFirst;
    // Definitions of classes that may name themselves anew each time.
    std::vector<std::pair<const WUntiDef*, std::size_t>> m_ownNames;
    std::size_t m_count;
    unsigned m_generation;
};

/// Grows whenever a definition takes new names.
unsigned UnitNamesGeneration();

/// Unit words as the tokens of one evaluation.
class UnitTokenSource final : public WTokenSource {
public:
    /// @param target metres of the unit that values count in
    UnitTokenSource(const UnitWords& words, const std::vector<WUntiDef*>& definitions, double target)
        : m_words(words), m_definitions(definitions), m_target(target)
    {
    }
    std::size_t Count() const override { return m_definitions.size(); }
    std::size_t Stride() const override;
    unsigned Kind(std::size_t) const override { return kKindUnit; }
    WToken* Make(std::size_t token, void* memory) const override;
    TokenMatch Match(std::wstring_view text, wchar_t decimalSeparator, int& valueBefore) const override;
    double Evaluate(std::size_t, std::wstring_view, wchar_t) const override { return 0.0; }

private:
    const UnitWords& m_words;
    const std::vector<WUntiDef*>& m_definitions;
    double m_target;
};

/// The one token that joins parts of a measure.
class SeparatorSource final : public WTokenSource {
public:
    /// @param separator 0 for a locale without one, which no text matches
    explicit SeparatorSource(wchar_t separator) : m_separator(separator) { }
    std::size_t Count() const override { return 1; }
    std::size_t Stride() const override;
    unsigned Kind(std::size_t) const override { return kKindSeparator; }
    WToken* Make(std::size_t token, void* memory) const override;
    TokenMatch Match(std::wstring_view text, wchar_t decimalSeparator, int& valueBefore) const override;
    double Evaluate(std::size_t, std::wstring_view, wchar_t) const override { return 0.0; }

private:
    wchar_t m_separator;
};
