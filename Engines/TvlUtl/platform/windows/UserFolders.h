// Folders that the system keeps for the user.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

/// Where the system keeps the user's things. Folders need not exist.
class TVLSIBLINGS_API UserFolders {
public:
    /// The system's, or the one that stands in for it.
    static UserFolders& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(UserFolders*);

    virtual ~UserFolders() = default;
    /// FOLDERID_RoamingAppData: where programs keep the user's settings; empty when the system does not tell. On linux
    /// XDG_CONFIG_HOME, or ".config" in the home folder.
    virtual std::wstring ApplicationData() const = 0;
    /// FOLDERID_Documents: where the user keeps documents; empty when the system does not tell. On linux
    /// XDG_DOCUMENTS_DIR of "user-dirs.dirs", or "Documents" in the home folder.
    virtual std::wstring Documents() const = 0;
};

}   // namespace Ports
