// Groups of properties that describe a document to the analytics service.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlConfig/DocumentStatistics.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlConfig/ProductAnalytics.h"

#include <span>
#include <vector>

namespace ProductAnalytics {

/// What a group tells of.
enum class PropertyGroup : int {
    Document,          ///< AddDocumentProperties
    File,              ///< AddDocumentFileProperties
    VariableOutline,   ///< AddVariableOutlineProperties
    PainterlyBrush,    ///< AddPainterlyBrushProperties
    Objects,           ///< AddObjectsProperties
    Bitmap,            ///< AddBitmapProperties
    Text,              ///< AddTextProperties
    GenAi,             ///< AddGenAiProperties
};

/// The properties that a group writes, in the order of the arguments of its function.
TVLSIBLINGS_API std::span<const PropertyDescription> DescribeGroup(PropertyGroup group);

/// Texts that go out as one, with "," between them.
using TextList = std::vector<TvlString>;

// Each sets its properties, in place of those that the map has. Lists go out as one text with "," between the elements.

/// Pages, layers and the colour mode.
TVLSIBLINGS_API void AddDocumentProperties(PropertyMap& map, const DocumentCounts& properties);
/// Asks the document for the same.
TVLSIBLINGS_API void AddDocumentProperties(PropertyMap& map, const ITovelCmn_Doc& document);
/// Neither the path nor the name goes out, but where the file lies and how its name ends.
/// @param measure bytes of the file; the resolution for an exported bitmap
TVLSIBLINGS_API void AddDocumentFileProperties(PropertyMap& map, const TvlString& path, double measure);
/// How many outlines vary in width, and their nodes.
TVLSIBLINGS_API void AddVariableOutlineProperties(PropertyMap& map, int outlines, int nodes);
/// How many strokes painterly brushes made, and which brushes.
TVLSIBLINGS_API void AddPainterlyBrushProperties(PropertyMap& map, int strokes, const TextList& brushes);
/// How many objects, groups of them and connectors there are.
TVLSIBLINGS_API void AddObjectsProperties(PropertyMap& map, int objects, int groups, int connectors);
/// How many images there are, in which colour models, and the effects on them.
TVLSIBLINGS_API void AddBitmapProperties(PropertyMap& map, int bitmaps, const TextList& colorModels, int effects);
/// How many texts of both kinds there are, their characters in all, and the fonts.
TVLSIBLINGS_API void AddTextProperties(
    PropertyMap& map, int artistic, int paragraphs, int characters, const TextList& fonts);
/// How many images were generated, and by which features.
TVLSIBLINGS_API void AddGenAiProperties(PropertyMap& map, const GenAiProperties& properties);

}   // namespace ProductAnalytics
