// The application that the library runs in.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

class ITovelCmn_Doc;

/// What an application with frame windows is beside an ITovelCmn_App: the same object implements both.
class IFrameApplication {
public:
    virtual ~IFrameApplication() = default;
    /// After a change of the workspace, with 0: lays the frame out anew.
    virtual void UpdateFrame(int what) = 0;
};

/// The application's interface, as it gives it at its start. An operation that an application leaves out does nothing.
class ITovelCmn_App {
public:
    virtual ~ITovelCmn_App() = default;
    /// Shows a message to the user and waits until it is read.
    virtual void ShowMessage(const wchar_t* text) = 0;
    /// Shows an error to the user and waits until it is read.
    virtual void ShowError(const wchar_t* text) { ShowMessage(text); }
    /// Shows a warning, as ShowMessage does unless the application tells them apart.
    virtual void ShowWarning(const wchar_t* text) { ShowMessage(text); }
    /// The main frame window, which others belong to; null when there is none.
    virtual HWND GetMainWindow() const { return nullptr; }
    /// Takes the label of a feature that was used, which may be any text; the result is the application's. Any thread may
    /// call, also while files are let go of.
    virtual int TrackFeature([[maybe_unused]] const wchar_t* label) { return 0; }
    /// The document that the user works on; null when none is open. The application keeps ownership.
    virtual ITovelCmn_Doc* GetActiveDocument() { return nullptr; }
    /// Learns the workspace that is about to be the current one: "Workspace_" and its name.
    virtual void NameWorkspace([[maybe_unused]] const wchar_t* label) { }
    /// @{
    /// Around what the application is told of a change of its workspace: commands of the framework wait in between.
    virtual void BeginWorkspaceChange() { }
    virtual void EndWorkspaceChange() { }
    /// @}
};

/// What the libraries know of the application that they run in.
namespace TvlComponent {

/// The application, or null before it gave its interface.
TVLSIBLINGS_API ITovelCmn_App* GetAppInterface();
/// Gives the application's interface; null takes it back. The application keeps ownership.
TVLSIBLINGS_API void SetAppInterface(ITovelCmn_App* application);

/// Messages to the user, which wait until they are read.
namespace MessageMgr {

/// Shows a message through the application, which must be there.
TVLSIBLINGS_API void ShowMessage(const wchar_t* text);
/// Shows an error through the application; without one nobody is told.
TVLSIBLINGS_API void ShowError(const wchar_t* text);
/// Warns through the application, or in a message box of its own while there is none.
TVLSIBLINGS_API void ShowWarning(const wchar_t* text);
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
    /// Gives the application another name. For its start, before windows show it.
    void SetAppUIName(const TvlString& name) { m_name = name; }

private:
    TvlString m_name = L"Tovel";
};

/// The look of the running application: one object of the process.
TVLSIBLINGS_API AppSkinSettingData& GetAppSkinSettingData();
