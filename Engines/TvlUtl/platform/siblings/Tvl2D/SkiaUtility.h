// Switches of the drawing of text.
#pragma once

#include "siblings/SiblingsApi.h"

namespace SkiaUtility {

/// What texts are drawn for.
enum class TextRendering {
    Standard,
    FarEast,   ///< fonts are looked for that have the characters of Japanese, Korean and traditional Chinese
    Chinese,   ///< the same for simplified Chinese, whose characters look different
};

// For the application's start, before the first text is drawn. Any thread may call.

TVLSIBLINGS_API void SetChineseTextRendering();
TVLSIBLINGS_API void SetFarEastTextRendering();
TVLSIBLINGS_API TextRendering GetTextRendering();
/// Back to Standard.
TVLSIBLINGS_API void ResetTextRendering();

}   // namespace SkiaUtility
