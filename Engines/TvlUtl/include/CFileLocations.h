// In which folder each kind of the user's content lies: fills, palettes, fonts, templates, presets and so on.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Callables.h"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

/// How far CFileLocations::MigrateContent is.
struct MigrationStep {
    TvlString displayName;   // of the location that is being moved
    TvlString source;        // full path of the file that has just been copied, or could not be
    TvlString target;        // full path of its copy
    TvlString problem;       // why it could not be copied; empty for a success
    std::size_t done = 0;    // files of this location behind, this one included
    std::size_t count = 0;   // files of this location
};

/// The user's choice of folders, and what stands in for it. A location is known by its display name, a text in the
/// user's language. Each has a stored preference, empty until it is first asked for, and a computed default. The stored
/// folder wins while it exists; one that has gone is not forgotten, and comes back into use with its folder. Display
/// names and defaults are fixed by the first operation that needs them. Operations take no lock of their own but that
/// of the preferences, and pass on what reading a preference throws.
class TVLUTL_API CFileLocations {
public:
    /// A folder and the display name of its location.
    using Location = std::pair<TvlString, TvlString>;
    /// Display name to new and old folder.
    using Moves = std::map<TvlString, std::pair<TvlString, TvlString>>;

    /// @{
    /// There is nothing in an object: everything is static.
    CFileLocations() = default;
    CFileLocations(const CFileLocations&) = default;
    CFileLocations(CFileLocations&&) = default;
    CFileLocations& operator=(const CFileLocations&);
    CFileLocations& operator=(CFileLocations&&);
    /// @}

    /// @{
    /// The stored folder when that exists, else the default, which is also stored where nothing was.
    static TvlString GetFileLocationsColorPalettesDir();
    static TvlString GetFileLocationsEffectPresetsDir();
    static TvlString GetFileLocationsFillsDir();
    static TvlString GetFileLocationsFontsDir();
    static TvlString GetFileLocationsImageListsDir();
    static TvlString GetFileLocationsInteractiveFramesDir();
    static TvlString GetFileLocationsObjectsDir();
    static TvlString GetFileLocationsPhotoFramesDir();
    static TvlString GetFileLocationsTemplatesDir();
    static TvlString GetFileLocationsTraysDir();
    static TvlString GetFileLocationsWorkingDir();
    static TvlString GetFileLocationsVectorRasterDir();
    static TvlString GetFileLocationsArtisticMediaDir();
    static TvlString GetFileLocationsBlendDir();
    static TvlString GetFileLocationsTovelCloudDir();
    static TvlString GetFileLocationsContourDir();
    static TvlString GetFileLocationsDistortionDir();
    static TvlString GetFileLocationsShadowDir();
    static TvlString GetFileLocationsEnvelopeDir();
    static TvlString GetFileLocationsVectorExtrudeDir();
    static TvlString GetFileLocationsBitmapPresetsDir();
    static TvlString GetFileLocationsPrintStylesDir();
    static TvlString GetFileLocationsExportPresetsDir();
    static TvlString GetFileLocationsSymbolsDir();
    static TvlString GetFileLocationsWritingToolsDir();
    /// @}
    /// The spelling is the interface's.
    static TvlString GetFileLocationsFindAndReplacdDir();

    /// The 24 locations of a settings page in their fixed order, with what is stored, whether or not the folder exists.
    /// Stores the default where nothing was.
    static std::vector<Location> GetFileLocations();
    /// Stores folders, with a separator at their end. A location without folder or with an unknown display name is left
    /// out without a word.
    static void SetFileLocations(std::vector<Location> locations);
    /// Does nothing when either text is empty.
    static void SetFileLocation(Location location);
    /// The computed default; empty for an unknown display name.
    static TvlString GetDefaultFileLocation(const TvlString& displayName);

    /// Shows one warning, however many of the stored folders have gone, and changes nothing. For the user interface
    /// thread.
    static void CheckForMissingLocations();

    /// Copies the files of locations, those that their masks name, with the folders they lie in, from old to new
    /// folders. Both must exist. Files at the new place are replaced. Nothing is deleted; a read-only file is made
    /// writable where it was, and its copy read-only. A failure ends nothing but the copy of that file. New folders get
    /// a separator at their end, in the caller's map.
    static void MigrateContent(Moves& moves);
    /// The same; `report` is called behind each file, on this thread, and before them with the folders themselves and the
    /// reason when not all that is in the old one could be listed.
    static void MigrateContent(Moves& moves, TvlUtils::basic_safe_function<void(const MigrationStep&)> report);

    /// Whether changes of folders on the network are to be followed; true unless the user has turned it off.
    static bool IsTrackChangesOnNetworkFolders();

    // Access grants, for systems that demand them.

    /// Opens the stored grants when the program starts; what can't be opened is forgotten. True where the system needs
    /// no grants, else whether the folder that the user granted can be used.
    static bool StartAccessResource();
    /// Gets a grant for a folder from the user, and sets all locations to their defaults, with what they held copied
    /// there.
    /// @param ask          whether to ask for consent in a box before
    /// @param chooseFolder shows the user the folder it is given and takes another; false when the user declines
    /// @return whether the grant stands; false where the system has none. For the user interface thread.
    static bool RequestAccessToUserSelectedFolder(
        bool ask, TvlUtils::basic_safe_function<bool(TvlString&)> chooseFolder);

    /// Whether a path exists and lies in the folder of the cloud's documents.
    static bool IsTovelCloudFile(const TvlString& path);
};
