// Sounds that the user can give to events of the application. For the user interface thread.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Switches sounds on (not 0) or off. They are off at the start. 1; 0 when they can't be switched on, which changes
/// nothing.
TVLUTL_API int CMNUIEnableSoundEvents(int enable);
/// Starts the sound of an event and returns 1; 0 when sounds are off or the event has no sound. Does not wait for its end.
/// Null stops the sound that plays.
TVLUTL_API int CMNUIPlaySound(const wchar_t* name);
/// Tells the system of an event of the running program, so that the user can choose its sound. Does nothing while sounds
/// are off, or without a name.
/// @param labelKey key of the text that names the event to the user
TVLUTL_API void CMNUIRegisterSoundEvent(const wchar_t* name, TvlString labelKey);
