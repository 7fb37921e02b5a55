#include "LanguageTokens.h"

#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <set>

namespace {
constexpr const char* kTokenFile = "parser.json";
constexpr const char* kUnitFile = "units.json";
constexpr std::wstring_view kNumberCharacters = L"0123456789.,; ";
// Group separators of some region are taken out of what is typed.
constexpr std::wstring_view kGroupSeparators = L".,\u00a0\u202f\u2009";
// Picas and points, ciceros and didots: the parser takes out blanks behind the first part.
constexpr int kPartsOfChains[] = {24, 4, 25, 13};

// Displays of one definition each, all that have names.
constexpr int kUnits[] = {1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 16, 24, 25, 26, 27, 32, 35, 36, 37, 38, 39, 40};

// Signs that the library writes itself: with others its own texts can't be read.
struct WrittenSign {
    const char* key;
    std::wstring_view text;
};
constexpr WrittenSign kWrittenSigns[] = {
    {"9ca6a3a9-dc17-4a81-8a9b-4d9054012a67", L"-"}, {"d7e27cba-81e9-46ba-baa6-1baf9c43940e", L"/"}};

struct Word {
    std::string key;
    std::wstring text;
    std::wstring folded;
    int unit = 0;   // the first that the word belongs to
};

std::wstring Folded(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(), TvlFoldCase);
    return text;
}

Word MakeWord(const std::string& key, const std::string& text, int unit)
{
    const std::wstring wide = TvlPlatform::FromUtf8(text);
    return {key, wide, Folded(wide), unit};
}

std::string Quoted(const Word& word) { return '"' + TvlPlatform::ToUtf8(word.text) + '"'; }

/// The words of each unit, by the English names that the library gives: units that share one are the same.
std::vector<Word> UnitWordsOf(const LanguageTexts& texts, const LanguageTexts& english)
{
    std::vector<Word> words;
    std::set<std::string> taken;
    WUnit units;   // the shared one may have names of another language
    units.LoadDefaults(nullptr, 0);
    for (const int unit : kUnits) {
        for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form) {
            const std::string name = TvlPlatform::ToUtf8(units.GetUnitString(unit, form));
            for (const auto& [key, text] : english.at(kUnitFile)) {
                const auto found = texts.at(kUnitFile).find(key);
                const bool isName = !name.empty() && text == name && found != texts.at(kUnitFile).end();
                if (isName && taken.insert(key).second)
                    words.push_back(MakeWord(key, found->second, unit));
            }
        }
    }
    return words;
}

class TokenCheck {
public:
    TokenCheck(const LanguageTexts& texts, const LanguageTexts& english, LanguageFaults& faults)
        : m_units(UnitWordsOf(texts, english)), m_faults(faults)
    {
        for (const auto& [key, text] : texts.at(kTokenFile))
            m_tokens.push_back(MakeWord(key, text, 0));
    }

    void CheckTokens()
    {
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            CheckCharacters(kTokenFile, m_tokens[i]);
            for (const WrittenSign& sign : kWrittenSigns)
                if (m_tokens[i].key == sign.key && m_tokens[i].text != sign.text)
                    Fault(kTokenFile, m_tokens[i], "has to be as in English: numbers are written with that sign");
            for (std::size_t j = 0; j < i; ++j)
                if (m_tokens[i].text == m_tokens[j].text)
                    Fault(kTokenFile, m_tokens[i], "stands for " + m_tokens[j].key + " too");
        }
    }

    void CheckUnits()
    {
        for (std::size_t i = 0; i < m_units.size(); ++i) {
            const Word& word = m_units[i];
            CheckCharacters(kUnitFile, word);
            CheckBlanks(word);
            for (std::size_t j = 0; j < i; ++j)
                if (word.folded == m_units[j].folded && word.unit != m_units[j].unit)
                    Fault(kUnitFile, word, "is a word of another unit too, " + m_units[j].key);
            // The parser forgets units when an operator or a function begins the text, be it shorter.
            for (const Word& token : m_tokens)
                if (!token.folded.empty() && word.folded.starts_with(token.folded))
                    Fault(kUnitFile, word, "begins as " + Quoted(token) + ", which is found in its place");
        }
    }

private:
    void Fault(const char* file, const Word& word, const std::string& problem)
    {
        m_faults.push_back(std::string(file) + ": " + word.key + ": " + Quoted(word) + ": " + problem);
    }
    void CheckCharacters(const char* file, const Word& word)
    {
        if (!word.text.empty() && kNumberCharacters.find(word.text.front()) != std::wstring_view::npos)
            Fault(file, word, "begins as a number or with a blank, and is never found");
        if (word.text.find_first_of(kGroupSeparators) != std::wstring::npos)
            Fault(file, word, "has a character that separates groups of digits, which are taken out of what is typed");
        if (!word.text.empty() && word.text.back() == L' ')
            Fault(file, word, "ends with a blank, which nobody types");
    }
    void CheckBlanks(const Word& word)
    {
        const bool isPart =
            std::find(std::begin(kPartsOfChains), std::end(kPartsOfChains), word.unit) != std::end(kPartsOfChains);
        if (isPart && word.text.find_first_of(L" \t\u3000") != std::wstring::npos)
            Fault(kUnitFile, word, "has a blank, and those are taken out between the parts of such measures");
    }

    std::vector<Word> m_tokens;
    std::vector<Word> m_units;
    LanguageFaults& m_faults;
};
}   // namespace

void CheckTokens(const LanguageTexts& texts, const LanguageTexts& english, LanguageFaults& faults)
{
    for (const char* const file : {kTokenFile, kUnitFile})
        if (!texts.contains(file) || !english.contains(file))
            return;   // told as a missing file
    TokenCheck check(texts, english, faults);
    check.CheckTokens();
    check.CheckUnits();
}
