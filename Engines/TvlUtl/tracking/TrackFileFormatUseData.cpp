#include "TrackFileFormatUse.h"

#include "EventTable.h"
#include "siblings/TvlComponent/Document.h"

namespace {
/// A statistic; 0 or empty when the document does not know it.
template <class T>
void Read(const ITovelCmn_Doc& document, DocumentStatistic statistic, T& value)
{
    value = document.GetStatistic(statistic).GetOr(T());
}

ProductAnalytics::DocumentStatistics ReadStatistics(const ITovelCmn_Doc& document)
{
    using enum DocumentStatistic;
    ProductAnalytics::DocumentStatistics statistics;
    Read(document, ObjectCount, statistics.objects);
    Read(document, GroupCount, statistics.groups);
    Read(document, ConnectorCount, statistics.connectors);
    Read(document, BitmapCount, statistics.bitmaps);
    Read(document, BitmapColorModels, statistics.bitmapColorModels);
    Read(document, BitmapEffectCount, statistics.bitmapEffects);
    Read(document, ArtisticTextCount, statistics.artisticTexts);
    Read(document, ParagraphTextCount, statistics.paragraphTexts);
    Read(document, CharacterCount, statistics.characters);
    Read(document, Fonts, statistics.fonts);
    Read(document, VariableOutlineCount, statistics.variableOutlines);
    Read(document, VariableOutlineNodeCount, statistics.variableOutlineNodes);
    Read(document, PainterlyBrushStrokeCount, statistics.painterlyBrushStrokes);
    Read(document, PainterlyBrushes, statistics.painterlyBrushes);
    Read(document, PageCount, statistics.document.pages);
    Read(document, LayerCount, statistics.document.layers);
    Read(document, ColorMode, statistics.document.colorMode);
    Read(document, GeneratedImageCount, statistics.genAi.images);
    Read(document, GenerationFeatures, statistics.genAi.features);
    Read(document, FilePath, statistics.path);
    Read(document, FileSize, statistics.fileSize);
    return statistics;
}
}   // namespace

TrackFileFormatUseData::TrackFileFormatUseData(bool global, TvlStringT<wchar_t> context, TvlStringT<wchar_t> type)
    : m_global(global), m_context(std::move(context)), m_type(std::move(type)), m_durationRunning(IsTimed(m_context))
{
    if (m_durationRunning)
        m_durationStart = TvlUtils::TimeTicks::Now();
}

TrackFileFormatUseData& TrackFileFormatUseData::SetType(TvlStringT<wchar_t> type)
{
    m_type = std::move(type);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetFilter(TvlStringT<wchar_t> filter)
{
    m_filter = std::move(filter);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetVersion(TvlStringT<wchar_t> version)
{
    m_version = std::move(version);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetLayout(TvlStringT<wchar_t> layout)
{
    m_layout = std::move(layout);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetSaveAs(TvlStringT<wchar_t> saveAs)
{
    m_saveAs = std::move(saveAs);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetExportedLocation(TvlStringT<wchar_t> location)
{
    m_exportedLocation = std::move(location);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetExportedRange(TvlStringT<wchar_t> range)
{
    // What was told to be a group is not narrowed by whoever sees but one object of it.
    if (range != L"Object" || m_exportedRange != L"Group")
        m_exportedRange = std::move(range);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetAutoSaveFilePath(TvlStringT<wchar_t> path)
{
    m_autoSaveFilePath = std::move(path);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetExportFileResolution(int resolution)
{
    m_exportFileResolution = resolution;
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetErrorMessage(std::optional<TvlStringT<wchar_t>> message)
{
    m_errorMessage = std::move(message);
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetCloud(bool cloud)
{
    m_cloud = cloud;
    return *this;
}

TrackFileFormatUseData& TrackFileFormatUseData::SetDocInfo(ITovelCmn_Doc& document)
{
    m_statistics = ReadStatistics(document);
    return *this;
}
