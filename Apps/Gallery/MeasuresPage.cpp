#include "MeasuresPage.h"

#include "../MeasureText.h"
#include "ControlIds.h"
#include "WUnit.h"

#include <commctrl.h>

namespace {
struct Row {
    const wchar_t* name;
    int unit;
    double value;
    int otherUnits[2];   // that the value is told in beside it
};

constexpr Row kRows[kMeasureCount] = {
    {L"&Width:", 2, 210.0, {1, 4}},
    {L"&Height:", 31, 6.5, {2, 9}},
    {L"&Line:", 4, 1.5, {2, 6}},
    {L"&Angle:", 11, 45.0, {32, 28}},
};

constexpr int kTop = 56;
constexpr int kRowHeight = 76;

int IdOf(std::size_t index) { return kFirstMeasure + static_cast<int>(index) * kMeasureStride; }
}   // namespace

MeasuresPage::MeasuresPage(HWND parent) : Page(parent)
{
    AddLabel(L"Type an expression in any unit, such as \"5in + 3mm\" or \"2*(1/2 ft)\". Enter or Tab takes it, Escape "
             L"brings the value back, the arrow keys step: with Shift further, with Ctrl the furthest.",
        {16, 12, 640, 36});
    for (std::size_t index = 0; index < kMeasureCount; ++index) {
        const Row& row = kRows[index];
        const int id = IdOf(index);
        const int y = kTop + static_cast<int>(index) * kRowHeight;
        AddLabel(row.name, {16, y + 4, 64, 18});
        m_fields.push_back(std::make_unique<MeasureField>(*this, id, Box{84, y, 200, 24}, row.unit, row.value));
        m_fields.back()->WhenChanged([this, index](double) { ShowBases(index); });
        AddUnits(AddCombo(id + kMeasureUnit, {300, y, 180, 300}));
        ChooseEntry(Control(id + kMeasureUnit), row.unit);
        AddLabel(L"", {496, y + 4, 180, 40}, id + kMeasureBases);
        ShowBases(index);
    }
}

void MeasuresPage::ShowBases(std::size_t index)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    const MeasureField& field = *m_fields[index];
    TvlString text;
    for (const int unit : kRows[index].otherUnits) {
        const double value = units.ConvertFromUnitToUnit(field.Unit(), unit, field.Value(), 0.0);
        text += TvlString(text.IsEmpty() ? L"= " : L"\n= ") + RegionalText(units, unit, value, kUnitTextFirstName, -1);
    }
    SetText(IdOf(index) + kMeasureBases, text.c_str());
}

void MeasuresPage::OnCommand(int id, int code)
{
    const int index = (id - kFirstMeasure) / kMeasureStride;
    if (code != CBN_SELCHANGE || index < 0 || index >= kMeasureCount)
        return;
    m_fields[static_cast<std::size_t>(index)]->SetUnit(ChosenEntry(Control(id)));
    ShowBases(static_cast<std::size_t>(index));
}

LRESULT MeasuresPage::OnNotify(const NMHDR& notice)
{
    const auto index = (notice.idFrom - kFirstMeasure) / kMeasureStride;
    return index < m_fields.size() ? m_fields[index]->OnSpin(notice) : 0;
}
