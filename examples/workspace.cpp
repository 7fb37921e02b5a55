// Makes a default workspace and one of the user's own from it, stores a configuration and reads it back.
#include "WorkspaceFile.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <iostream>

int main()
{
    namespace SystemIO = TvlUtils::SystemIO;
    const TvlString folder = SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"Workspaces");
    if (!SystemIO::Folder::EnsureExists(folder))
        return 1;
    const WorkspaceFile standard = WorkspaceFile::CreateDefault(SystemIO::Path::Combine(folder, L"Standard.tvws"));
    if (!standard)
        return 1;   // the log tells why

    const TvlString path = SystemIO::Path::Combine(folder, L"Mine.tvws");
    const WorkspaceFile mine = WorkspaceFile::CreateFrom(path, standard);
    std::cout << TvlPlatform::ToUtf8(mine.GetName()) << ", order " << mine.GetUIOrder() << ", beside "
              << standard.GetUIOrder() << " of the default one\n";
    std::cout << "identity: " << (mine.GetInstanceID() == standard.GetInstanceID() ? "the same" : "its own")
              << ", derived from " << mine.GetDerivedFrom().size() << '\n';

    WXmlDoc configuration(false);
    configuration.LoadBytes("<uiConfig/>");
    std::cout << "saved: " << mine.SaveUIConfigFromXML(configuration) << '\n';
    WXmlDoc stored(false);
    std::cout << "read back: " << mine.LoadUIConfigIntoXML(stored) << ", for fingers: " << mine.IsTouchWorkspace()
              << '\n';

    std::cout << "at the same place again: " << (WorkspaceFile::CreateFrom(path, standard) ? "made" : "refused")
              << '\n';
}
