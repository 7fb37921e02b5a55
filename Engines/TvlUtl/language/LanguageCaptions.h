// The texts of the language dialog, which is shown before any file of texts is read.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <vector>

/// Places of the texts of a row.
enum LanguageCaption : std::size_t { kTitle, kPrompt, kAlwaysUse, kOkButton, kCaptionCount };

/// The texts in a language, by its name as MultiLanguageString::GetLanguageFromLANGID gives it. A language without texts
/// of its own is asked in English.
const std::vector<TvlString>& LanguageCaptions(const TvlString& language);
