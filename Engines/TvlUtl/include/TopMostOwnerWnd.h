// An owner window for boxes, even when the preferred one is missing or hidden.
#pragma once

#include "TvlUtlApi.h"

namespace TvlUtl {

/// Gives an owner for one box. Makes a temporary top-most window where the preferred owner can't serve, and takes it away
/// at its end. For the thread that owns the windows, whose messages it handles. Copies refer to the same window, and
/// each would take it away.
class TVLUTL_API TopMostOwnerWnd {
public:
    /// @param owner the preferred owner, may be null
    explicit TopMostOwnerWnd(HWND owner);
    /// @{
    /// Refers to the other's windows.
    TopMostOwnerWnd(const TopMostOwnerWnd&);
    TopMostOwnerWnd& operator=(const TopMostOwnerWnd&);
    /// @}
    virtual ~TopMostOwnerWnd();

    /// The preferred owner when it is visible, else a new window with a title. Called a second time without a visible
    /// owner it makes another window, and the first is no longer known.
    /// @return the preferred owner as it is, maybe stale or null, when no window could be made
    HWND GetOwnerWnd(const wchar_t* title);

private:
    HWND ownerWindow;                      // the caller's preferred owner
    HWND createdWindow = nullptr;          // the temporary window, or null
    HWND previousActiveWindow = nullptr;   // active before createdWindow took over
};

}   // namespace TvlUtl
