// The languages that the installation carries.
#pragma once

#include "siblings/TvlCharacter/CGlbLang.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>
#include <memory>
#include <optional>
#include <string_view>

/// Where a language's files lie, and what its speakers call it.
struct UILanguageEntry {
    TvlString DirName;
    TvlString UIName;
};

/// By code, in the order of the codes.
using UILanguageMap = std::map<ULONG, std::unique_ptr<UILanguageEntry>>;

/// What an "info.json" says.
struct LanguageInfo {
    CGlbLang language;
    UILanguageEntry entry;
};

/// Reads the UTF-8 text of an "info.json"; empty for one that is not whole. A folder's name that leads anywhere but to a
/// folder beside the others is refused, and so are a shown name that is no single line of at most 100 characters and a
/// text that no installer writes: too long or too deep.
std::optional<LanguageInfo> ReadLanguageInfo(std::string_view text);

/// Reads the languages below `root` anew. Those whose folder lacks `resourceFile`, which may be empty, go to `others`. Of
/// two folders with one code the first by name counts.
void ReadInstalledLanguages(
    const TvlString& root, const TvlString& resourceFile, UILanguageMap& languages, UILanguageMap& others);
