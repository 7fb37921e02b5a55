#include "ScalesPage.h"

#include "ControlIds.h"
#include "Units.h"
#include "WEqParser.h"
#include "WUnit.h"

#include <cmath>
#include <commctrl.h>
#include <optional>

namespace {
constexpr int kMillimetre = 2;
constexpr int kMetre = 9;
constexpr unsigned kFlags = kTokensUnits | kTokensAll;
constexpr unsigned kResolution = 300;   // pixels per inch of distances in pixels

/// A distance in millimetres, where a number alone is in millimetres too.
std::optional<double> DistanceOf(const std::wstring& text)
{
    double value = 0.0;
    const bool isDistance =
        WUnit::GetDefaultWUnit().StringToValue(kMillimetre, TvlString(text), value, kFlags, DRG::Degrees) != 0;
    return isDistance && value > 0.0 && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<double> ScaleOf(const std::wstring& text)
{
    const std::size_t colon = text.find(L':');
    if (colon == std::wstring::npos)
        return std::nullopt;
    const auto page = DistanceOf(text.substr(0, colon));
    const auto world = DistanceOf(text.substr(colon + 1));
    const double scale = page && world ? *world / *page : 0.0;
    return scale > 0.0 && std::isfinite(scale) ? std::optional(scale) : std::nullopt;
}

double Millimetres(const MeasureField& field)
{
    return WUnit::GetDefaultWUnit().ConvertFromUnitToUnit(field.Unit(), kMillimetre, field.Value(), 0.0);
}

void ShowMillimetres(MeasureField& field, double value)
{
    field.SetValue(WUnit::GetDefaultWUnit().ConvertFromUnitToUnit(kMillimetre, field.Unit(), value, 0.0));
}

/// Adds the plain lengths, which scales are labelled in.
void AddLengths(HWND combo, int chosen)
{
    for (const int* unit = UNITGetUnitArray(kUnitArrayLengths); unit && *unit >= 0; ++unit)
        AddEntry(combo, UNITGetUnitAsString(*unit, kUnitNameThird).c_str(), *unit);
    ChooseEntry(combo, chosen);
}
}   // namespace

ScalesPage::ScalesPage(HWND parent) : Page(parent), m_presets(TvlUtl::WorldScale::GetPresetList())
{
    AddLabel(L"&Presets:", {16, 12, 200, 18});
    const HWND list = Add(WC_LISTBOXW, L"", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY, kScaleList, {16, 32, 200, 360});
    for (const auto& preset : m_presets)
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(preset.Label().c_str()));

    AddLabel(L"&Scale, page to world:", {240, 12, 250, 18});
    AddEdit(L"1:1", kScaleText, {240, 32, 200, 24});
    Add(WC_BUTTONW, L"&Apply", WS_TABSTOP | BS_DEFPUSHBUTTON, kScaleApply, {452, 32, 90, 24});
    AddLabel(L"", {240, 60, 400, 18}, kScaleProblem);
    ShowAsProblem(kScaleProblem);
    AddLabel(L"Labelled in:", {240, 100, 90, 18});
    AddLabel(L"pa&ge", {240, 118, 90, 18});
    AddLengths(AddCombo(kScalePageUnit, {240, 138, 160, 260}), kMillimetre);
    AddLabel(L"w&orld", {416, 118, 90, 18});
    AddLengths(AddCombo(kScaleWorldUnit, {416, 138, 160, 260}), kMillimetre);
    AddLabel(L"", {240, 174, 400, 20}, kScaleLabel);
    AddLabel(L"A distance in the &world:", {240, 216, 200, 18});
    m_world = std::make_unique<MeasureField>(*this, kScaleWorld, Box{240, 236, 200, 24}, kMetre, 5.0);
    AddLabel(L"is o&n the page:", {240, 290, 200, 18});
    m_page = std::make_unique<MeasureField>(*this, kScalePage, Box{240, 310, 200, 24}, kMillimetre, 5000.0);
    m_world->WhenChanged([this](double) { ShowPageDistance(); });
    m_page->WhenChanged([this](double) { ShowWorldDistance(); });
    ShowScale();
}

void ScalesPage::TakePreset()
{
    const LRESULT place = SendMessageW(Control(kScaleList), LB_GETCURSEL, 0, 0);
    if (place < 0 || static_cast<std::size_t>(place) >= m_presets.size())
        return;
    const auto& preset = m_presets[static_cast<std::size_t>(place)];
    m_scale = preset.Scale();
    SetText(kScaleText, preset.Label().c_str());
    SetText(kScaleProblem, L"");
    ShowScale();
}

void ScalesPage::TakeText()
{
    const auto scale = ScaleOf(Text(kScaleText));
    SetText(kScaleProblem, scale ? L"" : L"A scale is written as 1:50, page before world.");
    if (!scale)
        return;
    SendMessageW(Control(kScaleList), LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    m_scale = *scale;
    ShowScale();
}

void ScalesPage::ShowScale()
{
    const int world = ChosenEntry(Control(kScaleWorldUnit));
    const int page = ChosenEntry(Control(kScalePageUnit));
    const auto preset = TvlUtl::WorldScale::Format(m_scale, world, page, UNITConvertResToBase(kResolution));
    SetText(kScaleLabel, preset.Label().c_str());
    ShowPageDistance();
}

void ScalesPage::ShowPageDistance() { ShowMillimetres(*m_page, Millimetres(*m_world) / m_scale); }

void ScalesPage::ShowWorldDistance() { ShowMillimetres(*m_world, Millimetres(*m_page) * m_scale); }

void ScalesPage::OnCommand(int id, int code)
{
    if (id == kScaleList && code == LBN_SELCHANGE)
        TakePreset();
    else if (id == kScaleApply)
        TakeText();
    else if ((id == kScaleWorldUnit || id == kScalePageUnit) && code == CBN_SELCHANGE)
        ShowScale();
}

LRESULT ScalesPage::OnNotify(const NMHDR& notice)
{
    if (notice.idFrom == kScaleWorld + kFieldSpin)
        return m_world->OnSpin(notice);
    return notice.idFrom == kScalePage + kFieldSpin ? m_page->OnSpin(notice) : 0;
}
