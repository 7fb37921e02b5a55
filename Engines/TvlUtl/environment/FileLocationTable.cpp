#include "FileLocationTable.h"

#include "siblings/TvlConfig/DocumentFolders.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <iterator>

namespace TvlUtl {

namespace {
TvlString InSuiteFolder(const wchar_t* name)
{
    const TvlString suite = GetUserDocumentsTovelSuiteDir();
    return suite.IsEmpty() ? suite : suite + name;
}

TvlString InteractiveFramesDir() { return InSuiteFolder(L"Interactive Frames"); }
TvlString ObjectsDir() { return InSuiteFolder(L"Objects"); }

#define STORED(key) FolderPref(L"File Locations/" key)

// Keys and preferences are stored outside and never change.
FileLocation rows[] = {
    {L"c2792051-eaa6-486e-8e00-a52420e53ccd", STORED(L"DefaultArtisticMediaPath"), GetUserDocumentsAppArtisticMediaDir},
    {L"8453674e-249f-49a0-93f7-a732688e5307", STORED(L"DefaultBitmapPresetsPath"),
        GetUserDocumentsTovelSuiteBitmapPresetsDir},
    {L"dd2dfe03-6ebf-4ed2-8475-dbe0b8115c94", STORED(L"DefaultColorPalettesPath"),
        GetUserDocumentsTovelSuiteColorPalettesDir},
    {L"68aee14d-4251-40e5-a626-79ed69f9ec76", STORED(L"DefaultExportPresetsPath"),
        GetUserDocumentsTovelSuiteExportPresetsDir},
    {L"b834665f-485f-4fd6-a4ff-d4c9fd074525", STORED(L"DefaultEffectPreset"),
        GetUserDocumentsTovelSuiteEffectPresetsDir},
    {L"40048b24-a48d-e7b5-437c-0c32f9d4f24b", STORED(L"DefaultFillPath"), GetUserDocumentsTovelSuiteFillsDir},
    {L"ec7fb837-a35f-fc8e-4a18-112152afa25f", STORED(L"DefaultFontPath"), GetUserDocumentsTovelSuiteFontsDir},
    {L"21194c6f-e0ce-e68d-45e4-e58020cfb718", STORED(L"DefaultImageListPath"), GetUserDocumentsTovelSuiteImageListsDir},
    {L"41915369-b589-918c-4e3d-d2ecf55e9f00", STORED(L"DefaultPhotoFramesPath"), GetUserDocumentsTovelSuiteFramesDir},
    {L"4e080a92-3d57-4d9e-b6b6-17b3aa52e430", STORED(L"DefaultSymbolsPath"), GetUserDocumentsTovelSuiteSymbolsDir},
    {L"abbf3c8b-3c39-e7be-4ed5-423e44800b15", STORED(L"DefaultTemplatesPath"), GetUserDocumentsTovelSuiteTemplatesDir},
    {L"750ec10f-5632-719f-4773-b781ee8fd941", STORED(L"DefaultTraysPath"), GetUserDocumentsTovelSuiteTraysDir},
    {L"984328ab-1c06-404b-af3b-d4c642ded4f1", STORED(L"DefaultVectorRasterPath"),
        GetUserDocumentsTovelSuiteVectorRasterDir},
    {L"af422e0f-cfd0-47a2-9e2f-a4f2f5588b4b", STORED(L"DefaultFindAndReplacePath"),
        GetUserDocumentsTovelSuiteFindAndReplaceDir},
    {L"69a76083-f0a4-4b06-8125-ca3603f0cd98", STORED(L"DefaultWorkingPath"), GetUserDocumentsWorkingDir},
    {L"6f1d6d00-df0a-4599-a023-045696acc83a", STORED(L"DefaultPrintStylesPath"),
        GetUserDocumentsTovelSuitePrintStylesDir},
    {L"02817be6-b592-4753-9eb2-ead9ab619c53", STORED(L"DefaultBlendPath"), GetUserDocumentsPresetsBlendDir},
    {L"b7861ed0-940d-4c35-ab80-7d6f361fce2a", STORED(L"DefaultCloudPath"), GetUserDocumentsTovelCloudDir},
    {L"235e6232-aa46-463e-9f18-bd586ff86188", STORED(L"DefaultContourPath"), GetUserDocumentsPresetsContourDir},
    {L"547e74c0-9459-43b7-9cbf-12761676308d", STORED(L"DefaultDistortionPath"), GetUserDocumentsPresetsDistortionDir},
    {L"0cd238cc-8a8e-4906-badd-1c685f888bf5", STORED(L"DefaultShadowPath"), GetUserDocumentsPresetsShadowDir},
    {L"c31ab2bc-2f68-4f99-a81f-8bca2638baba", STORED(L"DefaultEnvelopePath"), GetUserDocumentsPresetsEnvelopeDir},
    {L"5bf2c7fb-f2cd-474e-8770-e1952e615ee7", STORED(L"DefaultVectorExtrudePath"),
        GetUserDocumentsPresetsVectorExtrudeDir},
    {L"8ab15c79-08c7-470c-9ec8-37f6ad669687", STORED(L"DefaultWritingToolsPath"),
        GetUserDocumentsTovelSuiteWritingToolsDir},
};
static_assert(std::size(rows) == static_cast<std::size_t>(LocationRow::Count));

FileLocation interactiveFrames = {L"", STORED(L"DefaultInteractiveFramesPath"), InteractiveFramesDir};
FileLocation objects = {L"", STORED(L"DefaultObjectsPath"), ObjectsDir};
FolderPref userSelected = STORED(L"DefaultUserSelectedDocumentsPath");

CPrefObject<bool, CBoxPrefManager> trackChanges(L"File Locations/TrackChangesOnNetworkFolders", true);

constexpr std::size_t kMostMasks = 4;

struct MaskRow {
    std::wstring_view resourceKey;
    std::array<const wchar_t*, kMostMasks> masks;   // the rest is null
};

// Each mask ends in a wildcard behind the extension: content of newer versions has longer ones.
constexpr MaskRow kMasks[] = {
    {L"c2792051-eaa6-486e-8e00-a52420e53ccd", {L"*.tmx*", L"*.tvr*"}},
    {L"8453674e-249f-49a0-93f7-a732688e5307", {L"*.pst*"}},
    {L"dd2dfe03-6ebf-4ed2-8475-dbe0b8115c94", {L"*.xml*", L"*.tpl*"}},
    {L"68aee14d-4251-40e5-a626-79ed69f9ec76", {L"*.xml*"}},
    {L"b834665f-485f-4fd6-a4ff-d4c9fd074525", {L"*.tvss*"}},
    {L"40048b24-a48d-e7b5-437c-0c32f9d4f24b", {L"*.fill*"}},
    {L"ec7fb837-a35f-fc8e-4a18-112152afa25f", {L"*.ttf*", L"*.otf*", L"*.ttc*", L"*.pfb*"}},
    {L"21194c6f-e0ce-e68d-45e4-e58020cfb718", {L"*.tpt*"}},
    {L"41915369-b589-918c-4e3d-d2ecf55e9f00", {L"*.tpt*"}},
    {L"4e080a92-3d57-4d9e-b6b6-17b3aa52e430", {L"*.tsl*"}},
    {L"abbf3c8b-3c39-e7be-4ed5-423e44800b15", {L"*.tvt*", L"*.tvrt*"}},
    {L"750ec10f-5632-719f-4773-b781ee8fd941", {L"*.tray*"}},
    {L"984328ab-1c06-404b-af3b-d4c642ded4f1", {L"*.tvr*"}},
    {L"af422e0f-cfd0-47a2-9e2f-a4f2f5588b4b", {L"*.fin*"}},
    {L"6f1d6d00-df0a-4599-a023-045696acc83a", {L"*.prs*"}},
    {L"02817be6-b592-4753-9eb2-ead9ab619c53", {L"*.pst*"}},
    {L"235e6232-aa46-463e-9f18-bd586ff86188", {L"*.pst*"}},
    {L"547e74c0-9459-43b7-9cbf-12761676308d", {L"*.pst*"}},
    {L"0cd238cc-8a8e-4906-badd-1c685f888bf5", {L"*.pst*"}},
    {L"c31ab2bc-2f68-4f99-a81f-8bca2638baba", {L"*.pst*"}},
    {L"5bf2c7fb-f2cd-474e-8770-e1952e615ee7", {L"*.pst*"}},
    {L"8ab15c79-08c7-470c-9ec8-37f6ad669687", {L"*.UWL*"}},
    // Keys of locations that earlier versions had.
    {L"9e87ffd3-f1f5-e88f-4622-c25ec51d490c", {L"*.tpt*"}},
    {L"f1929e41-3b16-d6a3-46c4-e4c9ea1a3999", {L"*.tvr*"}},
};
}   // namespace

TvlString FileLocation::DisplayName() const { return Framework::Resources::GetString(resourceKey); }

std::span<FileLocation> FileLocations() { return rows; }
FileLocation& InteractiveFramesLocation() { return interactiveFrames; }
FileLocation& ObjectsLocation() { return objects; }
FolderPref& UserSelectedFolder() { return userSelected; }
CPrefObject<bool, CBoxPrefManager>& TrackChangesOnNetworkFolders() { return trackChanges; }

TvlString StoredFolder(FileLocation& location)
{
    const TvlString stored = location.folder.GetValue();
    if (!stored.IsEmpty())
        return stored;
    const TvlString fallback = location.defaultFolder();
    location.folder.Change(fallback);
    return fallback;
}

TvlString ResolvedFolder(FileLocation& location)
{
    const TvlString stored = StoredFolder(location);
    return TvlUtils::SystemIO::Folder::Exists(stored) ? stored : location.defaultFolder();
}

std::span<const wchar_t* const> FileMasks(std::wstring_view resourceKey)
{
    const auto row = std::find_if(
        std::begin(kMasks), std::end(kMasks), [&](const MaskRow& known) { return known.resourceKey == resourceKey; });
    if (row == std::end(kMasks))
        return {};
    const auto end = std::find(row->masks.begin(), row->masks.end(), nullptr);
    return {row->masks.data(), static_cast<std::size_t>(end - row->masks.begin())};
}

}   // namespace TvlUtl
