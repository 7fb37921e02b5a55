#include "TokenPrototypes.h"

#include "NumberText.h"
#include "Tokens.h"
#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <memory>
#include <mutex>

namespace {
constexpr const wchar_t* kMinusKey = L"9ca6a3a9-dc17-4a81-8a9b-4d9054012a67";
constexpr const wchar_t* kPlusKey = L"cbd93da8-193a-4a4a-8671-1b9034087d84";
constexpr const wchar_t* kDivideKey = L"d7e27cba-81e9-46ba-baa6-1baf9c43940e";
constexpr unsigned kAlways = 0;
constexpr std::size_t kValuePlace = 1;   // of the value token, in every table

std::size_t FirstIndex(wchar_t c) { return std::min<std::size_t>(static_cast<std::make_unsigned_t<wchar_t>>(c), 128); }

struct TokenRow {
    WToken* (*make)(void*, int, int, const TvlString&);
    const wchar_t* key;   // null for a token without text
    int inputPriority;
    int stackPriority;
    unsigned flag;   // of LoadTokens; kAlways for the tokens that are always there
    unsigned kind;
};

template <class Token>
WToken* Make(void* memory, int inputPriority, int stackPriority, const TvlString& text)
{
    // One stride serves a block of all of them.
    static_assert(sizeof(Token) == sizeof(WToken) && alignof(Token) == alignof(WToken));
    return new (memory) Token(inputPriority, stackPriority, text);
}

// The order is the order of the attempts, and of two matches of the same length the earlier row wins.
constexpr TokenRow kRows[] = {
    {Make<WTokenNull>, nullptr, 0, -1, kAlways, kKindNull},
    {Make<WTokenValue>, nullptr, 0, 0, kAlways, kKindValue},
    {Make<WTokenUnaryMinus>, kMinusKey, 10, 9, kAlways, kMatchUnarySign},
    {Make<WTokenUnaryPlus>, kPlusKey, 10, 9, kAlways, kMatchUnarySign},
    {Make<WTokenOpPlus>, kPlusKey, 1, 2, kTokensArithmetic, kMatchBinarySign},
    {Make<WTokenOpMinus>, kMinusKey, 1, 2, kTokensArithmetic, kKindMinus | kMatchBinarySign},
    {Make<WTokenOpMultiply>, L"c8e96f17-5af8-4145-8d7c-4e544bb780e9", 3, 4, kTokensArithmetic, 0},
    {Make<WTokenOpDivide>, kDivideKey, 3, 4, kTokensArithmetic, 0},
    {Make<WTokenOpExp>, L"aafcc9b1-30ec-4e82-ae42-8df55783afed", 6, 5, kTokensArithmetic, 0},
    {Make<WTokenOBracket>, L"7dae8cae-7e41-49ec-90fc-db582c9c8df7", 100, 0, kTokensArithmetic,
        kKindOpen | kKindBracket},
    {Make<WTokenCBracket>, L"4d25d174-6d20-404d-a71f-f6cc9b68fcaa", 0, 99, kTokensArithmetic,
        kKindClosed | kKindBracket},
    {Make<WTokenOParen>, L"e00db661-07f6-458e-8cd5-c6dec7afb4a7", 100, 0, kTokensArithmetic, kKindOpen | kKindParen},
    {Make<WTokenCParen>, L"ea85cb54-372e-47a2-8a4b-7a691ecc208c", 0, 99, kTokensArithmetic, kKindClosed | kKindParen},
    {Make<WTokenOBrace>, L"29894b87-fa56-4fcd-b777-7c9118c97442", 100, 0, kTokensArithmetic, kKindOpen | kKindBrace},
    {Make<WTokenCBrace>, L"bf28deda-0e0b-490d-b2de-1f1ae78ab626", 0, 99, kTokensArithmetic, kKindClosed | kKindBrace},
    {Make<WTokenFraction>, nullptr, 0, 0, kTokensFractions, kKindValue | kKindFraction},
    {Make<WTokenLog>, L"bd1d6815-abbd-4d78-92a0-1b3386a310e3", 6, 5, kTokensLogarithms, 0},
    {Make<WTokenLn>, L"b50151e7-6ad9-4e50-9c42-2b24c620e5ee", 6, 5, kTokensLogarithms, 0},
    {Make<WTokenSqrt>, L"aa592d3a-8208-4da6-8468-2091db12ee1d", 6, 5, kTokensLogarithms, 0},
    {Make<WTokenSin>, L"487dee10-dc27-420a-8128-b1b59df75942", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenCos>, L"9366ef2f-37b0-4bf2-83c4-ffa8507a89e3", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenTan>, L"554a60ca-d249-45ba-b751-571ebfab8502", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenASin>, L"a306f134-fde6-4164-a804-52fc7eea07d1", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenACos>, L"3ac06531-d929-4536-845b-2f405871e1a9", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenATan>, L"5fc8c0b2-06b9-42f1-8568-1068b3a81955", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenCsc>, L"82487d5d-b0cd-448c-9b36-0ada532c8186", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenSec>, L"8b795e2b-b8fb-4d03-9e3c-2f60cc8f6741", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenCot>, L"94de302c-eebe-43c7-9574-a22954c2ac70", 6, 5, kTokensTrigonometry, kKindTrig},
    {Make<WTokenACsc>, L"4f841b5d-c0db-45cf-a1e2-aa67b8dba622", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenASec>, L"1f495856-89d4-4a80-9f5a-cfb0fb982777", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenACot>, L"ba71022f-f6b0-4907-ad42-c014289c1fef", 6, 5, kTokensTrigonometry, kKindRevTrig},
    {Make<WTokenSinH>, L"7902c344-1560-40c2-bbad-069e115b2412", 6, 5, kTokensHyperbolic, 0},
    {Make<WTokenCosH>, L"5d763103-f775-4f84-9e43-15e4cdae7f88", 6, 5, kTokensHyperbolic, 0},
    {Make<WTokenTanH>, L"d29947ea-247c-430b-9eb6-4df79a1b8f2f", 6, 5, kTokensHyperbolic, 0},
};
}   // namespace

TokenPrototypeSet::TokenPrototypeSet(unsigned flags)
{
    for (const TokenRow& row : kRows) {
        if (row.flag != kAlways && !(row.flag & flags))
            continue;
        const std::size_t place = m_tokens.size();
        const TvlString text = row.key ? Framework::Resources::GetString(row.key) : TvlString();
        m_tokens.push_back({row.make, row.inputPriority, row.stackPriority, row.kind, text});
        if (row.kind & kKindFraction)
            m_fraction = place;
        if (!text.IsEmpty())
            m_byFirst[FirstIndex(text.GetAt(0))].push_back(static_cast<std::uint8_t>(place));
    }
    const TvlString divide = Framework::Resources::GetString(kDivideKey);
    m_divide = divide.IsEmpty() ? L'\0' : divide.GetAt(0);
}

WToken* TokenPrototypeSet::Make(std::size_t token, void* memory) const
{
    const TokenPrototype& prototype = m_tokens[token];
    return prototype.make(memory, prototype.inputPriority, prototype.stackPriority, prototype.text);
}

int TokenPrototypeSet::MatchOne(std::size_t token, std::wstring_view text, int& valueBefore) const
{
    const TokenPrototype& prototype = m_tokens[token];
    if ((prototype.kind & kMatchUnarySign) && valueBefore != 0)
        return 0;
    if ((prototype.kind & kMatchBinarySign) && valueBefore == 0)
        return 0;
    const std::wstring_view own = prototype.text;
    if (!text.starts_with(own))
        return 0;
    valueBefore = prototype.kind & kKindClosed ? 1 : 0;
    return static_cast<int>(own.size());
}

TokenMatch TokenPrototypeSet::Match(std::wstring_view text, wchar_t decimalSeparator, int& valueBefore) const
{
    // The value is tried before all signs, and tells them of itself whether it matches or not.
    valueBefore = 1;
    TokenMatch best{MatchValue(text, decimalSeparator), kValuePlace};
    if (m_fraction != 0)
        if (const int length = MatchFraction(text, m_divide); length > best.length)
            best = {length, m_fraction};
    for (const std::uint8_t token : m_byFirst[FirstIndex(text.front())]) {
        const int length = MatchOne(token, text, valueBefore);
        // Of equal matches the earlier row wins; the fraction may stand behind this one.
        if (length > best.length || (length == best.length && length > 0 && token < best.token))
            best = {length, token};
    }
    return best;
}

double TokenPrototypeSet::Evaluate(std::size_t token, std::wstring_view text, wchar_t decimalSeparator) const
{
    return token == m_fraction ? FractionOf(text, m_divide, decimalSeparator) : ValueOf(text, decimalSeparator);
}

namespace {
/// The sets of one state of the texts. States are kept to the end, since parsers refer to them.
struct SetsOfGeneration {
    unsigned generation = 0;
    std::array<std::once_flag, kTokensAll + 1> made;
    std::array<std::unique_ptr<TokenPrototypeSet>, kTokensAll + 1> sets;
};

std::atomic<SetsOfGeneration*> currentSets = nullptr;

SetsOfGeneration& CurrentSets()
{
    static std::mutex lock;
    static std::vector<std::unique_ptr<SetsOfGeneration>> all;
    const unsigned generation = Framework::Resources::Generation();
    SetsOfGeneration* sets = currentSets.load(std::memory_order_acquire);
    if (sets && sets->generation == generation)
        return *sets;
    const std::lock_guard hold(lock);
    sets = currentSets.load(std::memory_order_acquire);
    if (!sets || sets->generation != generation) {
        sets = all.emplace_back(std::make_unique<SetsOfGeneration>()).get();
        sets->generation = generation;
        currentSets.store(sets, std::memory_order_release);
    }
    return *sets;
}
}   // namespace

const TokenPrototypeSet& TokenPrototypesFor(unsigned flags)
{
    flags &= kTokensAll;
    SetsOfGeneration& sets = CurrentSets();
    std::call_once(sets.made[flags], [&] { sets.sets[flags] = std::make_unique<TokenPrototypeSet>(flags); });
    return *sets.sets[flags];
}
