#include "UnitWords.h"

#include "UnitParser.h"

#include <algorithm>
#include <new>
#include <type_traits>
#include <typeinfo>

namespace {
constexpr double kRatioScale = 1e-07;   // of the conversion that gives a unit's ratio to the target

std::size_t FirstIndex(wchar_t c) { return std::min<std::size_t>(static_cast<std::make_unsigned_t<wchar_t>>(c), 128); }

std::wstring Folded(std::wstring_view text)
{
    std::wstring folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), TvlFoldCase);
    return folded;
}

bool BeginsFolded(std::wstring_view text, std::wstring_view folded)
{
    return text.size() >= folded.size()
        && std::equal(
            folded.begin(), folded.end(), text.begin(), [](wchar_t a, wchar_t b) { return a == TvlFoldCase(b); });
}

/// Whether a definition is of a class whose names change by Define alone.
bool HasFixedNames(const WUntiDef& definition)
{
    const std::type_info& type = typeid(definition);
    return type == typeid(WUntiDef) || type == typeid(WUnitWithSymbol) || type == typeid(WUnitPixel);
}
}   // namespace

UnitWords::UnitWords(const std::vector<WUntiDef*>& definitions)
    : m_count(definitions.size()), m_generation(UnitNamesGeneration())
{
    for (std::size_t i = 0; i < definitions.size(); ++i) {
        if (!HasFixedNames(*definitions[i])) {
            m_ownNames.emplace_back(definitions[i], i);
            continue;
        }
        for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form)
            Add(definitions[i]->GetNameText(form), i);
    }
    for (auto& words : m_byFirst)
        std::stable_sort(
            words.begin(), words.end(), [](const Word& a, const Word& b) { return a.folded.size() > b.folded.size(); });
}

void UnitWords::Add(const TvlString& name, std::size_t definition)
{
    if (name.IsEmpty())
        return;
    const std::wstring folded = Folded(name);
    m_byFirst[FirstIndex(folded.front())].push_back({folded, definition});
}

bool UnitWords::IsCurrent(const std::vector<WUntiDef*>& definitions) const
{
    return m_count == definitions.size() && m_generation == UnitNamesGeneration();
}

TokenMatch UnitWords::Match(std::wstring_view text) const
{
    TokenMatch best;
    for (const Word& word : m_byFirst[FirstIndex(TvlFoldCase(text.front()))]) {
        if (BeginsFolded(text, word.folded)) {
            best = {static_cast<int>(word.folded.size()), word.definition};
            break;
        }
    }
    for (const auto& [definition, place] : m_ownNames) {
        for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form) {
            const TvlString name = definition->GetNameText(form);
            const bool longer =
                name.GetLength() > best.length || (name.GetLength() == best.length && place < best.token);
            if (!name.IsEmpty() && longer && BeginsFolded(text, Folded(name)))
                best = {name.GetLength(), place};
        }
    }
    return best;
}

std::size_t UnitTokenSource::Stride() const { return sizeof(WTokenUnit); }

WToken* UnitTokenSource::Make(std::size_t token, void* memory) const
{
    const WUntiDef* const definition = m_definitions[token];
    return new (memory) WTokenUnit(definition->ToMetres(1.0, kRatioScale) / m_target, definition);
}

TokenMatch UnitTokenSource::Match(std::wstring_view text, wchar_t, int& valueBefore) const
{
    // An operator or function that matched before hides every unit.
    if (valueBefore == 0)
        return {};
    const TokenMatch match = m_words.Match(text);
    if (match.length > 0)
        valueBefore = 1;
    return match;
}

std::size_t SeparatorSource::Stride() const { return sizeof(WTokenSeparator); }

WToken* SeparatorSource::Make(std::size_t, void* memory) const
{
    return new (memory) WTokenSeparator(m_separator == 0 ? TvlString() : TvlString(m_separator));
}

TokenMatch SeparatorSource::Match(std::wstring_view text, wchar_t, int& valueBefore) const
{
    if (m_separator == 0 || text.front() != m_separator)
        return {};
    valueBefore = 0;
    return {1, 0};
}
