// Requests to the user's desktop.
#pragma once

#include "siblings/SiblingsApi.h"

namespace TvlUtils::ShellUtils {

/// The shell's requests. Static alone.
class TVLSIBLINGS_API TvlShellExecute {
public:
    /// Lets the desktop open a file, a folder or an address.
    /// @param owner      window that messages of the desktop belong to, or null
    /// @param verb       what to do, such as L"open"; null for what the desktop does by itself
    /// @param parameters for a program that is started, or null
    /// @param folder     folder that it is started in, or null
    /// @param show       how a window is shown: 1 (SW_SHOWNORMAL) for its usual place
    /// @return whether the desktop took the request
    static bool Execute(HWND owner, const wchar_t* verb, const wchar_t* target, const wchar_t* parameters,
        const wchar_t* folder, int show);
};

}   // namespace TvlUtils::ShellUtils
