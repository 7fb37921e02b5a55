#include "EventTable.h"

#include "siblings/TvlConfig/DocumentFolders.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlUtils/String.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <cmath>

namespace {
namespace Analytics = ProductAnalytics;
using Analytics::PropertyGroup;
using Analytics::PropertyMap;
using Text = std::optional<TvlString>;
using Record = TrackedRecord;
using TvlUtils::String::ToStringW;

template <std::size_t N>
struct Literal {
    consteval Literal(const wchar_t (&literal)[N]) { std::copy_n(literal, N, text); }
    wchar_t text[N];
};

/// A value that is always the same.
template <Literal literal>
Text Always(const Record&)
{
    return literal.text;
}

Text NotEmpty(const TvlString& text) { return text.IsEmpty() ? Text() : text; }

/// Seconds, to two decimals.
double Round2(TvlUtils::TimeDelta time)
{
    const double seconds = static_cast<double>(time.GetTicks()) / TvlUtils::TimeDelta::kTicksPerSecond;
    return std::round(seconds * 100) / 100;
}

TvlUtils::TimeDelta Download(const Record& record) { return record.Marked(TrackFileFormatUseDurationMarker::Download); }

/// "2700" as "27.0".
TvlString VersionText(const TvlString& version)
{
    const TvlString pointed = version.Left(2) + L'.' + version.Mid(2);
    return pointed.Left(pointed.GetLength() - 1);
}

Text FileType(const Record& record) { return record.GetType().Left(5).MakeLower(); }

Text Version(const Record& record)
{
    return record.GetType().CompareNoCase(L"tvr") == 0 ? VersionText(record.GetVersion()) : L"N/A";
}

Text SaveType(const Record& record)
{
    if (record.IsInCloud())
        return L"cloud";
    // Exactly so, unlike for the version.
    const bool isTemplate = record.GetType() == L"tvrt" || record.GetType() == L"tvt";
    return isTemplate ? L"template" : L"local";
}

/// Whether the file lies in the user's folder of the suite's content.
bool IsSuiteContent(const Record& record)
{
    const TvlString folder = GetUserDocumentsTovelSuiteDir();
    return !folder.IsEmpty() && record.path.Std().starts_with(folder.Std());
}

/// An element of the path of the suite's content, counted from the last one; nothing for other files.
template <std::size_t FromLast>
Text ContentElement(const Record& record)
{
    if (!IsSuiteContent(record))
        return std::nullopt;
    const std::vector<TvlString> elements = TvlUtils::SystemIO::Path::Split(record.path);
    return elements.size() > FromLast ? elements[elements.size() - 1 - FromLast] : TvlString();
}

// Properties, with what they are for people.

constexpr PropertyStep kFileType{
    {L"document.file-type", L"the file's extension, in small letters and cut to 5"}, FileType};
constexpr PropertyStep kVersion{{L"document.version", L"version of the file format, as \"27.0\", or \"N/A\""}, Version};
constexpr PropertyStep kLayoutIfAny{{L"document.page-layout", L"name of the page layout"},
    [](const Record& record) { return NotEmpty(record.GetLayout()); }};
constexpr PropertyStep kLayout{kLayoutIfAny.property, [](const Record& record) -> Text { return record.GetLayout(); }};
constexpr PropertyStep kExportedLocation{{L"document.exported-location", L"where the export went"},
    [](const Record& record) { return NotEmpty(record.GetExportedLocation()); }};
constexpr PropertyStep kExportRange{{L"exported.export-range", L"what the export covered, as \"Object\" or \"Group\""},
    [](const Record& record) { return NotEmpty(record.GetExportedRange()); }};
constexpr PropertyStep kSaveType{{L"document.save-type", L"\"cloud\", \"template\" or \"local\""}, SaveType};
constexpr PropertyStep kSaveAs{{L"document.save-as", L"whether it was saved under a new name, \"false\" if not"},
    [](const Record& record) -> Text { return NotEmpty(record.GetSaveAs()).value_or(L"false"); }};
constexpr PropertyStep kDownloadDuration{{L"document.download-duration", L"seconds until the file was fetched"},
    [](const Record& record) -> Text { return ToStringW(Round2(Download(record))); }};
constexpr PropertyStep kOpenDuration{{L"document.open-duration", L"seconds from then on until it was open"},
    [](const Record& record) -> Text { return ToStringW(Round2(record.Total() - Download(record))); }};
constexpr PropertyStep kDuration{{L"event.duration", L"seconds that it took in all"},
    [](const Record& record) -> Text { return ToStringW(Round2(record.Total())); }};
constexpr PropertyStep kWholeDuration{{L"event.duration", L"seconds that it took in all, whole ones"},
    [](const Record& record) -> Text { return ToStringW(static_cast<int>(std::lround(Round2(record.Total())))); }};
constexpr Analytics::PropertyDescription kImportedLocation{L"content.imported-location", L"where it was imported from"};
constexpr Analytics::PropertyDescription kProvider{L"document.content-provider", L"who made the content"};
constexpr PropertyStep kCategory{{L"content.category", L"\"tovel\" for the suite's content, else \"custom\""},
    [](const Record& record) -> Text { return IsSuiteContent(record) ? L"tovel" : L"custom"; }};
constexpr PropertyStep kContentName{
    {L"content.file-name", L"name of the file, if it is the suite's content"}, ContentElement<0>};
constexpr PropertyStep kContentFolder{
    {L"content.folder", L"name of its folder, if it is the suite's content"}, ContentElement<1>};
constexpr PropertyStep kTrigger{{L"feature.trigger", L"what failed: \"AutoSave\""}, Always<L"AutoSave">};
constexpr PropertyStep kWarning{{L"warning.string", L"the message of the failure"},
    [](const Record& record) -> Text { return record.GetErrorMessage(); }};

// Groups.

constexpr GroupStep kDocument{PropertyGroup::Document, [](PropertyMap& map, const Record& record) {
                                  Analytics::AddDocumentProperties(map, record.GetStatistics().document);
                              }};
constexpr GroupStep kVariableOutline{PropertyGroup::VariableOutline, [](PropertyMap& map, const Record& record) {
                                         const auto& of = record.GetStatistics();
                                         Analytics::AddVariableOutlineProperties(
                                             map, of.variableOutlines, of.variableOutlineNodes);
                                     }};
constexpr GroupStep kPainterlyBrush{PropertyGroup::PainterlyBrush, [](PropertyMap& map, const Record& record) {
                                        const auto& of = record.GetStatistics();
                                        Analytics::AddPainterlyBrushProperties(
                                            map, of.painterlyBrushStrokes, of.painterlyBrushes);
                                    }};
constexpr GroupStep kObjects{PropertyGroup::Objects, [](PropertyMap& map, const Record& record) {
                                 const auto& of = record.GetStatistics();
                                 Analytics::AddObjectsProperties(map, of.objects, of.groups, of.connectors);
                             }};
constexpr GroupStep kBitmap{PropertyGroup::Bitmap, [](PropertyMap& map, const Record& record) {
                                const auto& of = record.GetStatistics();
                                Analytics::AddBitmapProperties(map, of.bitmaps, of.bitmapColorModels, of.bitmapEffects);
                            }};
constexpr GroupStep kText{PropertyGroup::Text, [](PropertyMap& map, const Record& record) {
                              const auto& of = record.GetStatistics();
                              Analytics::AddTextProperties(
                                  map, of.artisticTexts, of.paragraphTexts, of.characters, of.fonts);
                          }};
constexpr GroupStep kGenAi{PropertyGroup::GenAi,
    [](PropertyMap& map, const Record& record) { Analytics::AddGenAiProperties(map, record.GetStatistics().genAi); }};
constexpr GroupStep kFile{PropertyGroup::File, [](PropertyMap& map, const Record& record) {
                              const auto& of = record.GetStatistics();
                              Analytics::AddDocumentFileProperties(map, of.path, of.fileSize);
                          }};
constexpr GroupStep kExportedFile{PropertyGroup::File, [](PropertyMap& map, const Record& record) {
                                      Analytics::AddDocumentFileProperties(
                                          map, record.path, record.GetExportFileResolution());
                                  }};
constexpr GroupStep kAutoSavedFile{PropertyGroup::File, [](PropertyMap& map, const Record& record) {
                                       Analytics::AddDocumentFileProperties(
                                           map, record.GetAutoSaveFilePath(), record.GetStatistics().fileSize);
                                   }};

// Events.

constexpr EventStep kOpen[] = {kFileType, kVersion, kVariableOutline, kPainterlyBrush, kObjects, kBitmap, kText, kFile,
    kDownloadDuration, kOpenDuration, kDuration};
constexpr EventStep kImport[] = {
    kFileType, PropertyStep{kImportedLocation, Always<L"default">}, PropertyStep{kProvider, Always<L"user-content">}};
constexpr EventStep kImportAssetList[] = {
    kFileType, kCategory, kContentName, kContentFolder, PropertyStep{kImportedLocation, Always<L"assets docker">}};
constexpr EventStep kImportPhoto[] = {
    kFileType, PropertyStep{kImportedLocation, Always<L"assets panel">}, PropertyStep{kProvider, Always<L"unsplash">}};
constexpr EventStep kImportVector[] = {
    kFileType, PropertyStep{kImportedLocation, Always<L"assets panel">}, PropertyStep{kProvider, Always<L"vector">}};
constexpr EventStep kExport[] = {kFileType, kLayoutIfAny, kExportedLocation, kExportRange, kDocument, kVariableOutline,
    kPainterlyBrush, kObjects, kBitmap, kText, kExportedFile, kGenAi};
constexpr EventStep kSave[] = {kFileType, kSaveType, kVersion, kLayoutIfAny, kSaveAs, kDocument, kVariableOutline,
    kPainterlyBrush, kObjects, kBitmap, kText, kFile, kGenAi};
constexpr EventStep kAutoSaveStart[] = {
    kFileType, kLayout, kSaveAs, kDocument, kPainterlyBrush, kObjects, kBitmap, kText, kFile};
constexpr EventStep kAutoSaveEnd[] = {
    kFileType, kWholeDuration, kLayout, kSaveAs, kDocument, kPainterlyBrush, kObjects, kBitmap, kText, kAutoSavedFile};
constexpr EventStep kAutoSaveFailure[] = {kTrigger, kWarning};

// The first row that holds is the one.
constexpr EventRow kRows[] = {
    {L"Open", L"document.opened", L"a document was opened", true, false, kOpen},
    {L"Import", L"document.imported", L"a file was imported", false, false, kImport},
    {L"ImportAssetList", L"document.imported", L"a file was imported from the docker of assets", false, false,
        kImportAssetList},
    {L"ImportAssetPhotoPanel", L"document.imported", L"a photo was imported from the panel of assets", false, false,
        kImportPhoto},
    {L"ImportAssetVectorPanel", L"document.imported", L"a drawing was imported from the panel of assets", false, false,
        kImportVector},
    {L"Export", L"document.exported", L"a document was exported", false, false, kExport},
    {L"ExportForOffice", L"document.exported", L"a document was exported for an office suite", false, false, kExport},
    {L"SaveAs", L"document.saved", L"a document was saved", false, false, kSave},
    {L"AutoSave-Initiated", L"document.autosave-initiated", L"a backup of a document was begun", false, false,
        kAutoSaveStart},
    {L"AutoSave-Completed", L"error.message", L"a backup of a document failed", false, true, kAutoSaveFailure},
    {L"AutoSave-Completed", L"document.autosave-completed", L"a backup of a document was made", true, false,
        kAutoSaveEnd},
};

Analytics::PropertyMap Properties(const EventRow& row, const Record& record)
{
    PropertyMap map;
    for (const EventStep& step : row.steps) {
        if (const auto* const group = std::get_if<GroupStep>(&step))
            group->add(map, record);
        else if (const auto& single = std::get<PropertyStep>(step); auto value = single.value(record))
            map[single.property.name] = *std::move(value);
    }
    return map;
}

std::vector<Analytics::EventDescription> Describe()
{
    std::vector<Analytics::EventDescription> events;
    for (const EventRow& row : kRows) {
        Analytics::EventDescription event{row.event, row.when, {}};
        for (const EventStep& step : row.steps) {
            if (const auto* const group = std::get_if<GroupStep>(&step)) {
                const auto properties = Analytics::DescribeGroup(group->group);
                event.properties.insert(event.properties.end(), properties.begin(), properties.end());
            } else {
                event.properties.push_back(std::get<PropertyStep>(step).property);
            }
        }
        events.push_back(std::move(event));
    }
    return events;
}

const Analytics::EventDescriber describer(Describe);
}   // namespace

bool IsTimed(const TvlString& context)
{
    return std::any_of(
        std::begin(kRows), std::end(kRows), [&](const EventRow& row) { return row.isTimed && context == row.context; });
}

const EventRow* FindEvent(const TrackFileFormatUseData& data)
{
    const auto found = std::find_if(std::begin(kRows), std::end(kRows), [&](const EventRow& row) {
        return data.GetContext() == row.context && (!row.needsError || data.GetErrorMessage());
    });
    return found == std::end(kRows) ? nullptr : found;
}

void SendTrackedEvent(const TrackedRecord& record)
{
    if (const EventRow* const row = FindEvent(record))
        Analytics::GetInstance().SendEvent(row->event, Properties(*row, record), TvlString());
}
