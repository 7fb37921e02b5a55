#include "LanguageSelectionDialog.h"

#include "DialogTemplate.h"
#include "LanguageCaptions.h"
#include "TopMostOwnerWnd.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "windows/Windowing.h"

#include <algorithm>

namespace {
using Ports::DialogParameter;
using Ports::DialogRect;
using Ports::DialogWindow;

constexpr DWORD kDialogStyle = 0x80C80880;     // WS_POPUP | WS_CAPTION | WS_SYSMENU, DS_MODALFRAME | DS_CENTER
constexpr DWORD kIconStyle = 0x50000003;       // WS_CHILD | WS_VISIBLE, SS_ICON
constexpr DWORD kTextStyle = 0x50000000;       // WS_CHILD | WS_VISIBLE, SS_LEFT
constexpr DWORD kCheckBoxStyle = 0x50010003;   // WS_CHILD | WS_VISIBLE | WS_TABSTOP, BS_AUTOCHECKBOX
constexpr DWORD kButtonStyle = 0x50010001;     // the same, BS_DEFPUSHBUTTON
constexpr DWORD kListStyle = 0x50000003;       // WS_CHILD | WS_VISIBLE, CBS_DROPDOWNLIST

// Dialog units.
constexpr DialogRect kDialogSize{0, 0, 210, 82};
constexpr DialogRect kIconPlace{7, 8, 16, 16};
constexpr DialogRect kPromptPlace{34, 8, 169, 10};
constexpr DialogRect kListPlace{34, 21, 147, 120};   // with what drops down
constexpr DialogRect kAlwaysUsePlace{34, 41, 169, 11};
constexpr DialogRect kOkPlace{153, 60, 50, 15};

constexpr int kTextMargin = 4;          // pixels at 96 DPI between a text and the edges of its control
constexpr int kCheckMark = 20;          // pixels at 96 DPI that a check box takes before its text
constexpr double kListShare = 0.7;      // of the client area's width
constexpr double kTemplateDpi = 96.0;   // that the template's units are made for
constexpr int kUnit = 2;                // pixels at that resolution, both ways
constexpr int kFontSize = 80;           // tenths of a point

int Scaled(int pixels, double scale) { return static_cast<int>(pixels * scale); }
DialogRect Pixels(const DialogRect& units, double scale)
{
    const auto pixels = [scale](int side) { return Scaled(kUnit * side, scale); };
    return {pixels(units.left), pixels(units.top), pixels(units.width), pixels(units.height)};
}

/// Gives the dialog another size; its middle, which is the screen's, stays where it is.
void Resize(DialogWindow& window, int width, int height)
{
    DialogRect dialog = window.Place(0);
    dialog.left -= (width - dialog.width) / 2;
    dialog.top -= (height - dialog.height) / 2;
    dialog.width = width;
    dialog.height = height;
    window.Move(0, dialog);
}

/// A drop-down list that is made while the dialog is up, and ends with its object.
class ComboBox {
public:
    ComboBox(DialogWindow& window, const DialogRect& place) : m_window(window)
    {
        window.CreateComboBox(kLanguageList, kListStyle, place);
    }
    ComboBox(const ComboBox&) = delete;
    ComboBox& operator=(const ComboBox&) = delete;
    ~ComboBox() { m_window.DestroyControl(kLanguageList); }

    void Add(const TvlString& text) { Send(Ports::kComboAddString, 0, Pointer(text.c_str())); }
    void Select(const TvlString& text)
    {
        const DialogParameter index = Send(Ports::kComboFindStringExact, -1, Pointer(text.c_str()));
        if (index >= 0)
            Send(Ports::kComboSetSelection, index, 0);
    }
    /// Empty when nothing is selected.
    TvlString SelectedText()
    {
        const DialogParameter index = Send(Ports::kComboGetSelection, 0, 0);
        const DialogParameter length = index < 0 ? -1 : Send(Ports::kComboGetTextLength, index, 0);
        if (length < 0)
            return TvlString();
        std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
        Send(Ports::kComboGetText, index, Pointer(text.data()));
        text.pop_back();
        return text;
    }

private:
    static DialogParameter Pointer(const wchar_t* text) { return reinterpret_cast<DialogParameter>(text); }
    DialogParameter Send(UINT message, DialogParameter first, DialogParameter second)
    {
        return m_window.Send(kLanguageList, message, first, second);
    }

    DialogWindow& m_window;
};

class LanguageSelectionDialog final : public Ports::DialogProcedure {
public:
    explicit LanguageSelectionDialog(IGLB_UILanguage& language) : m_owner(nullptr), m_language(&language) { }
    LanguageSelectionDialog(const LanguageSelectionDialog&) = delete;
    LanguageSelectionDialog& operator=(const LanguageSelectionDialog&) = delete;
    ~LanguageSelectionDialog()
    {
        if (m_icon)
            Ports::Dialogs::Get().DestroyIcon(m_icon);
        if (m_font)
            Ports::Dialogs::Get().DeleteFont(m_font);
    }

    CGlbLang Run();

    void OnInitDialog(DialogWindow& window) override;
    void OnOK(DialogWindow& window) override;
    void OnDestroy(DialogWindow&) override { m_list.reset(); }

private:
    void ShowIcon(DialogWindow& window);
    void SetFont(DialogWindow& window);
    void FillList();
    static void Scale(DialogWindow& window, double scale);
    static void FitTexts(DialogWindow& window, double scale);

    TvlUtl::TopMostOwnerWnd m_owner;
    int m_iconControl = kLanguageIcon;
    void* m_icon = nullptr;
    std::unique_ptr<ComboBox> m_list;   // as long as the dialog is up
    IGLB_UILanguage* m_language;
    ULONG m_chosen = 0;   // 0 until the user confirms
    void* m_font = nullptr;
    bool m_alwaysUse = false;   // the check box, from before the dialog until after it
};

CGlbLang LanguageSelectionDialog::Run()
{
    // Made once: the language of the captions does not change any more.
    static const std::vector<BYTE> dialogTemplate = MakeLanguageDialogTemplate(
        LanguageCaptions(MultiLanguageString::GetLanguageFromLANGID(m_language->GetLanguage().GetWinLangID())));
    m_alwaysUse = !m_language->ReadQueryStartupLang();
    const HWND owner = m_owner.GetOwnerWnd(GetAppSkinSettingData().GetAppUIName().c_str());
    if (Ports::Dialogs::Get().RunModal(dialogTemplate, owner, *this))
        m_language->WriteQueryStartupLang(!m_alwaysUse);
    return CGlbLang(m_chosen);
}

void LanguageSelectionDialog::OnInitDialog(DialogWindow& window)
{
    constexpr UINT kClose = 61536;   // SC_CLOSE: the dialog ends by its button alone
    constexpr UINT kDisabled = 2;    // MF_DISABLED
    window.EnableSystemMenuItem(kClose, kDisabled);
    ShowIcon(window);
    m_list = std::make_unique<ComboBox>(window, window.MapUnits(kListPlace));
    const double scale = window.Dpi() / kTemplateDpi;
    SetFont(window);
    Scale(window, scale);
    FillList();
    FitTexts(window, scale);
    window.Send(kLanguageAlwaysUse, Ports::kSetCheck, m_alwaysUse, 0);
    window.Focus(kLanguageList);
}

void LanguageSelectionDialog::ShowIcon(DialogWindow& window)
{
    constexpr int kWarning = 78;      // SIID_WARNING
    constexpr int kIconWidth = 11;    // SM_CXICON
    constexpr int kIconHeight = 12;   // SM_CYICON
    if (!window.HasControl(m_iconControl))
        return;
    const Ports::Windowing& system = Ports::Windowing::Get();
    m_icon = Ports::Dialogs::Get().LoadStockIcon(
        kWarning, system.SystemMetric(kIconWidth), system.SystemMetric(kIconHeight));
    if (m_icon)
        window.Send(m_iconControl, Ports::kStaticSetIcon, reinterpret_cast<DialogParameter>(m_icon), 0);
}

void LanguageSelectionDialog::SetFont(DialogWindow& window)
{
    m_font = Ports::Dialogs::Get().CreatePointFont(kFontSize, L"MS Shell Dlg");
    for (const int id : {kLanguagePrompt, kLanguageList, kLanguageAlwaysUse, kLanguageOk})
        window.Send(id, Ports::kSetFont, reinterpret_cast<DialogParameter>(m_font), 1);
}

void LanguageSelectionDialog::Scale(DialogWindow& window, double scale)
{
    // A window that is gone has no resolution; what is left of it keeps its size.
    if (scale <= 0)
        return;
    // From the template, not from the places that the system gave: its font, which they come from, grows with the
    // resolution on some systems and not on others.
    constexpr std::pair<int, DialogRect> kPlaces[] = {{kLanguageIcon, kIconPlace}, {kLanguagePrompt, kPromptPlace},
        {kLanguageList, kListPlace}, {kLanguageAlwaysUse, kAlwaysUsePlace}, {kLanguageOk, kOkPlace}};
    for (const auto& [id, place] : kPlaces)
        window.Move(id, Pixels(place, scale));
    const DialogRect dialog = window.Place(0);
    const DialogRect before = window.ClientArea();
    const DialogRect client = Pixels(kDialogSize, scale);
    Resize(window, dialog.width + client.width - before.width, dialog.height + client.height - before.height);
}

void LanguageSelectionDialog::FillList()
{
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    m_language->GetLanguages(languages);
    std::sort(languages.begin(), languages.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    for (const auto& [code, name] : languages)
        m_list->Add(name);
    const CGlbLang current = m_language->GetLanguage();
    const auto found = std::find_if(
        languages.begin(), languages.end(), [&](const auto& language) { return language.first == current; });
    if (found != languages.end())
        m_list->Select(found->second);
}

void LanguageSelectionDialog::FitTexts(DialogWindow& window, double scale)
{
    // Widens what is too narrow for its text, and the dialog where it then is.
    const auto needed = [&](int id, int room) { return window.TextSize(id).width + Scaled(room, scale); };
    const int margin = Scaled(2 * kTextMargin, scale);
    int missing = 0;
    for (const auto& [id, room] :
        {std::pair(+kLanguagePrompt, kTextMargin), std::pair(+kLanguageAlwaysUse, kCheckMark)}) {
        DialogRect place = window.Place(id);
        place.width = std::max(place.width, needed(id, room));
        window.Move(id, place);
        missing = std::max(missing, place.left + place.width + margin - window.ClientArea().width);
    }
    const DialogRect dialog = window.Place(0);
    Resize(window, dialog.width + missing, dialog.height);
    DialogRect button = window.Place(kLanguageOk);
    const int right = button.left + button.width + missing;
    button.width = std::max(button.width, needed(kLanguageOk, 2 * kTextMargin));
    button.left = right - button.width;
    window.Move(kLanguageOk, button);
    DialogRect list = window.Place(kLanguageList);
    list.width = Scaled(window.ClientArea().width, kListShare);
    window.Move(kLanguageList, list);
}

void LanguageSelectionDialog::OnOK(DialogWindow& window)
{
    m_alwaysUse = window.Send(kLanguageAlwaysUse, Ports::kGetCheck, 0, 0) != 0;
    const TvlString name = m_list->SelectedText();
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    m_language->GetLanguages(languages);
    const auto found = std::find_if(languages.begin(), languages.end(),
        [&](const auto& language) { return language.second.Compare(name, CompareCase::Sensitive) == 0; });
    m_chosen = found == languages.end() ? 0 : found->first.GetCode();
}
}   // namespace

std::vector<BYTE> MakeLanguageDialogTemplate(const std::vector<TvlString>& captions)
{
    DialogTemplate made(captions[kTitle], kDialogStyle, kDialogSize);
    made.Add(ControlClass::Static, kLanguageIcon, L"", kIconStyle, kIconPlace);
    made.Add(ControlClass::Static, kLanguagePrompt, captions[kPrompt], kTextStyle, kPromptPlace);
    made.Add(ControlClass::Button, kLanguageAlwaysUse, captions[kAlwaysUse], kCheckBoxStyle, kAlwaysUsePlace);
    made.Add(ControlClass::Button, kLanguageOk, captions[kOkButton], kButtonStyle, kOkPlace);
    return made.Bytes();
}

std::pair<CGlbLang, bool> RunLanguageSelectionDialog(IGLB_UILanguage& language)
{
    return {LanguageSelectionDialog(language).Run(), true};
}
