// Modal dialogs that are made from a template in memory.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Ports {

/// A rectangle in pixels or in dialog units.
struct DialogRect {
    int left = 0;     // of the left edge
    int top = 0;      // of the upper edge
    int width = 0;    // from left to right
    int height = 0;   // from top to bottom

    /// Place and size alike.
    friend bool operator==(const DialogRect&, const DialogRect&) = default;
};

/// Codes of messages and notifications, as Windows numbers them.
enum DialogMessage : UINT {
    kSetFont = 0x30,               // WM_SETFONT
    kGetCheck = 0xF0,              // BM_GETCHECK
    kSetCheck = 0xF1,              // BM_SETCHECK
    kComboAddString = 323,         // CB_ADDSTRING
    kComboGetSelection = 327,      // CB_GETCURSEL: -1 for none
    kComboGetText = 328,           // CB_GETLBTEXT
    kComboGetTextLength = 329,     // CB_GETLBTEXTLEN
    kComboSetSelection = 334,      // CB_SETCURSEL
    kComboFindStringExact = 344,   // CB_FINDSTRINGEXACT: -1 for none
    kStaticSetIcon = 368,          // STM_SETICON
};

/// What is given along with a message, and what it gives: the width of a pointer.
using DialogParameter = std::intptr_t;

/// A dialog while it is up. Ids are those of its controls; 0 is the dialog itself. For the thread that runs it.
class TVLSIBLINGS_API DialogWindow {
public:
    /// Whether there is a control of this id.
    virtual bool HasControl(int id) const = 0;
    /// SendMessageW. 0 when there is no such control.
    virtual DialogParameter Send(int id, UINT message, DialogParameter first, DialogParameter second) = 0;
    /// EnableMenuItem of the window's own menu.
    virtual void EnableSystemMenuItem(UINT item, UINT flags) = 0;
    /// MapDialogRect: pixels of dialog units.
    virtual DialogRect MapUnits(const DialogRect& units) const = 0;
    /// Place of a control in the dialog's client area; of the dialog itself, size of its frame and its place on the screen.
    virtual DialogRect Place(int id) const = 0;
    /// Width and height of the dialog's client area.
    virtual DialogRect ClientArea() const = 0;
    /// Moves and resizes a control within the dialog, in pixels, or the dialog on the screen.
    virtual void Move(int id, const DialogRect& place) = 0;
    /// Width and height that a control's text takes in its font, in one line.
    virtual DialogRect TextSize(int id) const = 0;
    /// Makes a drop-down list; false when that fails.
    virtual bool CreateComboBox(int id, DWORD style, const DialogRect& place) = 0;
    /// DestroyWindow of a control.
    virtual void DestroyControl(int id) = 0;
    /// SetFocus: the control that keys go to when the dialog comes up.
    virtual void Focus(int id) = 0;
    /// Dots per inch of the window; 0 when it is gone.
    virtual int Dpi() const = 0;

protected:
    ~DialogWindow() = default;
};

/// What a dialog does of its own.
class DialogProcedure {
public:
    /// The dialog's window is made and not shown yet.
    virtual void OnInitDialog(DialogWindow& window) = 0;
    /// The button IDOK was pressed. The dialog ends with this.
    virtual void OnOK(DialogWindow& window) = 0;
    /// The dialog ends, however that came; its window is good for this call still. Follows every OnInitDialog.
    virtual void OnDestroy(DialogWindow& window) = 0;

protected:
    ~DialogProcedure() = default;
};

/// Runs dialogs, and measures what goes into them.
class TVLSIBLINGS_API Dialogs {
public:
    /// The system's, or the one that stands in for it.
    static Dialogs& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Dialogs*);

    virtual ~Dialogs() = default;
    /// DialogBoxIndirectParamW: runs a dialog until it is ended by its button IDOK, and returns whether it was. False, too,
    /// when it can't be shown. On linux the terminal that the program was started from asks, if there is one: static texts
    /// are printed, a list is answered by a number, a check box by a letter, and the end of the input ends the dialog.
    /// @param dialogTemplate bytes of a DLGTEMPLATE with its controls, which are 16-bit little-endian words
    virtual bool RunModal(const std::vector<BYTE>& dialogTemplate, HWND owner, DialogProcedure& procedure) = 0;
    /// SHGetStockIconInfo, and LoadImageW of the resource that it tells, in this size in pixels. Null when there is none;
    /// always on linux.
    virtual void* LoadStockIcon(int stockIcon, int width, int height) = 0;
    /// DestroyIcon.
    virtual void DestroyIcon(void* icon) = 0;
    /// CreateFontIndirectW at a height in tenths of a point; null when that fails, and always on linux.
    virtual void* CreatePointFont(int tenthsOfPoint, const std::wstring& face) = 0;
    /// DeleteObject.
    virtual void DeleteFont(void* font) = 0;
};

}   // namespace Ports
