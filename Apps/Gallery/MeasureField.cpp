#include "MeasureField.h"

#include "../MeasureText.h"
#include "ControlIds.h"
#include "Units.h"
#include "WEqParser.h"
#include "WUnit.h"

#include <algorithm>
#include <cmath>
#include <commctrl.h>

namespace {
constexpr unsigned kFlags = kTokensUnits | kTokensAll;
constexpr DRG kAngles = DRG::Degrees;   // of the functions: sin(30) is 0.5
constexpr int kDisplays = 41;           // ids of built-in displays are below
constexpr int kNoDisplays[] = {18, 19, 20, 21};
constexpr int kProblemHeight = 16;

/// What a spin control makes of a value. The procedural functions step every measure that they know.
double Stepped(int unit, double value, int level, bool up)
{
    const int measure = ProceduralUnit(unit);
    double base = UNITConvertUnitToBase(static_cast<unsigned>(measure), 0.0, value);
    if (UNITConvertUnitToBase(static_cast<unsigned>(measure), 0.0, 1.0) == 0.0) {
        const double step = WUnit::GetDefaultWUnit().GetUnitIncrement(unit, static_cast<unsigned>(level));
        return value + (up ? step : -step);
    }
    UNITIncAndConvValue(measure, &base, level, 1, up ? 1 : 0, 0.0, 1.0);
    return UNITConvertBaseToUnit(static_cast<unsigned>(measure), 0.0, base);
}

bool IsPressed(int key) { return GetKeyState(key) < 0; }

int PressedLevel() { return IsPressed(VK_CONTROL) ? 2 : IsPressed(VK_SHIFT) ? 1 : 0; }
}   // namespace

MeasureField::MeasureField(Page& page, int id, const Box& box, int unit, double value)
    : m_page(page), m_id(id), m_unit(unit), m_value(value)
{
    const HWND edit = page.AddEdit(L"", id, {box.x, box.y, box.width - box.height, box.height});
    const HWND spin = page.Add(
        UPDOWN_CLASSW, L"", 0, id + kFieldSpin, {box.x + box.width - box.height, box.y, box.height, box.height});
    // It stays in the middle, as its presses are answered with no change; its own range would have its ends the wrong way.
    SendMessageW(spin, UDM_SETRANGE32, static_cast<WPARAM>(-1), 1);
    page.AddLabel(L"", {box.x, box.y + box.height + 2, box.width + 150, kProblemHeight}, id + kFieldProblem);
    page.ShowAsProblem(id + kFieldProblem);
    SetWindowSubclass(edit, &MeasureField::Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    Show();
}

MeasureField::~MeasureField() { RemoveWindowSubclass(m_page.Control(m_id), &MeasureField::Procedure, 0); }

void MeasureField::SetValue(double value)
{
    m_value = value;
    Show();
}

void MeasureField::SetUnit(int unit)
{
    const double converted = WUnit::GetDefaultWUnit().ConvertFromUnitToUnit(m_unit, unit, m_value, 0.0);
    m_unit = unit;
    SetValue(converted);
}

void MeasureField::Show()
{
    // A number without a unit comes with the space before its name.
    m_shown = RegionalText(WUnit::GetDefaultWUnit(), m_unit, m_value, kUnitTextFirstName, -1).Trim(L" ");
    m_page.SetText(m_id, m_shown.c_str());
    m_page.SetText(m_id + kFieldProblem, L"");
}

bool MeasureField::Commit()
{
    const TvlString text(m_page.Text(m_id));
    if (text == m_shown) {
        m_page.SetText(m_id + kFieldProblem, L"");   // the user has typed the old text again
        return true;
    }
    double value = 0.0;
    if (!WUnit::GetDefaultWUnit().StringToValue(m_unit, text, value, kFlags, kAngles)) {
        const WParseDiagnosis wrong = WUnit::GetDefaultWUnit().DiagnoseText(m_unit, text, kFlags, kAngles);
        ShowProblem(DescribeParseProblem(wrong.problem), wrong.position);
        return false;
    }
    if (!std::isfinite(value)) {
        ShowProblem(L"the result is not a number", 0);
        return false;
    }
    TakeFromUser(value);
    return true;
}

void MeasureField::TakeFromUser(double value)
{
    SetValue(value);
    if (m_changed)
        m_changed(m_value);
}

void MeasureField::ShowProblem(const TvlString& problem, std::size_t place)
{
    const std::size_t length = m_page.Text(m_id).size();
    place = std::min(place, length);
    TvlString text;
    if (place == length)
        text.Format(L"at the end: %s", problem.c_str());
    else
        text.Format(L"character %lu: %s", static_cast<ULONG>(place + 1), problem.c_str());
    m_page.SetText(m_id + kFieldProblem, text.c_str());
    SendMessageW(m_page.Control(m_id), EM_SETSEL, place, static_cast<LPARAM>(length));
}

void MeasureField::Step(int level, bool up)
{
    if (Commit())
        TakeFromUser(Stepped(m_unit, m_value, level, up));
}

LRESULT MeasureField::OnSpin(const NMHDR& notice)
{
    if (notice.code == UDN_DELTAPOS)
        Step(PressedLevel(), reinterpret_cast<const NMUPDOWN&>(notice).iDelta > 0);
    return TRUE;
}

bool MeasureField::OnKey(WPARAM key)
{
    switch (key) {
    case VK_RETURN:
        if (Commit())
            SendMessageW(m_page.Control(m_id), EM_SETSEL, 0, -1);
        return true;
    case VK_ESCAPE:
        Show();
        return true;
    case VK_UP:
    case VK_DOWN:
        Step(PressedLevel(), key == VK_UP);
        return true;
    case VK_PRIOR:
    case VK_NEXT:
        Step(2, key == VK_PRIOR);
        return true;
    default:
        return false;
    }
}

LRESULT CALLBACK MeasureField::Procedure(
    HWND edit, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR reference)
{
    auto* const field = reinterpret_cast<MeasureField*>(reference);
    const bool isForField = first == VK_RETURN || first == VK_ESCAPE;
    if (message == WM_GETDLGCODE && second && isForField)
        return DLGC_WANTMESSAGE;   // not for the window's buttons
    if (message == WM_CHAR && isForField)
        return 0;   // the edit control would beep
    if (message == WM_KEYDOWN && field->OnKey(first))
        return 0;
    if (message == WM_KILLFOCUS)
        field->Commit();
    return DefSubclassProc(edit, message, first, second);
}

void AddUnits(HWND combo)
{
    for (int id = 1; id < kDisplays; ++id) {
        if (std::find(std::begin(kNoDisplays), std::end(kNoDisplays), id) != std::end(kNoDisplays))
            continue;
        TvlString name = WUnit::GetDefaultWUnit().GetUnitDisplayString(id, kUnitTextThirdName);
        if (!name.IsEmpty())
            AddEntry(combo, name.Trim(L" ").c_str(), id);
    }
}
