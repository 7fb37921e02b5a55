// Which workspace the settings on disk belong to, as far as a process that died could not put it in order.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <optional>

namespace SettingsOrigin {

/// Notes in "<settings>.origin" that the settings there are those of `workspace`, and that this process, of `application`,
/// works with them.
void Record(const TvlString& settings, const TvlString& workspace, const TvlString& application);
/// Whose the settings are that a process has left.
struct Left {
    TvlString workspace;
    TvlString application;   // whose files lie beside them
};
/// Empty when that process runs, and when there is no note. What runs is in order.
std::optional<Left> LeftBehind(const TvlString& settings);
/// Whether a process that has died left the settings of another workspace than `workspace`.
bool IsForeign(const TvlString& settings, const TvlString& workspace);

/// What is amiss with the settings on disk and those of a workspace.
enum class Lack {
    None,           ///< they are its own
    Unsaved,        ///< they are its own, and nowhere else: nothing must take their place
    UnsavedAlone,   ///< the same, but for the files beside them: another application has left the settings
    Unwritten,      ///< those of the workspace could not be written: others are there
    Unapplied,   ///< they are not the preferences, of which the application makes the settings: whichever workspace it is
};
/// Notes, for this process, what `workspace` lacks; about others nothing is known from then on. What is unsaved stays so
/// until it is None.
void SetLack(const TvlString& settings, const TvlString& workspace, Lack lack);
Lack LackOf(const TvlString& settings, const TvlString& workspace);
/// Whether the settings on disk are not those of the workspace, or not the preferences: they must not be saved into it.
bool AreForeign(Lack lack);
/// The workspace whose settings are unsaved.
std::optional<TvlString> UnsavedOwner(const TvlString& settings);

/// For tests: what follows is done by another process than what was before.
void BeginSession();

}   // namespace SettingsOrigin
