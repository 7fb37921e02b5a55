#include "DialogTemplate.h"

#include "siblings/TvlPlatform/TextEncoding.h"

namespace {
constexpr std::size_t kCountAt = 8;   // of DLGTEMPLATE::cdit
}

DialogTemplate::DialogTemplate(const TvlString& title, DWORD style, const Ports::DialogRect& size)
{
    AppendDouble(style);
    AppendDouble(0);   // extended style
    AppendWord(m_count);
    AppendRect(size);
    AppendWord(0);   // no menu
    AppendWord(0);   // the class of dialogs
    AppendText(title);
}

void DialogTemplate::Add(ControlClass kind, WORD id, const TvlString& text, DWORD style, const Ports::DialogRect& place)
{
    constexpr std::size_t kAlignment = 4;
    constexpr unsigned kOrdinal = 0xFFFF;   // a class by number follows
    m_bytes.resize((m_bytes.size() + kAlignment - 1) / kAlignment * kAlignment);
    AppendDouble(style);
    AppendDouble(0);   // extended style
    AppendRect(place);
    AppendWord(id);
    AppendWord(kOrdinal);
    AppendWord(static_cast<unsigned>(kind));
    AppendText(text);
    AppendWord(0);   // no data for the control's making
    PutWord(kCountAt, ++m_count);
}

void DialogTemplate::PutWord(std::size_t at, unsigned value)
{
    m_bytes[at] = static_cast<BYTE>(value & 0xFF);
    m_bytes[at + 1] = static_cast<BYTE>(value >> 8 & 0xFF);
}

void DialogTemplate::AppendWord(unsigned value)
{
    m_bytes.resize(m_bytes.size() + 2);
    PutWord(m_bytes.size() - 2, value);
}

void DialogTemplate::AppendDouble(DWORD value)
{
    AppendWord(value & 0xFFFF);
    AppendWord(value >> 16);
}

void DialogTemplate::AppendRect(const Ports::DialogRect& rect)
{
    for (const int side : {rect.left, rect.top, rect.width, rect.height})
        AppendWord(static_cast<unsigned>(side));
}

void DialogTemplate::AppendText(const TvlString& text)
{
    const std::vector<std::uint8_t> units = TvlPlatform::ToUtf16Le(text.Std());
    m_bytes.insert(m_bytes.end(), units.begin(), units.end());
    AppendWord(0);
}
