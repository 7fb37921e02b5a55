#include "siblings/TvlConfig/DocumentFolders.h"

#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <initializer_list>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

TvlString MadeFolder(std::initializer_list<TvlString> names)
{
    TvlString folder = SystemIO::Path::GetDocumentsFolder();
    if (folder.IsEmpty())
        return folder;
    for (const TvlString& name : names)
        folder = SystemIO::Path::Combine(folder, name);
    if (const auto made = SystemIO::Folder::EnsureExists(folder); !made)
        TvlUtils::LogMessage(
            TvlUtils::LogLevel::Error, TvlString().Format(L"folder \"%s\" can't be made: %s", folder, made.Reason()));
    return SystemIO::Path::AddBackslash(folder);
}

constexpr const wchar_t* kTovel = L"Tovel";
constexpr const wchar_t* kSuite = L"Suite";
constexpr const wchar_t* kPresets = L"Presets";

TvlString SuiteFolder(const wchar_t* name) { return MadeFolder({kTovel, kSuite, name}); }
TvlString PresetsFolder(const wchar_t* name) { return MadeFolder({kTovel, kSuite, kPresets, name}); }
}   // namespace

TvlString GetUserDocumentsTovelDir() { return MadeFolder({kTovel}); }
TvlString GetUserDocumentsTovelSuiteDir() { return MadeFolder({kTovel, kSuite}); }
TvlString GetUserDocumentsWorkingDir() { return MadeFolder({}); }
TvlString GetUserDocumentsTovelCloudDir() { return MadeFolder({kTovel, L"Cloud"}); }
TvlString GetUserDocumentsAppArtisticMediaDir()
{
    return MadeFolder({kTovel, ApplicationInfo::Settings().GetRegistryName(), L"Artistic Media"});
}

TvlString GetUserDocumentsTovelSuiteBitmapPresetsDir() { return SuiteFolder(L"Bitmap Presets"); }
TvlString GetUserDocumentsTovelSuiteColorPalettesDir() { return SuiteFolder(L"Color Palettes"); }
TvlString GetUserDocumentsTovelSuiteExportPresetsDir() { return SuiteFolder(L"Export Presets"); }
TvlString GetUserDocumentsTovelSuiteEffectPresetsDir() { return SuiteFolder(L"Effect Presets"); }
TvlString GetUserDocumentsTovelSuiteFillsDir() { return SuiteFolder(L"Fills"); }
TvlString GetUserDocumentsTovelSuiteFontsDir() { return SuiteFolder(L"Fonts"); }
TvlString GetUserDocumentsTovelSuiteImageListsDir() { return SuiteFolder(L"Image Lists"); }
TvlString GetUserDocumentsTovelSuiteFramesDir() { return SuiteFolder(L"Photo Frames"); }
TvlString GetUserDocumentsTovelSuiteSymbolsDir() { return SuiteFolder(L"Symbols"); }
TvlString GetUserDocumentsTovelSuiteTemplatesDir() { return SuiteFolder(L"Templates"); }
TvlString GetUserDocumentsTovelSuiteTraysDir() { return SuiteFolder(L"Trays"); }
TvlString GetUserDocumentsTovelSuiteVectorRasterDir() { return SuiteFolder(L"Vector Raster"); }
TvlString GetUserDocumentsTovelSuiteFindAndReplaceDir() { return SuiteFolder(L"Find and Replace"); }
TvlString GetUserDocumentsTovelSuitePrintStylesDir() { return SuiteFolder(L"Print Styles"); }
TvlString GetUserDocumentsTovelSuiteWritingToolsDir() { return SuiteFolder(L"Writing Tools"); }

TvlString GetUserDocumentsPresetsBlendDir() { return PresetsFolder(L"Blend"); }
TvlString GetUserDocumentsPresetsContourDir() { return PresetsFolder(L"Contour"); }
TvlString GetUserDocumentsPresetsDistortionDir() { return PresetsFolder(L"Distortion"); }
TvlString GetUserDocumentsPresetsShadowDir() { return PresetsFolder(L"Shadow"); }
TvlString GetUserDocumentsPresetsEnvelopeDir() { return PresetsFolder(L"Envelope"); }
TvlString GetUserDocumentsPresetsVectorExtrudeDir() { return PresetsFolder(L"Vector Extrude"); }
