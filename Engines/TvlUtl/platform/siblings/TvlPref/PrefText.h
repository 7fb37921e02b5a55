// Values of preferences as texts, the form that they have in the registry and in settings files.
#pragma once

#include "siblings/TvlPref/PrefStore.h"

/// Preferences as texts.
namespace TvlPref {

/// The text of a value: "1" or "0"; the text itself; for a list each text with a line feed behind it, "\\" before a
/// backslash and "\n" (two characters) for a line feed within.
TVLSIBLINGS_API TvlString ToText(const PrefValue& value);

/// The value that "1", "0", "true" or "false" in any case stands for; empty for any other text.
TVLSIBLINGS_API std::optional<bool> BoolFromText(const TvlString& text);
/// The list that a text of ToText's form stands for; empty for any other.
TVLSIBLINGS_API std::optional<std::vector<TvlString>> ListFromText(const TvlString& text);

/// The text as it is when it has nothing but ASCII letters, digits and "-_ .:<>\/()[]!$" and no blank at its ends. Any other,
/// and one that begins with ">", becomes ">" and four hexadecimal digits for each UTF-16 unit.
TVLSIBLINGS_API TvlString EncodeText(const TvlString& text);
/// What EncodeText was given. A text that does not begin with ">" is itself.
TVLSIBLINGS_API TvlString DecodeText(const TvlString& text);

/// The value as the type T: stored as such, or as its text. Empty when it is neither.
template <class T>
std::optional<T> ValueAs(const PrefValue& value)
{
    if (const T* const typed = std::get_if<T>(&value))
        return *typed;
    [[maybe_unused]] const TvlString* const text = std::get_if<TvlString>(&value);
    if constexpr (std::is_same_v<T, bool>)
        return text ? BoolFromText(*text) : std::nullopt;
    else if constexpr (std::is_same_v<T, std::vector<TvlString>>)
        return text ? ListFromText(*text) : std::nullopt;
    else
        return std::nullopt;
}

}   // namespace TvlPref
