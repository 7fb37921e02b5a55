// A language.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// A language by its code: three ASCII characters, such as "ENU", the first one in the lowest byte. 0 is no language.
class TVLSIBLINGS_API CGlbLang {
public:
    /// No language.
    constexpr CGlbLang() = default;
    /// The language of a code, which is not checked.
    explicit constexpr CGlbLang(ULONG code) : m_code(code) { }

    /// The code as it is; 0 for no language.
    constexpr ULONG GetCode() const { return m_code; }
    /// Whether this is a language at all.
    explicit constexpr operator bool() const { return m_code != 0; }

    /// Reads three letters or digits, letters of either case. False, and no language, for any other text. Windows need
    /// not know the language.
    bool SetFromIO_StrFmt(const TvlString& text);
    /// The code in three characters; empty for no language.
    TvlString GetIO_StrFmt() const;

    /// The language of a Windows id. An id that Windows does not know stands for the main language of its group; no
    /// language when there is none either.
    void SetFromWinLangID(LANGID language);
    /// The Windows id; 0 for no language and for one that Windows does not know.
    LANGID GetWinLangID() const;

    /// Whether it is Chinese in simplified characters.
    bool IsCS() const;
    /// Whether it is Chinese in traditional characters.
    bool IsCT() const;
    /// Whether it is Chinese, Japanese or Korean.
    bool IsFarEast() const;
    /// Whether the language is written from right to left.
    bool IsRTL() const;

    /// @{
    /// By code, the number and not the letters.
    friend constexpr bool operator==(CGlbLang, CGlbLang) = default;
    friend constexpr auto operator<=>(CGlbLang, CGlbLang) = default;
    /// @}

private:
    ULONG m_code = 0;
};

static_assert(sizeof(CGlbLang) == 4);
