// Switches of the drawing of text.
#pragma once

#include "siblings/SiblingsApi.h"

/// Switches of the drawing library.
namespace SkiaUtility {

/// What texts are drawn for.
enum class TextRendering {
    Standard,   ///< the fonts that texts name
    FarEast,    ///< fonts are looked for that have the characters of Japanese, Korean and traditional Chinese
    Chinese,    ///< the same for simplified Chinese, whose characters look different
};

// For the application's start, before the first text is drawn. Any thread may call.

/// Texts are drawn as TextRendering::Chinese from now on.
TVLSIBLINGS_API void SetChineseTextRendering();
/// Texts are drawn as TextRendering::FarEast from now on.
TVLSIBLINGS_API void SetFarEastTextRendering();
/// What was set last; Standard before.
TVLSIBLINGS_API TextRendering GetTextRendering();
/// Back to Standard.
TVLSIBLINGS_API void ResetTextRendering();

}   // namespace SkiaUtility
