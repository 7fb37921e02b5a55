#include "siblings/TvlUtils/MultiLanguageString.h"

#include <algorithm>
#include <optional>

namespace {
constexpr const wchar_t* kDefaultLanguage = L"";
constexpr const wchar_t* kEnglish = L"en";

struct LanguageRow {
    unsigned primary;   // low ten bits of a LANGID
    const wchar_t* name;
};

constexpr LanguageRow kLanguages[] = {
    {0x04, L"cs"},
    {0x05, L"cz"},
    {0x07, L"de"},
    {0x09, L"en"},
    {0x0a, L"es"},
    {0x0c, L"fr"},
    {0x10, L"it"},
    {0x11, L"jp"},
    {0x13, L"nl"},
    {0x15, L"pl"},
    {0x16, L"br"},
    {0x19, L"ru"},
    {0x1d, L"sv"},
    {0x1f, L"tr"},
};

// Chinese in traditional characters: Taiwan, Hong Kong, Macao, and the neutral form of them.
constexpr LANGID kTraditionalChinese[] = {0x0404, 0x0c04, 0x1404, 0x7c04};

using Texts = std::vector<std::pair<TvlString, TvlString>>;

const TvlString* Find(const Texts& texts, const TvlString& language)
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&](const auto& text) { return text.first == language; });
    return found == texts.end() ? nullptr : &found->second;
}

/// Takes "name:[text]" and the semicolon behind it off the front of `rest`.
std::optional<std::pair<TvlString, TvlString>> TakeText(std::wstring_view& rest)
{
    const std::size_t open = rest.find(L":[");
    if (open == rest.npos || rest.substr(0, open).find_first_of(L";[]") != rest.npos)
        return std::nullopt;
    const std::size_t begin = open + 2;
    std::size_t end = rest.find(L"];", begin);
    if (end == rest.npos)
        end = rest.size() > begin && rest.back() == L']' ? rest.size() - 1 : rest.npos;
    if (end == rest.npos)
        return std::nullopt;
    std::pair text{TvlString(rest.substr(0, open)), TvlString(rest.substr(begin, end - begin))};
    rest.remove_prefix(std::min(end + 2, rest.size()));
    return text;
}
}   // namespace

bool MultiLanguageString::Parse(const TvlString& text)
{
    m_texts.clear();
    for (std::wstring_view rest = text; !rest.empty();) {
        const auto taken = TakeText(rest);
        if (!taken || m_texts.size() == kMostLanguages) {
            m_texts.clear();
            SetDefaultLangString(text);
            return false;
        }
        SetLangString(taken->first, taken->second);
    }
    return true;
}

TvlString MultiLanguageString::ToString() const
{
    std::wstring all;
    for (const auto& [language, text] : m_texts)
        all += language.Std() + L":[" + text.Std() + L"];";
    return all;
}

TvlString MultiLanguageString::GetLangString(const TvlString& language) const
{
    const TvlString* const text = Find(m_texts, language);
    return text ? *text : GetDefaultLangString();
}

TvlString MultiLanguageString::GetDefaultLangString() const
{
    for (const wchar_t* language : {kDefaultLanguage, kEnglish})
        if (const TvlString* const text = Find(m_texts, language))
            return *text;
    return m_texts.empty() ? TvlString() : m_texts.front().second;
}

bool MultiLanguageString::HasLanguage(const TvlString& language) const { return Find(m_texts, language) != nullptr; }

void MultiLanguageString::SetLangString(const TvlString& language, const TvlString& text)
{
    const auto found =
        std::find_if(m_texts.begin(), m_texts.end(), [&](const auto& own) { return own.first == language; });
    if (found == m_texts.end())
        m_texts.emplace_back(language, text);
    else
        found->second = text;
}

bool MultiLanguageString::operator==(const MultiLanguageString& other) const
{
    return m_texts.size() == other.m_texts.size() && std::all_of(m_texts.begin(), m_texts.end(), [&](const auto& text) {
        const TvlString* const same = Find(other.m_texts, text.first);
        return same && *same == text.second;
    });
}

TvlString MultiLanguageString::GetLanguageFromLANGID(LANGID language)
{
    constexpr unsigned kPrimaryMask = 0x3ff;
    if (std::find(std::begin(kTraditionalChinese), std::end(kTraditionalChinese), language)
        != std::end(kTraditionalChinese))
        return L"ct";
    for (const LanguageRow& row : kLanguages)
        if (row.primary == (language & kPrimaryMask))
            return row.name;
    return kEnglish;
}
