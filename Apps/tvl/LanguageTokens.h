// The words of a language that people type into numeric fields, and what keeps the parser from finding them.
#pragma once

#include "LanguageTexts.h"

/// Adds the words that others hide: operators, functions and brackets of one text, a word for two units, a unit whose
/// word begins as an operator or a function, and characters that no word may have.
/// @param english the texts of the language that is chosen while this runs: units are known by their English names
void CheckTokens(const LanguageTexts& texts, const LanguageTexts& english, LanguageFaults& faults);
