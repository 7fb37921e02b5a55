// Folders of add-on content.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Content that is installed beside the suite.
namespace AddOns {

/// Whether a folder of add-on content is meant for the running program: it has a marker file, named after the program
/// without extension, "App.addon" for every platform or else "App.x64.addon" for this one. What stands in the file is
/// of no account.
/// @param foundPath gets the marker's path when there is one; may be null
/// Safe to call from any thread.
TVLUTL_API bool ShouldLoadAddOn(const TvlString& folder, TvlString* foundPath);

}   // namespace AddOns
