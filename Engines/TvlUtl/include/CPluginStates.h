// Where bitmap filter plug-ins are searched for.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPref/CPrefObject.h"

#include <utility>
#include <vector>

/// Static members alone. The preferences register when the library is loaded; their changes belong to one thread at a
/// time.
class TVLUTL_API CPluginStates {
public:
    /// @{
    /// There is nothing in an object: everything is static.
    CPluginStates() = default;
    CPluginStates(const CPluginStates&) = default;
    CPluginStates(CPluginStates&&) = default;
    CPluginStates& operator=(const CPluginStates&);
    CPluginStates& operator=(CPluginStates&&);
    /// @}

    /// The folders to search, in the order of the list, each with whether it is switched on. Tokens are replaced;
    /// entries without a folder are left out.
    static std::vector<std::pair<TvlString, bool>> GetPluginSearchPathAndState();

    /// The suite's own plug-ins, switched on, as PluginDirs names them until it is changed.
    static const TvlString defaultDirs;
    /// Those installed for all users, in the same form.
    static const TvlString defaultProgramFilesDir;

    /// "PlugInFilters64/Dirs": a folder, or one of the tokens "<plugins>" and "<plugins_programfiles>" in any case,
    /// then a comma and a state. "0" is off, anything else, or no state, is on.
    static CAppPrefObject<std::vector<TvlString>> PluginDirs;
    /// "PlugInFilters64/FileExtensons", spelled as it is stored: masks of plug-in files, with semicolons between.
    static CAppPrefObject<TvlString> PluginFileExtensions;
};
