// Locales to hold ours against other data in.
#pragma once

// Decimal comma, narrow no-break spaces, groups of 3 and 2, apostrophes, minus signs of their own, right to left.
inline constexpr const char* kLocales[] = {"en-US", "en-GB", "de-DE", "de-CH", "fr-FR", "fr-CH", "es-ES", "it-IT",
    "pt-BR", "nl-NL", "pl-PL", "cs-CZ", "ru-RU", "sv-SE", "tr-TR", "ja-JP", "zh-CN", "hi-IN", "he-IL", "ar-AE", "fa-IR",
    "nb-NO"};

// The minus of print, which the system's data has for some regions; Windows gives the sign of keyboards everywhere.
inline constexpr const char* kTypographicMinus = "\u2212";
