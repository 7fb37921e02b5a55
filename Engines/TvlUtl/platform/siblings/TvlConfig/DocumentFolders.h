// Where the user's content lies as long as the user has chosen no other place.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

// Each gives a folder with a separator at its end and makes the folder when it is missing. Empty when the system tells of
// no documents folder. They lie in SystemIO::Path::GetDocumentsFolder.

/// "Tovel": all that the suite keeps among the documents.
TVLSIBLINGS_API TvlString GetUserDocumentsTovelDir();
/// "Tovel/Suite": what all applications share.
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteDir();
/// The documents folder itself, where a new document is saved.
TVLSIBLINGS_API TvlString GetUserDocumentsWorkingDir();
/// "Tovel/Cloud": copies of the cloud's documents.
TVLSIBLINGS_API TvlString GetUserDocumentsTovelCloudDir();
/// "Artistic Media" in the running application's own folder, "Tovel/<application>".
TVLSIBLINGS_API TvlString GetUserDocumentsAppArtisticMediaDir();

/// @{
/// A folder of "Tovel/Suite" that is named for what it holds.
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteBitmapPresetsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteColorPalettesDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteExportPresetsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteEffectPresetsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteFillsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteFontsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteImageListsDir();
/// @}
/// "Photo Frames".
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteFramesDir();
/// @{
/// A folder of "Tovel/Suite" that is named for what it holds.
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteSymbolsDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteTemplatesDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteTraysDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteVectorRasterDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteFindAndReplaceDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuitePrintStylesDir();
TVLSIBLINGS_API TvlString GetUserDocumentsTovelSuiteWritingToolsDir();
/// @}

/// @{
/// A folder of "Tovel/Suite/Presets" that is named for what it holds.
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsBlendDir();
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsContourDir();
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsDistortionDir();
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsShadowDir();
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsEnvelopeDir();
TVLSIBLINGS_API TvlString GetUserDocumentsPresetsVectorExtrudeDir();
/// @}
