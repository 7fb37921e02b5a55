// Bytes of a dialog template.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "windows/Dialogs.h"

#include <vector>

/// Classes of controls, as templates number them.
enum class ControlClass : WORD { Button = 0x80, Static = 0x82 };

/// Builds a DLGTEMPLATE: 16-bit little-endian words, each control aligned to four bytes. It names no font: texts are laid
/// out in the system's font, whose dialog units do not grow with the screen's resolution.
class DialogTemplate {
public:
    /// @param size in dialog units
    DialogTemplate(const TvlString& title, DWORD style, const Ports::DialogRect& size);
    /// @param place in dialog units
    void Add(ControlClass kind, WORD id, const TvlString& text, DWORD style, const Ports::DialogRect& place);
    const std::vector<BYTE>& Bytes() const { return m_bytes; }

private:
    void PutWord(std::size_t at, unsigned value);
    void AppendWord(unsigned value);
    void AppendDouble(DWORD value);
    void AppendRect(const Ports::DialogRect& rect);
    void AppendText(const TvlString& text);

    std::vector<BYTE> m_bytes;
    WORD m_count = 0;   // of controls
};
