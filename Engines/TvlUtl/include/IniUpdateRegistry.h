// A workspace's settings become the application's preferences.
#pragma once

#include "TvlUtlApi.h"

/// Replaces the registry tree "Application Preferences" of the running application by what stands in a settings file: each
/// section becomes a key, "/" in its name a step down, and each entry a text. The file is read as a whole before anything
/// is deleted; one that can't be read leaves an empty tree. What can't be written is told in the log and passed over. A
/// file "<path>.applying" stands beside the settings meanwhile, and stays when a file that is there could not be read or
/// memory ran out: when it is found later the tree may be half done, and the call is to be repeated. When neither the file
/// can be read nor its mark be made the tree stays as it was.
///
/// A file of unknown origin sets any preference, the folders that plug-ins are loaded from included. With a verbose log
/// the names of all values are written to it.
///
/// The caller sees to it that no other process does the same at that time. Null does nothing.
extern "C" TVLUTL_API void IniUpdateRegistry(const wchar_t* path);
