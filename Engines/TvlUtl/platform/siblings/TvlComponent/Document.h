// A document of the application, as far as other modules ask it.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlUtils/Any.h"
#include "windows/Types.h"

/// What a document can tell of itself in numbers and texts. The comment gives the type of the value.
enum class DocumentStatistic : int {
    ObjectCount,                 ///< int
    GroupCount,                  ///< int
    ConnectorCount,              ///< int
    BitmapCount,                 ///< int
    BitmapColorModels,           ///< std::vector<TvlString>, each model once
    BitmapEffectCount,           ///< int
    ArtisticTextCount,           ///< int
    ParagraphTextCount,          ///< int
    CharacterCount,              ///< int
    Fonts,                       ///< std::vector<TvlString>, each family once
    VariableOutlineCount,        ///< int
    VariableOutlineNodeCount,    ///< int
    PainterlyBrushStrokeCount,   ///< int
    PainterlyBrushes,            ///< std::vector<TvlString>, each brush once
    PageCount,                   ///< int
    LayerCount,                  ///< int
    ColorMode,                   ///< TvlString
    GeneratedImageCount,         ///< int
    GenerationFeatures,          ///< std::vector<TvlString>, each feature once
    FilePath,                    ///< TvlString, empty before the first save
    FileSize,                    ///< double, in bytes
};

/// A document that is open in the application, which owns it. It is asked on the thread that works on it.
class ITovelCmn_Doc {
public:
    virtual ~ITovelCmn_Doc() = default;
    /// One statistic; empty when the document does not know it.
    virtual TvlUtils::Any GetStatistic(DocumentStatistic statistic) const = 0;
    /// Whether the document carries the metadata property of this key.
    virtual bool HasMetadata(const GUID& key) const = 0;
    /// The value of a metadata property; empty when the document does not carry it.
    virtual TvlUtils::Any GetMetadata(const GUID& key) const = 0;
};
