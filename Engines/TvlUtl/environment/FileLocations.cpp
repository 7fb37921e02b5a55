#include "CFileLocations.h"

#include "FileLocationTable.h"
#include "TopMostOwnerWnd.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/Bookmarks.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Windowing.h"

#include <unordered_map>

using namespace TvlUtl;
namespace SystemIO = TvlUtils::SystemIO;

namespace {
// The caption and the text of the warning.
constexpr const wchar_t* kMissingFolderKey = L"7b8f551f-c1ff-13b8-416f-408cdebce1d5";
constexpr UINT kMissingFolderStyle = 0x10030;   // MB_SETFOREGROUND | MB_ICONEXCLAMATION

TvlString Resolved(LocationRow row) { return ResolvedFolder(FileLocations()[static_cast<std::size_t>(row)]); }

void Store(FileLocation& location, const TvlString& folder, const TvlString& displayName)
{
    const TvlString old = location.folder.GetValue();
    if (old.Compare(folder) == 0)
        return;
    if (SystemIO::Bookmark::RequireUserPermissionToFileSystem()) {
        SystemIO::Bookmark::RemoveBookmark(old, displayName);
        SystemIO::Bookmark::SaveOpenPathToBookmarks(folder, displayName);
    }
    location.folder.Change(folder);
}
}   // namespace

// Nothing to copy.
CFileLocations& CFileLocations::operator=(const CFileLocations&) = default;
CFileLocations& CFileLocations::operator=(CFileLocations&&) = default;

TvlString CFileLocations::GetFileLocationsColorPalettesDir() { return Resolved(LocationRow::ColorPalettes); }
TvlString CFileLocations::GetFileLocationsEffectPresetsDir() { return Resolved(LocationRow::EffectPresets); }
TvlString CFileLocations::GetFileLocationsFillsDir() { return Resolved(LocationRow::Fills); }
TvlString CFileLocations::GetFileLocationsFontsDir() { return Resolved(LocationRow::Fonts); }
TvlString CFileLocations::GetFileLocationsImageListsDir() { return Resolved(LocationRow::ImageLists); }
TvlString CFileLocations::GetFileLocationsInteractiveFramesDir() { return ResolvedFolder(InteractiveFramesLocation()); }
TvlString CFileLocations::GetFileLocationsObjectsDir() { return ResolvedFolder(ObjectsLocation()); }
TvlString CFileLocations::GetFileLocationsPhotoFramesDir() { return Resolved(LocationRow::PhotoFrames); }
TvlString CFileLocations::GetFileLocationsTemplatesDir() { return Resolved(LocationRow::Templates); }
TvlString CFileLocations::GetFileLocationsTraysDir() { return Resolved(LocationRow::Trays); }
TvlString CFileLocations::GetFileLocationsWorkingDir() { return Resolved(LocationRow::Working); }
TvlString CFileLocations::GetFileLocationsVectorRasterDir() { return Resolved(LocationRow::VectorRaster); }
TvlString CFileLocations::GetFileLocationsArtisticMediaDir() { return Resolved(LocationRow::ArtisticMedia); }
TvlString CFileLocations::GetFileLocationsBlendDir() { return Resolved(LocationRow::Blend); }
TvlString CFileLocations::GetFileLocationsTovelCloudDir() { return Resolved(LocationRow::TovelCloud); }
TvlString CFileLocations::GetFileLocationsContourDir() { return Resolved(LocationRow::Contour); }
TvlString CFileLocations::GetFileLocationsDistortionDir() { return Resolved(LocationRow::Distortion); }
TvlString CFileLocations::GetFileLocationsShadowDir() { return Resolved(LocationRow::Shadow); }
TvlString CFileLocations::GetFileLocationsEnvelopeDir() { return Resolved(LocationRow::Envelope); }
TvlString CFileLocations::GetFileLocationsVectorExtrudeDir() { return Resolved(LocationRow::VectorExtrude); }
TvlString CFileLocations::GetFileLocationsBitmapPresetsDir() { return Resolved(LocationRow::BitmapPresets); }
TvlString CFileLocations::GetFileLocationsPrintStylesDir() { return Resolved(LocationRow::PrintStyles); }
TvlString CFileLocations::GetFileLocationsExportPresetsDir() { return Resolved(LocationRow::ExportPresets); }
TvlString CFileLocations::GetFileLocationsSymbolsDir() { return Resolved(LocationRow::Symbols); }
TvlString CFileLocations::GetFileLocationsWritingToolsDir() { return Resolved(LocationRow::WritingTools); }
TvlString CFileLocations::GetFileLocationsFindAndReplacdDir() { return Resolved(LocationRow::FindAndReplace); }

std::vector<CFileLocations::Location> CFileLocations::GetFileLocations()
{
    std::vector<Location> locations;
    for (FileLocation& location : FileLocations())
        locations.emplace_back(StoredFolder(location), location.DisplayName());
    return locations;
}

void CFileLocations::SetFileLocations(std::vector<Location> locations)
{
    std::unordered_map<TvlString, FileLocation*> byName;
    for (FileLocation& location : FileLocations())
        byName.emplace(location.DisplayName(), &location);
    for (const auto& [folder, displayName] : locations)
        if (const auto found = byName.find(displayName); found != byName.end() && !folder.IsEmpty())
            Store(*found->second, SystemIO::Path::AddBackslash(folder), displayName);
}

void CFileLocations::SetFileLocation(Location location)
{
    if (!location.first.IsEmpty() && !location.second.IsEmpty())
        SetFileLocations({std::move(location)});
}

TvlString CFileLocations::GetDefaultFileLocation(const TvlString& displayName)
{
    static const auto defaults = [] {
        std::unordered_map<TvlString, TvlString> folders;
        for (const FileLocation& location : FileLocations())
            folders.emplace(location.DisplayName(), location.defaultFolder());
        return folders;
    }();
    const auto found = defaults.find(displayName);
    return found == defaults.end() ? TvlString() : found->second;
}

void CFileLocations::CheckForMissingLocations()
{
    for (const FileLocation& location : FileLocations()) {
        const TvlString stored = location.folder.GetValue();
        if (stored.IsEmpty() || SystemIO::Folder::Exists(stored))
            continue;
        TopMostOwnerWnd owner(nullptr);
        const HWND window = owner.GetOwnerWnd(GetAppSkinSettingData().GetAppUIName().c_str());
        Ports::Windowing::Get().ShowBox(window, Framework::Resources::GetString(kMissingFolderKey).Std(),
            Framework::Resources::GetCaption(kMissingFolderKey).Std(), kMissingFolderStyle);
        return;
    }
}

bool CFileLocations::IsTrackChangesOnNetworkFolders() { return TrackChangesOnNetworkFolders().GetValue(); }

bool CFileLocations::IsTovelCloudFile(const TvlString& path)
{
    return SystemIO::Path::Exists(path) && SystemIO::Path::Contains(GetFileLocationsTovelCloudDir(), path);
}
