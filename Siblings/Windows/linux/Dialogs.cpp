// Dialogs without windows: the terminal asks what a dialog would.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/OneLine.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <optional>

namespace Ports {

namespace {
/// What a template says of a control.
struct Control {
    enum class Kind : WORD { Button = 0x80, Edit = 0x81, Static = 0x82, List = 0x83, Scroll = 0x84, Combo = 0x85 };

    Kind kind = Kind::Static;
    DWORD style = 0;
    DialogRect place;
    std::wstring text;
    bool checked = false;
    std::vector<std::wstring> choices;   // of a combo box
    int selected = -1;
};

constexpr int kOk = 1;                          // IDOK
constexpr DWORD kButtonKind = 0xF;              // BS_TYPEMASK
constexpr DWORD kCheckBox = 3;                  // BS_AUTOCHECKBOX
constexpr int kUnitsWide = 2;                   // pixels of four horizontal units would be 8: half a character's
constexpr DialogRect kCharacter{0, 0, 8, 16};   // pixels of a character, for those who lay controls out

/// Reads the words of a template; behind its end they are 0.
class TemplateReader {
public:
    explicit TemplateReader(const std::vector<BYTE>& bytes) : m_bytes(bytes) { }

    WORD Word()
    {
        const WORD word =
            m_at + 1 < m_bytes.size() ? static_cast<WORD>(m_bytes[m_at] | m_bytes[m_at + 1] << 8) : WORD{0};
        m_at += 2;
        return word;
    }
    DWORD Double()
    {
        const DWORD low = Word();
        return low | static_cast<DWORD>(Word()) << 16;
    }
    DialogRect Rect()
    {
        DialogRect rect;
        for (int* const side : {&rect.left, &rect.top, &rect.width, &rect.height})
            *side = static_cast<std::int16_t>(Word());
        return rect;
    }
    /// A text up to its zero, or an ordinal in the place of one.
    std::wstring Text(WORD& ordinal)
    {
        ordinal = 0;
        std::vector<BYTE> units;
        for (WORD word = Word(); word != 0; word = Word()) {
            if (word == 0xFFFF && units.empty()) {
                ordinal = Word();
                return {};
            }
            units.push_back(static_cast<BYTE>(word & 0xFF));
            units.push_back(static_cast<BYTE>(word >> 8));
        }
        return TvlPlatform::FromUtf16Le(units.data(), units.size());
    }
    void Align() { m_at = (m_at + 3) & ~std::size_t{3}; }
    void Skip(std::size_t bytes) { m_at += bytes; }
    bool AtEnd() const { return m_at >= m_bytes.size(); }

private:
    const std::vector<BYTE>& m_bytes;
    std::size_t m_at = 0;
};

class TerminalDialog final : public DialogWindow {
public:
    explicit TerminalDialog(const std::vector<BYTE>& dialogTemplate)
    {
        TemplateReader reader(dialogTemplate);
        m_controls[0].style = reader.Double();
        reader.Double();   // extended style
        const WORD count = reader.Word();
        m_controls[0].place = MapUnits(reader.Rect());
        WORD ordinal = 0;
        reader.Text(ordinal);   // menu
        reader.Text(ordinal);   // class
        m_controls[0].text = reader.Text(ordinal);
        constexpr DWORD kHasFont = 0x40;   // DS_SETFONT
        if (m_controls[0].style & kHasFont) {
            reader.Word();
            reader.Text(ordinal);
        }
        for (WORD i = 0; i < count && !reader.AtEnd(); ++i)
            ReadControl(reader);
    }

    bool HasControl(int id) const override { return id != 0 && m_controls.contains(id); }
    void EnableSystemMenuItem(UINT, UINT) override { }
    DialogRect MapUnits(const DialogRect& units) const override
    {
        return {units.left * kUnitsWide, units.top * kUnitsWide, units.width * kUnitsWide, units.height * kUnitsWide};
    }
    DialogRect Place(int id) const override
    {
        const auto found = m_controls.find(id);
        return found == m_controls.end() ? DialogRect() : found->second.place;
    }
    DialogRect ClientArea() const override { return {0, 0, Place(0).width, Place(0).height}; }
    void Move(int id, const DialogRect& place) override
    {
        if (const auto found = m_controls.find(id); found != m_controls.end())
            found->second.place = place;
    }
    DialogRect TextSize(int id) const override
    {
        const auto found = m_controls.find(id);
        const int length = found == m_controls.end() ? 0 : static_cast<int>(found->second.text.size());
        return {0, 0, length * kCharacter.width, kCharacter.height};
    }
    bool CreateComboBox(int id, DWORD style, const DialogRect& place) override
    {
        return m_controls.emplace(id, Control{Control::Kind::Combo, style, place, {}, false, {}, -1}).second;
    }
    void DestroyControl(int id) override { m_controls.erase(id); }
    void Focus(int) override { }
    int Dpi() const override { return 96; }   // a terminal has no pixels: the size of templates

    DialogParameter Send(int id, UINT message, DialogParameter first, DialogParameter second) override;
    /// Asks what the controls stand for, in their order; false at the end of the input.
    bool Ask(Terminal& terminal);

private:
    void ReadControl(TemplateReader& reader)
    {
        reader.Align();
        Control control;
        control.style = reader.Double();
        reader.Double();   // extended style
        control.place = MapUnits(reader.Rect());
        const int id = static_cast<std::int16_t>(reader.Word());
        WORD ordinal = 0;
        reader.Text(ordinal);
        control.kind = static_cast<Control::Kind>(ordinal);
        control.text = reader.Text(ordinal);
        reader.Skip(reader.Word());   // data for the control's making
        m_controls.emplace(id, std::move(control));
    }

    std::map<int, Control> m_controls;   // 0 is the dialog itself
};

/// A label without the mark of its key. Texts are translators' and names those of folders: a terminal must not obey them.
std::wstring Label(std::wstring text)
{
    text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
    return TvlPlatform::OneLine(std::move(text), L' ');
}

DialogParameter TerminalDialog::Send(int id, UINT message, DialogParameter first, DialogParameter second)
{
    const auto found = m_controls.find(id);
    if (found == m_controls.end())
        return 0;
    Control& control = found->second;
    const bool isChoice =
        first >= 0 && static_cast<std::size_t>(first) < control.choices.size();   // of what takes an index
    switch (message) {
    case kSetCheck:
        control.checked = first != 0;
        return 0;
    case kGetCheck:
        return control.checked;
    case kComboAddString:
        control.choices.emplace_back(reinterpret_cast<const wchar_t*>(second));
        return static_cast<DialogParameter>(control.choices.size()) - 1;
    case kComboFindStringExact: {
        const auto choice =
            std::find(control.choices.begin(), control.choices.end(), reinterpret_cast<const wchar_t*>(second));
        return choice == control.choices.end() ? -1 : choice - control.choices.begin();
    }
    case kComboSetSelection:
        control.selected = isChoice ? static_cast<int>(first) : -1;
        return control.selected;
    case kComboGetSelection:
        return control.selected;
    case kComboGetTextLength:
        return isChoice ? static_cast<DialogParameter>(control.choices[static_cast<std::size_t>(first)].size()) : -1;
    case kComboGetText:
        if (!isChoice)
            return -1;
        std::wcscpy(reinterpret_cast<wchar_t*>(second), control.choices[static_cast<std::size_t>(first)].c_str());
        return static_cast<DialogParameter>(control.choices[static_cast<std::size_t>(first)].size());
    default:
        return 0;
    }
}

bool AskForChoice(Terminal& terminal, Control& control)
{
    const int count = static_cast<int>(control.choices.size());
    for (int i = 0; i < count; ++i)
        terminal.Write(L"  " + std::to_wstring(i + 1) + L"  "
            + TvlPlatform::OneLine(control.choices[static_cast<std::size_t>(i)], L' ') + L"\n");
    for (;;) {
        const std::wstring usual = control.selected < 0 ? L"" : L" [" + std::to_wstring(control.selected + 1) + L"]";
        terminal.Write(L"1-" + std::to_wstring(count) + usual + L": ");
        const auto line = terminal.ReadLine();
        if (!line)
            return false;
        if (line->empty() && control.selected >= 0)
            return true;
        const long number = std::wcstol(line->c_str(), nullptr, 10);
        if (number >= 1 && number <= count) {
            control.selected = static_cast<int>(number) - 1;
            return true;
        }
    }
}

bool AskForCheck(Terminal& terminal, Control& control)
{
    terminal.Write(Label(control.text) + (control.checked ? L" [Y/n]: " : L" [y/N]: "));
    const auto line = terminal.ReadLine();
    if (line && !line->empty())
        control.checked = line->front() == L'y' || line->front() == L'Y';
    return line.has_value();
}

bool TerminalDialog::Ask(Terminal& terminal)
{
    terminal.Write(Label(m_controls[0].text) + L"\n");
    for (const auto& [id, control] : m_controls)
        if (id != 0 && control.kind == Control::Kind::Static && !control.text.empty())
            terminal.Write(Label(control.text) + L"\n");
    for (auto& [id, control] : m_controls)
        if (control.kind == Control::Kind::Combo && !control.choices.empty() && !AskForChoice(terminal, control))
            return false;
    for (auto& [id, control] : m_controls)
        if (control.kind == Control::Kind::Button && (control.style & kButtonKind) == kCheckBox
            && !AskForCheck(terminal, control))
            return false;
    return HasControl(kOk);
}

class LinuxDialogs final : public Dialogs {
public:
    bool RunModal(const std::vector<BYTE>& dialogTemplate, HWND, DialogProcedure& procedure) override
    {
        Terminal& terminal = Terminal::Get();
        if (!terminal.IsInteractive())
            return false;
        TerminalDialog dialog(dialogTemplate);
        procedure.OnInitDialog(dialog);
        const bool answered = dialog.Ask(terminal);
        if (answered)
            procedure.OnOK(dialog);
        procedure.OnDestroy(dialog);
        return answered;
    }

    void* LoadStockIcon(int, int, int) override { return nullptr; }
    void DestroyIcon(void*) override { }
    void* CreatePointFont(int, const std::wstring&) override { return nullptr; }
    void DeleteFont(void*) override { }
};
}   // namespace

template <>
Dialogs& SystemPort<Dialogs>()
{
    static LinuxDialogs dialogs;
    return dialogs;
}

}   // namespace Ports
