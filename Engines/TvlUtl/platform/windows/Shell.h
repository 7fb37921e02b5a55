// The user's desktop: opening addresses, files and folders.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

/// Requests to the desktop that the user works on.
class TVLSIBLINGS_API Shell {
public:
    /// The system's, or the one that stands in for it.
    static Shell& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Shell*);

    virtual ~Shell() = default;
    /// ShellExecuteW: whether the shell took the request; `verb`, `parameters` and `folder` may be null. On linux
    /// xdg-open is started with `target` as its one argument, the other parameters have no effect, and a target that
    /// starts with "-" is refused, since it would be taken for an option.
    virtual bool Execute(HWND owner, const wchar_t* verb, const wchar_t* target, const wchar_t* parameters,
        const wchar_t* folder, int show) = 0;
    /// SHOpenFolderAndSelectItems: shows the folder of a file with the file selected. On linux the desktop's file
    /// manager is asked through its bus.
    virtual bool SelectInFolder(const std::wstring& path) = 0;
    /// GetWindowsDirectoryW; empty on linux, which has no such folder.
    virtual std::wstring WindowsFolder() const = 0;
};

}   // namespace Ports
