// One text in several languages.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "windows/Types.h"

#include <utility>
#include <vector>

/// A text per language. Languages go by the suite's two-letter names: br cs ct cz de en es fr it jp nl pl ru sv tr. The
/// empty name stands for the default text, which serves where a language has none of its own.
class TVLSIBLINGS_API MultiLanguageString {
public:
    /// Languages that are taken from a text or a file: each is looked for among those before it.
    static constexpr std::size_t kMostLanguages = 256;

    /// No text in any language.
    MultiLanguageString() = default;
    /// @{
    /// As Parse.
    MultiLanguageString(const wchar_t* text) { Parse(text); }
    MultiLanguageString(const TvlString& text) { Parse(text); }
    /// @}

    /// Takes the texts of the form ":[Other];br:[Outra];de:[Andere];": for each language its name, a colon and the text in
    /// brackets, which ends at the first "]" before a semicolon or the end. Of a language that is named twice the last
    /// text counts. A text of another form, or with more than kMostLanguages, becomes the default text as a whole; the
    /// result is false then.
    bool Parse(const TvlString& text);
    /// The same form. A text that holds "];" would not read back.
    TvlString ToString() const;

    /// The text of a language, else the default text.
    TvlString GetLangString(const TvlString& language) const;
    /// The same by a name that must not be null.
    TvlString GetLangString(const wchar_t* language) const { return GetLangString(TvlString(language)); }
    /// The same by Windows' id of the language.
    TvlString GetLangString(LANGID language) const { return GetLangString(GetLanguageFromLANGID(language)); }
    /// The text under the empty name; where there is none the English one, else the first; empty without any.
    TvlString GetDefaultLangString() const;
    /// Whether the language has a text of its own, be it empty.
    bool HasLanguage(const TvlString& language) const;

    /// Sets or replaces the text of a language; the empty name sets the default text.
    void SetLangString(const TvlString& language, const TvlString& text);
    /// The same by Windows' id of the language.
    void SetLangString(LANGID language, const TvlString& text) { SetLangString(GetLanguageFromLANGID(language), text); }
    /// Sets the text that serves where a language has none of its own.
    void SetDefaultLangString(const TvlString& text) { SetLangString(TvlString(), text); }

    /// Language and text, in the order in which languages were added.
    const std::vector<std::pair<TvlString, TvlString>>& Texts() const { return m_texts; }
    /// Whether there is no text in any language; an empty text counts as one.
    bool IsEmpty() const { return m_texts.empty(); }
    /// The same languages with equal texts, in whatever order.
    bool operator==(const MultiLanguageString& other) const;

    /// The suite's name of a language by Windows' id, whatever the region, save that Chinese as written in Taiwan, Hong Kong
    /// and Macao is "ct", elsewhere "cs"; "en" for languages that the suite does not speak.
    static TvlString GetLanguageFromLANGID(LANGID language);

private:
    std::vector<std::pair<TvlString, TvlString>> m_texts;
};
