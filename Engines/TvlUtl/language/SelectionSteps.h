// What the selection saw, for those who wonder about its outcome.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

namespace SelectionSteps {

/// Forgets what was noted: a selection begins.
void Begin();
/// Notes a step. `step` lives as long as the process.
void Note(const wchar_t* step, const TvlString& finding);

}   // namespace SelectionSteps
