// What the user agrees to. All three are on until the user turns them off, and they are stored with the preferences.
#pragma once

#include "TvlUtlApi.h"

/// Consents of the user.
namespace TvlUtl::Privacy {

// The getters give 0 or 1; any value but 0 turns a consent on. Nothing in this library asks them before it sends: trackers
// and the analytics service do.

/// @{
/// Whether the use of features may be told of: 0 or 1; any value but 0 turns it on.
TVLUTL_API int GetShareFeatureUsage();
TVLUTL_API void SetShareFeatureUsage(int share);
/// @}
/// @{
/// Whether the texts that the user searches for may be told of: 0 or 1; any value but 0 turns it on.
TVLUTL_API int GetShareSearchTerms();
TVLUTL_API void SetShareSearchTerms(int share);
/// @}
/// @{
/// Whether the user is asked again after a crash: 0 or 1; any value but 0 turns it on.
TVLUTL_API int GetShowCrashDialogAgain();
TVLUTL_API void SetShowCrashDialogAgain(int show);
/// @}

}   // namespace TvlUtl::Privacy
