#include "siblings/TvlConfig/PropertyGroups.h"

#include "siblings/TvlComponent/Document.h"
#include "siblings/TvlUtils/Any.h"
#include "siblings/TvlUtils/String.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <string_view>

namespace ProductAnalytics {

using TvlUtils::String::ToStringW;

namespace {
constexpr PropertyDescription kDocument[] = {
    {L"document.pages", L"how many pages the document has"},
    {L"document.layers", L"how many layers the document has"},
    {L"document.color-mode", L"color mode of the document"},
};
constexpr PropertyDescription kFile[] = {
    {L"document.file-place", L"\"cloud\", \"local\" or, for a document that was never saved, \"none\""},
    {L"document.file-extension", L"extension of the file in small letters, without its point"},
    {L"document.file-measure", L"bytes of the file; of an export, the resolution"},
};
constexpr PropertyDescription kVariableOutline[] = {
    {L"variable-outline.count", L"how many outlines of variable width there are"},
    {L"variable-outline.nodes", L"how many nodes they have"},
};
constexpr PropertyDescription kPainterlyBrush[] = {
    {L"painterly-brush.strokes", L"how many strokes of painterly brushes there are"},
    {L"painterly-brush.brushes", L"names of the brushes"},
};
constexpr PropertyDescription kObjects[] = {
    {L"objects.count", L"how many objects there are"},
    {L"objects.groups", L"how many groups there are"},
    {L"objects.connectors", L"how many connectors there are"},
};
constexpr PropertyDescription kBitmap[] = {
    {L"bitmaps.count", L"how many bitmaps there are"},
    {L"bitmaps.color-models", L"their color models"},
    {L"bitmaps.effects", L"how many effects are applied to them"},
};
constexpr PropertyDescription kText[] = {
    {L"text.artistic", L"how many artistic texts there are"},
    {L"text.paragraphs", L"how many paragraph texts there are"},
    {L"text.characters", L"how many characters they have"},
    {L"text.fonts", L"families of the fonts in use"},
};
constexpr PropertyDescription kGenAi[] = {
    {L"gen-ai.images", L"how many bitmaps were generated"},
    {L"gen-ai.features", L"features that generated them"},
};

constexpr std::span<const PropertyDescription> kGroups[] = {   // in the order of PropertyGroup
    kDocument, kFile, kVariableOutline, kPainterlyBrush, kObjects, kBitmap, kText, kGenAi};

const TvlString& ValueText(const TvlString& text) { return text; }
TvlString ValueText(int value) { return ToStringW(value); }
TvlString ValueText(double value) { return ToStringW(value); }
TvlString ValueText(const TextList& list)
{
    TvlString text;
    for (const TvlString& element : list)
        text += text.IsEmpty() ? element : L"," + element;
    return text;
}

/// Sets the properties of a table to values, which come in the table's order.
template <std::size_t N, class... Values>
void Set(PropertyMap& map, const PropertyDescription (&table)[N], const Values&... values)
{
    static_assert(sizeof...(values) == N);
    const PropertyDescription* row = table;
    ((map[(row++)->name] = ValueText(values)), ...);
}

const wchar_t* Place(const TvlString& path)
{
    if (path.IsEmpty())
        return L"none";
    return path.Left(6).CompareNoCase(L"CLOUD:") == 0 ? L"cloud" : L"local";
}
}   // namespace

std::span<const PropertyDescription> DescribeGroup(PropertyGroup group)
{
    const auto index = static_cast<std::size_t>(group);
    return index < std::size(kGroups) ? kGroups[index] : std::span<const PropertyDescription>();
}

void AddDocumentProperties(PropertyMap& map, const DocumentCounts& properties)
{
    Set(map, kDocument, properties.pages, properties.layers, properties.colorMode);
}

void AddDocumentProperties(PropertyMap& map, const ITovelCmn_Doc& document)
{
    AddDocumentProperties(map,
        DocumentCounts{document.GetStatistic(DocumentStatistic::PageCount).GetOr(0),
            document.GetStatistic(DocumentStatistic::LayerCount).GetOr(0),
            document.GetStatistic(DocumentStatistic::ColorMode).GetOr(TvlString())});
}

void AddDocumentFileProperties(PropertyMap& map, const TvlString& path, double measure)
{
    const TvlString extension = TvlUtils::SystemIO::Path::GetExtension(path).MakeLower().Mid(1);
    Set(map, kFile, TvlString(Place(path)), extension, measure);
}

void AddVariableOutlineProperties(PropertyMap& map, int outlines, int nodes)
{
    Set(map, kVariableOutline, outlines, nodes);
}

void AddPainterlyBrushProperties(PropertyMap& map, int strokes, const TextList& brushes)
{
    Set(map, kPainterlyBrush, strokes, brushes);
}

void AddObjectsProperties(PropertyMap& map, int objects, int groups, int connectors)
{
    Set(map, kObjects, objects, groups, connectors);
}

void AddBitmapProperties(PropertyMap& map, int bitmaps, const TextList& colorModels, int effects)
{
    Set(map, kBitmap, bitmaps, colorModels, effects);
}

void AddTextProperties(PropertyMap& map, int artistic, int paragraphs, int characters, const TextList& fonts)
{
    Set(map, kText, artistic, paragraphs, characters, fonts);
}

void AddGenAiProperties(PropertyMap& map, const GenAiProperties& properties)
{
    Set(map, kGenAi, properties.images, properties.features);
}

}   // namespace ProductAnalytics
