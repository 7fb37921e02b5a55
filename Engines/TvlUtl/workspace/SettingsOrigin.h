// Which workspace the settings on disk belong to, as far as a process that died could not put it in order.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

namespace SettingsOrigin {

/// Notes in "<settings>.origin" that the settings there are those of `workspace`, and that this process works with them.
void Record(const TvlString& settings, const TvlString& workspace);
/// The settings are back in their workspace: takes this process's note away.
void Close(const TvlString& settings);
/// Whether a process that has died left the settings of another workspace than `workspace`. What runs is in order.
bool IsForeign(const TvlString& settings, const TvlString& workspace);

/// Notes, for this process, that the settings there are not those of `workspace`, since they could not be written: they
/// must not be saved into it. An empty text takes the note away.
void SetUnread(const TvlString& settings, const TvlString& workspace);
bool IsUnread(const TvlString& settings, const TvlString& workspace);

}   // namespace SettingsOrigin
