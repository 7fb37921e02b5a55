#include "LocationsPage.h"

#include "CFileLocations.h"
#include "ControlIds.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <commctrl.h>

namespace {
struct Location {
    const wchar_t* name;   // of the function, without what all begin and end with
    TvlString (*folder)();
};

constexpr Location kLocations[] = {
    {L"ColorPalettes", &CFileLocations::GetFileLocationsColorPalettesDir},
    {L"EffectPresets", &CFileLocations::GetFileLocationsEffectPresetsDir},
    {L"Fills", &CFileLocations::GetFileLocationsFillsDir},
    {L"Fonts", &CFileLocations::GetFileLocationsFontsDir},
    {L"ImageLists", &CFileLocations::GetFileLocationsImageListsDir},
    {L"InteractiveFrames", &CFileLocations::GetFileLocationsInteractiveFramesDir},
    {L"Objects", &CFileLocations::GetFileLocationsObjectsDir},
    {L"PhotoFrames", &CFileLocations::GetFileLocationsPhotoFramesDir},
    {L"Templates", &CFileLocations::GetFileLocationsTemplatesDir},
    {L"Trays", &CFileLocations::GetFileLocationsTraysDir},
    {L"Working", &CFileLocations::GetFileLocationsWorkingDir},
    {L"VectorRaster", &CFileLocations::GetFileLocationsVectorRasterDir},
    {L"ArtisticMedia", &CFileLocations::GetFileLocationsArtisticMediaDir},
    {L"Blend", &CFileLocations::GetFileLocationsBlendDir},
    {L"TovelCloud", &CFileLocations::GetFileLocationsTovelCloudDir},
    {L"Contour", &CFileLocations::GetFileLocationsContourDir},
    {L"Distortion", &CFileLocations::GetFileLocationsDistortionDir},
    {L"Shadow", &CFileLocations::GetFileLocationsShadowDir},
    {L"Envelope", &CFileLocations::GetFileLocationsEnvelopeDir},
    {L"VectorExtrude", &CFileLocations::GetFileLocationsVectorExtrudeDir},
    {L"BitmapPresets", &CFileLocations::GetFileLocationsBitmapPresetsDir},
    {L"PrintStyles", &CFileLocations::GetFileLocationsPrintStylesDir},
    {L"ExportPresets", &CFileLocations::GetFileLocationsExportPresetsDir},
    {L"Symbols", &CFileLocations::GetFileLocationsSymbolsDir},
    {L"WritingTools", &CFileLocations::GetFileLocationsWritingToolsDir},
    {L"FindAndReplacd", &CFileLocations::GetFileLocationsFindAndReplacdDir},
};

constexpr int kNameWidth = 130;
constexpr int kFolderWidth = 410;
constexpr int kThereWidth = 60;
}   // namespace

LocationsPage::LocationsPage(HWND parent) : Page(parent)
{
    AddLabel(L"&Locations, by the functions CFileLocations::GetFileLocations...Dir:", {16, 12, 600, 18});
    const HWND list = Add(WC_LISTVIEWW, L"", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, kLocationList,
        {16, 32, 640, 320});
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    AddColumns(list, {{L"Location", kNameWidth}, {L"Folder", kFolderWidth}, {L"Exists", kThereWidth}});
    AddLabel(L"Fol&der:", {16, 366, 60, 18});
    AddEdit(L"", kLocationFolder, {80, 362, 576, 24}, ES_READONLY);
}

void LocationsPage::Show()
{
    const HWND list = Control(kLocationList);
    const int selected = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    ListView_DeleteAllItems(list);
    for (const auto& [name, folder] : kLocations) {
        const TvlString path = folder();
        const bool isThere = TvlUtils::SystemIO::Folder::Exists(path);
        AddListRow(list, {name, path.c_str(), isThere ? L"yes" : L"no"});
    }
    const int again = selected < 0 ? 0 : selected;
    ListView_SetItemState(list, again, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

LRESULT LocationsPage::OnNotify(const NMHDR& notice)
{
    if (notice.idFrom != kLocationList || notice.code != LVN_ITEMCHANGED)
        return 0;
    const int row = ListView_GetNextItem(Control(kLocationList), -1, LVNI_SELECTED);
    SetText(kLocationFolder, row < 0 ? L"" : ListCell(Control(kLocationList), row, 1).c_str());
    return 0;
}
