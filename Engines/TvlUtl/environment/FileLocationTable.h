// The locations, one row each, and what belongs to no row.
#pragma once

#include "siblings/TvlPref/CPrefObject.h"

#include <array>
#include <span>

namespace TvlUtl {

/// A stored folder; empty until something was stored.
using FolderPref = CPrefObject<TvlString, CBoxPrefManager>;

struct FileLocation {
    const wchar_t* resourceKey;   // of the display name
    FolderPref folder;
    TvlString (*defaultFolder)();

    TvlString DisplayName() const;
};

/// The place of each location in the fixed order.
enum class LocationRow {
    ArtisticMedia,
    BitmapPresets,
    ColorPalettes,
    ExportPresets,
    EffectPresets,
    Fills,
    Fonts,
    ImageLists,
    PhotoFrames,
    Symbols,
    Templates,
    Trays,
    VectorRaster,
    FindAndReplace,
    Working,
    PrintStyles,
    Blend,
    TovelCloud,
    Contour,
    Distortion,
    Shadow,
    Envelope,
    VectorExtrude,
    WritingTools,
    Count,
};

/// All rows in their fixed order.
std::span<FileLocation> FileLocations();

/// Locations that no settings page shows.
FileLocation& InteractiveFramesLocation();
FileLocation& ObjectsLocation();
/// The folder that the user granted; it has no default.
FolderPref& UserSelectedFolder();

CPrefObject<bool, CBoxPrefManager>& TrackChangesOnNetworkFolders();

/// The stored folder when it exists, else the default, which is also stored where nothing was.
TvlString ResolvedFolder(FileLocation& location);
/// What is stored; the default, which is stored then, where nothing was.
TvlString StoredFolder(FileLocation& location);

/// Names of the files that belong to a location; no row has more than four masks.
std::span<const wchar_t* const> FileMasks(std::wstring_view resourceKey);

}   // namespace TvlUtl
