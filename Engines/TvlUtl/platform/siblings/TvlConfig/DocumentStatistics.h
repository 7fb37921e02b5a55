// What is told of a document, apart from the document.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <vector>

namespace ProductAnalytics {

/// What AddDocumentProperties writes.
struct DocumentCounts {
    /// @{
    /// What the document answers to the DocumentStatistic of this name; 0 or empty when it does not know.
    int pages = 0;
    int layers = 0;
    TvlString colorMode;
    /// @}
};

/// What AddGenAiProperties writes.
struct GenAiProperties {
    int images = 0;                    // that were generated
    std::vector<TvlString> features;   // that generated them, each once
};

/// The values of all groups of properties; see DocumentStatistic for them.
struct DocumentStatistics {
    /// @{
    /// What the document answers to the DocumentStatistic of this name; 0 or empty when it does not know.
    int objects = 0;
    int groups = 0;
    int connectors = 0;
    int bitmaps = 0;
    std::vector<TvlString> bitmapColorModels;
    int bitmapEffects = 0;
    int artisticTexts = 0;
    int paragraphTexts = 0;
    int characters = 0;
    std::vector<TvlString> fonts;
    int variableOutlines = 0;
    int variableOutlineNodes = 0;
    int painterlyBrushStrokes = 0;
    std::vector<TvlString> painterlyBrushes;
    /// @}
    DocumentCounts document;   // what AddDocumentProperties writes
    GenAiProperties genAi;     // what AddGenAiProperties writes
    TvlString path;            // DocumentStatistic::FilePath; never sent as it is
    double fileSize = 0.0;     // bytes
};

}   // namespace ProductAnalytics
