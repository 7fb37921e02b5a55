// A language.
#pragma once

#include "siblings/SiblingsApi.h"

/// A language by its Windows id.
class TVLSIBLINGS_API CGlbLang {
public:
    void SetFromWinLangID(LANGID language) { m_language = language; }
    /// Whether the language is written from right to left.
    bool IsRTL() const;

private:
    LANGID m_language = 0;
};
