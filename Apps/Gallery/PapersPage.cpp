#include "PapersPage.h"

#include "ControlIds.h"
#include "WorldScale.h"

#include <algorithm>
#include <commctrl.h>
#include <stdexcept>
#include <utility>

namespace {
constexpr double kTenthsOfMicronPerInch = 254000.0;
constexpr int kMillimetre = 2;
constexpr int kShadow = 4;    // pixels at 96 dots per inch
constexpr int kMargin = 10;   // the same, around the picture
constexpr int kScales[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};

/// The store; null when the user's file can't be used.
CPaperTypeMgr* Papers()
try {
    return &CPaperTypeMgr::GetInstance();
} catch (const std::out_of_range&) {
    return nullptr;
}

void Fill(HDC context, const RECT& area, int colour) { FillRect(context, &area, GetSysColorBrush(colour)); }
}   // namespace

PapersPage::PapersPage(HWND parent) : Page(parent)
{
    AddLabel(L"&Paper:", {16, 16, 80, 18});
    AddCombo(kPaperList, {100, 12, 360, 400});
    Add(WC_BUTTONW, L"&Turned", WS_TABSTOP | BS_AUTOCHECKBOX, kPaperTurned, {480, 14, 100, 20});
    AddLabel(L"", {100, 44, 360, 18}, kPaperSize);
    AddLabel(L"", {480, 44, 160, 18}, kPaperScale);
    Add(WC_STATICW, L"", SS_OWNERDRAW, kPaperView, {16, 72, 640, 320});
    FillList();
    PaperType usual = kPaperA4;
    OSUtils::LocaleEnvironment::GetPaperType(usual);
    ChooseEntry(Control(kPaperList), usual);
    ShowPaper();
}

PapersPage::~PapersPage() { CPaperTypeMgr::Shutdown(); }

void PapersPage::FillList()
{
    const CPaperTypeMgr* const papers = Papers();
    if (!papers)
        return SetText(kPaperSize, L"The file of papers can't be read.");
    PaperTypeInformation paper;
    for (const std::int64_t index : papers->GetPaperOrder()) {
        // The first two have no size to be shown.
        if (index <= kPaperNone || !papers->GetPaperInfoAt(static_cast<int>(index), paper) || paper.Hidden)
            continue;
        const TvlString name = paper.DisplayName + L" \u2013 " + TvlUtl::GetPageDimensions(paper);
        AddEntry(Control(kPaperList), name.c_str(), static_cast<int>(index));
    }
}

void PapersPage::ShowPaper()
{
    const int index = ChosenEntry(Control(kPaperList));
    if (index < 0 || !Papers() || !Papers()->GetPaperInfoAt(index, m_paper))
        return;
    const HWND turned = Control(kPaperTurned);
    EnableWindow(turned, m_paper.Rotatable);
    if (!m_paper.Rotatable)
        SendMessageW(turned, BM_SETCHECK, BST_UNCHECKED, 0);
    if (SendMessageW(turned, BM_GETCHECK, 0, 0) == BST_CHECKED) {
        std::swap(m_paper.Width, m_paper.Height);
        std::swap(m_paper.ResolutionX, m_paper.ResolutionY);
    }
    SetText(kPaperSize, TvlUtl::GetPageDimensions(m_paper).c_str());
    InvalidateRect(Control(kPaperView), nullptr, TRUE);
}

void PapersPage::OnCommand(int id, int code)
{
    const bool isChosen = id == kPaperList && code == CBN_SELCHANGE;
    if (isChosen && Papers())
        Papers()->AddMRUItem(ChosenEntry(Control(kPaperList)));
    if (isChosen || (id == kPaperTurned && code == BN_CLICKED))
        ShowPaper();
}

int PapersPage::ScaleFor(const RECT& room) const
{
    const double pixels = Dpi() / kTenthsOfMicronPerInch;
    const int margins = 2 * MulDiv(kMargin, static_cast<int>(Dpi()), USER_DEFAULT_SCREEN_DPI);
    const auto* const fits = std::find_if(std::begin(kScales), std::end(kScales) - 1, [&](int scale) {
        return m_paper.Width * pixels / scale <= static_cast<double>(room.right - margins)
            && m_paper.Height * pixels / scale <= static_cast<double>(room.bottom - margins);
    });
    return *fits;
}

void PapersPage::OnDraw(const DRAWITEMSTRUCT& item)
{
    const RECT& room = item.rcItem;
    const int scale = ScaleFor(room);
    const double pixels = Dpi() / kTenthsOfMicronPerInch / scale;
    const LONG width = std::max(static_cast<LONG>(m_paper.Width * pixels), 1L);
    const LONG height = std::max(static_cast<LONG>(m_paper.Height * pixels), 1L);
    RECT sheet{(room.right - width) / 2, (room.bottom - height) / 2, 0, 0};
    sheet.right = sheet.left + width;
    sheet.bottom = sheet.top + height;
    RECT shadow = sheet;
    const int offset = MulDiv(kShadow, static_cast<int>(Dpi()), USER_DEFAULT_SCREEN_DPI);
    OffsetRect(&shadow, offset, offset);
    Fill(item.hDC, room, COLOR_APPWORKSPACE);
    Fill(item.hDC, shadow, COLOR_3DDKSHADOW);
    Fill(item.hDC, sheet, COLOR_WINDOW);
    FrameRect(item.hDC, &sheet, GetSysColorBrush(COLOR_WINDOWTEXT));
    const auto label = TvlUtl::WorldScale::Format(scale, kMillimetre, kMillimetre, 0.0).Label();
    if (const std::wstring text = L"Drawn " + label.Std(); Text(kPaperScale) != text)
        SetText(kPaperScale, text.c_str());
}
