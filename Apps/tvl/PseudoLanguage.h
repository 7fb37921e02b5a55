// A language for layout tests, made from English by rule: what does not fit it will not fit a translation either.
#pragma once

#include "LanguageTexts.h"

/// English texts with accents, a third longer and in brackets, so that it shows where a text is cut, not translated or
/// lacks letters. Forms keep their conversions. What people type keeps the rules of words: operators and functions are
/// as in English, and names of units have accents alone.
LanguageTexts PseudoTexts(const LanguageTexts& english);

/// Writes the pseudo-language as a language's folder, which applications find as any other under "Languages".
/// @throws std::runtime_error when a file can't be written
void WritePseudoLanguage(const std::filesystem::path& folder, const LanguageTexts& english);
