// The application that the library runs in.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlComponent {

/// The application's main frame window.
class IMainFrame {
public:
    virtual ~IMainFrame() = default;
    virtual HWND GetHandle() const = 0;
};

/// What an application with frame windows is beside an IApplication: the same object implements both.
class IFrameApplication {
public:
    virtual ~IFrameApplication() = default;
    /// After a change of the workspace: lays the frame out anew.
    virtual void UpdateFrame(int what) = 0;
};

/// The application's interface, as it gives it at its start.
class IApplication {
public:
    virtual ~IApplication() = default;
    /// Shows a message to the user and waits until it is read.
    virtual void ShowMessage(const wchar_t* text) = 0;
    /// Window that others belong to; null when there is none.
    virtual HWND GetMainWindow() const { return nullptr; }
    /// The main frame, which other work goes on in; null when there is none.
    virtual IMainFrame* GetMainFrame() const { return nullptr; }
    /// Tells a text that names the current workspace, for reports of crashes.
    virtual void SetWorkspaceText(const wchar_t* /*text*/) { }
    /// Around changes of the workspace: commands and messages of the framework wait between the two.
    virtual void BeginWorkspaceNotification() { }
    virtual void EndWorkspaceNotification() { }
};

/// The application, or null before it gave its interface.
TVLSIBLINGS_API IApplication* GetAppInterface();
/// Gives the application's interface; null takes it back. The application keeps ownership.
TVLSIBLINGS_API void SetAppInterface(IApplication* application);

namespace MessageMgr {

/// Shows a message through the application, which must be there.
TVLSIBLINGS_API void ShowMessage(const wchar_t* text);
/// Asks in a message box with the application's name above it, and waits for the answer. `flags` are those of MessageBoxW.
/// Returns the button that was pressed: 1 for OK, 2 for Cancel.
TVLSIBLINGS_API int ShowConfirmation(unsigned flags, const wchar_t* text);

}   // namespace MessageMgr

}   // namespace TvlComponent

/// How the application looks to its user.
class TVLSIBLINGS_API AppSkinSettingData {
public:
    /// The application's display name.
    const TvlString& GetAppUIName() const { return m_name; }
    void SetAppUIName(const TvlString& name) { m_name = name; }

private:
    TvlString m_name = L"Tovel";
};

TVLSIBLINGS_API AppSkinSettingData& GetAppSkinSettingData();
