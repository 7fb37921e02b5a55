// Descriptions of exported workspaces from any bytes.
#include "ExportSettings.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isQuiet = (TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {}), true);
    WXmlDoc document(false);
    if (!isQuiet || !document.LoadBytes({reinterpret_cast<const char*>(data), size}))
        return 0;
    WorkspaceFileExportSettings settings;
    ReadExportDocument(document, settings);
    // What was read is written and read again as it is, unless a name breaks the document.
    WXmlDoc written(false);
    if (!WriteExportSettings(settings, written))
        return 0;
    WorkspaceFileExportSettings again;
    ReadExportDocument(written, again);
    if (again.Toolbars.size() != settings.Toolbars.size() || again.Touchbars.size() != settings.Touchbars.size()
        || again.ExportDockers != settings.ExportDockers)
        std::abort();
    return 0;
}
