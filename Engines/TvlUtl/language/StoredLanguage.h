// What the registry keeps of the language.
#pragma once

#include "siblings/TvlCharacter/CGlbLang.h"

namespace StoredLanguage {

/// "UILang"; no language when there is none, or it is no text of three characters that make a code.
CGlbLang Read();
bool Write(CGlbLang language);

/// Whether there is a value "QueryStartupLang", of whatever kind.
bool HasQueryStartup();
/// "QueryStartupLang"; false when it is missing or no number.
bool ReadQueryStartup();
void WriteQueryStartup(bool on);

/// "ShowLangSelection" of the machine; false when it is missing or no number.
bool ReadShowSelection();

/// Deletes "UILang" and "QueryStartupLang".
void Forget();

}   // namespace StoredLanguage
