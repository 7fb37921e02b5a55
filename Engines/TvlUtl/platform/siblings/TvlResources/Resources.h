// Texts of the user interface by key, in the user's language.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Texts of the user interface by key, in the language of the moment.
namespace Framework::Resources {

/// The text of a key (a GUID in lower case with hyphens) in the current language; empty when no file has the key.
/// Texts are read on first use from the files of "Languages/<DIR>/Data/Texts" in the suite's folder; a key that the
/// language lacks is taken from "EN". Safe to call from any thread.
TVLSIBLINGS_API TvlString GetString(const TvlString& key);

/// The caption that goes with the text of a key, which has the key with ".caption" behind it; empty when there is none.
TVLSIBLINGS_API TvlString GetCaption(const TvlString& key);

/// Copies the text of a key to `buffer` of `size` characters, cut if need be and always ended by a zero.
/// Returns the number of characters copied. A size below 1 copies nothing.
TVLSIBLINGS_API int GetStringIntoBuffer(const TvlString& key, wchar_t* buffer, int size);

/// The key of a text that a library's own resources had under a number; empty when there is none. Such numbers stand in
/// old documents. Files of texts list them in "legacy", by the library's name and the number.
TVLSIBLINGS_API TvlString GetLegacyGuid(const TvlString& library, ULONG id);
/// The text of such a key; empty when no file has the key.
TVLSIBLINGS_API TvlString GetLegacyString(const TvlString& key);

/// Chooses the language by its folder's name, such as L"EN"; an unknown folder leaves English.
TVLSIBLINGS_API void SetLanguageFolder(const TvlString& folder);

/// Grows whenever texts may have changed: a cache of texts is good as long as the number it was made with.
TVLSIBLINGS_API unsigned Generation();

}   // namespace Framework::Resources
